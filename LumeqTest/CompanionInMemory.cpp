// The companion library's place: its operations record what they receive.
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/CompanionLibrary.h"
#include "LumeqTest/Recording.h"

#include <map>
#include <string_view>

namespace Zuvan::Lumeq::Double {

namespace {

using namespace LumeqShim::Companion;
using Companion::JsonText;
using Extra::Eventing::EventingEvent;
using Extra::Eventing::StringDictionary;

void Startup(const std::wstring& appName, const LumeqShim::StartupTypes* types, bool trackSystemInfo,
             bool trackPrintQueueInfo) {
    Deliver(L"StartupInternal", {{L"appName", JsonText(appName)},
                                 {L"howType", std::to_string(types->howType)},
                                 {L"whyType", std::to_string(types->whyType)},
                                 {L"trackSystemInfo", JsonText(trackSystemInfo)},
                                 {L"trackPrintQueueInfo", JsonText(trackPrintQueueInfo)}});
}

void Shutdown(std::int32_t timeoutMsec) {
    Deliver(L"ShutdownInternal", {{L"timeoutMsec", std::to_string(timeoutMsec)}});
}

void Flush(std::int32_t timeoutMsec) {
    Deliver(L"FlushInternal", {{L"timeoutMsec", std::to_string(timeoutMsec)}});
}

bool GetUserOptIn() {
    Deliver(L"GetUserOptInInternal");
    return LumeqShim::BasicGetUserOptIn(LumeqShim::UserOptInKey);
}

void SetUserOptIn(bool userHasOptedIn) {
    Deliver(L"SetUserOptInInternal", {{L"userHasOptedIn", JsonText(userHasOptedIn)}});
    LumeqShim::BasicSetUserOptIn(userHasOptedIn, LumeqShim::UserOptInKey);
}

void SetLocalValue(const std::wstring& key, const std::wstring& value) {
    Deliver(L"SetLocalValueInternal", {{L"key", JsonText(key)}, {L"value", JsonText(value)}});
    LumeqShim::BasicSetUserOptIn(value == L"True", key);
}

void LocalSettingsSubfolder(const std::wstring& path) {
    Deliver(L"LocalSettingsSubfolderInternal", {{L"path", JsonText(path)}});
}

void PostEvent(const EventingEvent& event, void*, void*) {
    Deliver(L"PostEventInternal",
            {{L"timestamp", std::to_string(event.Timestamp())}, {L"record", JsonText(event.Record())}});
}

void PostData(const StringDictionary& data, const std::wstring& dataType, void*) {
    Deliver(L"PostDataInternal", {{L"dataType", JsonText(dataType)}, {L"data", JsonText(data)}});
}

void TrackPrintQueueInfo() { Deliver(L"TrackPrintQueueInfoInternal"); }

void TrackSystemInformation() { Deliver(L"TrackSystemInformationInternal"); }

template <class Signature>
void* Address(std::type_identity_t<Signature>& operation) {
    return reinterpret_cast<void*>(&operation);
}

const std::map<std::string_view, void*>& Operations() {
    static const std::map<std::string_view, void*> operations{
        {"StartupInternal", Address<StartupInternal>(Startup)},
        {"ShutdownInternal", Address<ShutdownInternal>(Shutdown)},
        {"FlushInternal", Address<FlushInternal>(Flush)},
        {"GetUserOptInInternal", Address<GetUserOptInInternal>(GetUserOptIn)},
        {"SetUserOptInInternal", Address<SetUserOptInInternal>(SetUserOptIn)},
        {"SetLocalValueInternal", Address<SetLocalValueInternal>(SetLocalValue)},
        {"LocalSettingsSubfolderInternal", Address<LocalSettingsSubfolderInternal>(LocalSettingsSubfolder)},
        {"PostEventInternal", Address<PostEventInternal>(PostEvent)},
        {"PostDataInternal", Address<PostDataInternal>(PostData)},
        {"TrackPrintQueueInfoInternal", Address<TrackPrintQueueInfoInternal>(TrackPrintQueueInfo)},
        {"TrackSystemInformationInternal", Address<TrackSystemInformationInternal>(TrackSystemInformation)},
    };
    return operations;
}

} // namespace
} // namespace Zuvan::Lumeq::Double

namespace Zuvan::LumeqShim {

void* FindCompanionOperation(const char* name) { return Lumeq::Double::Operations().at(name); }

} // namespace Zuvan::LumeqShim
