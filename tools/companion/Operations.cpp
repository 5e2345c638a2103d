// The eleven operations. Each first writes itself to the transcript.
#include "tools/companion/LocalSettings.h"
#include "tools/companion/Script.h"
#include "tools/companion/Transcript.h"

#include <cwchar>
#include <type_traits>

namespace Companion {

namespace Shim = Zuvan::LumeqShim;
namespace Eventing = Zuvan::Lumeq::Extra::Eventing;

namespace {

constexpr wchar_t UserOptInKey[] = L"UserOptIn";

/// Writes the line of an operation, then sleeps or fails as the script says.
void Begin(const std::wstring& operation, const Members& members = {}) {
    Members line{{L"operation", JsonText(operation)}};
    line.insert(line.end(), members.begin(), members.end());
    Write(line);
    FollowScript(std::string(operation.begin(), operation.end()));
}

} // namespace

extern "C" {

void StartupInternal(const std::wstring& appName, const Shim::StartupTypes* types, bool trackSystemInfo,
                     bool trackPrintQueueInfo) {
    Begin(L"StartupInternal", {{L"appName", JsonText(appName)},
                               {L"howType", std::to_string(types->howType)},
                               {L"whyType", std::to_string(types->whyType)},
                               {L"trackSystemInfo", JsonText(trackSystemInfo)},
                               {L"trackPrintQueueInfo", JsonText(trackPrintQueueInfo)}});
}

void ShutdownInternal(std::int32_t timeoutMsec) {
    Begin(L"ShutdownInternal", {{L"timeoutMsec", std::to_string(timeoutMsec)}});
}

void FlushInternal(std::int32_t timeoutMsec) {
    Begin(L"FlushInternal", {{L"timeoutMsec", std::to_string(timeoutMsec)}});
}

bool GetUserOptInInternal() {
    Begin(L"GetUserOptInInternal");
    return _wcsicmp(ReadSetting(UserOptInKey).c_str(), L"True") == 0;
}

void SetUserOptInInternal(bool userHasOptedIn) {
    Begin(L"SetUserOptInInternal", {{L"userHasOptedIn", JsonText(userHasOptedIn)}});
    WriteSetting(UserOptInKey, userHasOptedIn ? L"True" : L"False");
}

void SetLocalValueInternal(const std::wstring& key, const std::wstring& value) {
    Begin(L"SetLocalValueInternal", {{L"key", JsonText(key)}, {L"value", JsonText(value)}});
    WriteSetting(key, value);
}

void LocalSettingsSubfolderInternal(const std::wstring& path) {
    Begin(L"LocalSettingsSubfolderInternal", {{L"path", JsonText(path)}});
    UseSubfolder(path);
}

void PostEventInternal(const Eventing::EventingEvent& event, void*, void*) {
    Begin(L"PostEventInternal",
          {{L"timestamp", std::to_string(event.Timestamp())}, {L"record", JsonText(event.Record())}});
}

void PostDataInternal(const Eventing::StringDictionary& data, const std::wstring& dataType, void*) {
    Begin(L"PostDataInternal", {{L"dataType", JsonText(dataType)}, {L"data", JsonText(data)}});
}

void TrackPrintQueueInfoInternal() { Begin(L"TrackPrintQueueInfoInternal"); }

void TrackSystemInformationInternal() { Begin(L"TrackSystemInformationInternal"); }

} // extern "C"

static_assert(std::is_same_v<decltype(StartupInternal), Shim::Companion::StartupInternal>);
static_assert(std::is_same_v<decltype(ShutdownInternal), Shim::Companion::ShutdownInternal>);
static_assert(std::is_same_v<decltype(FlushInternal), Shim::Companion::FlushInternal>);
static_assert(std::is_same_v<decltype(GetUserOptInInternal), Shim::Companion::GetUserOptInInternal>);
static_assert(std::is_same_v<decltype(SetUserOptInInternal), Shim::Companion::SetUserOptInInternal>);
static_assert(std::is_same_v<decltype(SetLocalValueInternal), Shim::Companion::SetLocalValueInternal>);
static_assert(std::is_same_v<decltype(LocalSettingsSubfolderInternal),
                             Shim::Companion::LocalSettingsSubfolderInternal>);
static_assert(std::is_same_v<decltype(PostEventInternal), Shim::Companion::PostEventInternal>);
static_assert(std::is_same_v<decltype(PostDataInternal), Shim::Companion::PostDataInternal>);
static_assert(
    std::is_same_v<decltype(TrackPrintQueueInfoInternal), Shim::Companion::TrackPrintQueueInfoInternal>);
static_assert(std::is_same_v<decltype(TrackSystemInformationInternal),
                             Shim::Companion::TrackSystemInformationInternal>);

} // namespace Companion
