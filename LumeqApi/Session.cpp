#include "LumeqApi/Session.h"

#include "Common/Text.h"
#include "LumeqApi/Arguments.h"
#include "LumeqShim/LumeqNativeShim.h"
#include "LumeqShim/PauseState.h"

namespace Zuvan::Lumeq::API {

using namespace LumeqShim;
using Common::SeverityLevel;
using Extra::Eventing::ToRecord;

namespace {

/// The timeout to pass on.
std::int32_t CheckTimeout(const Call& call, std::int32_t timeoutMsec) {
    constexpr std::int32_t FallbackMilliseconds = 10000;
    if (timeoutMsec >= 0)
        return timeoutMsec;
    call.Refuse(L"invalid timeoutMsec arg: " + Common::DecimalText(timeoutMsec));
    return FallbackMilliseconds;
}

} // namespace

void StartSession(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
                  bool trackPrintQueueInfo) {
    const Arguments arguments{Required{L"appName", appName, appNamePattern}, Traced{L"whyType", whyType},
                              Traced{L"howType", howType}, Traced{L"trackSystemInfo", trackSystemInfo},
                              Traced{L"trackPrintQueueInfo", trackPrintQueueInfo}};
    RunExport(L"StartupEx", [&](const Call& call) {
        Trace(call, arguments);
        const bool isAccepted = arguments.IsAccepted(call);
        // A pause is still marked only if an earlier run died in it. It ends even if this run does not start.
        if (IsPauseMarked()) {
            call.Log(SeverityLevel::ERROR, L"%s exists and it shouldn't that means there was a CRASH!!",
                     OptinBeforePauseKey);
            InternalResume();
        }
        if (!isAccepted)
            return;
        StartupTypes types{};
        types.whyType = ToRecord(whyType);
        types.howType = ToRecord(howType);
        StartupXX(appName, types, trackSystemInfo, trackPrintQueueInfo);
    });
}

void FlushSession(const Call& call, std::int32_t timeoutMsec) { FlushXX(CheckTimeout(call, timeoutMsec)); }

void EndSession(const Call& call, std::int32_t timeoutMsec) {
    const std::int32_t timeout = CheckTimeout(call, timeoutMsec);
    InternalResume();
    ShutdownXX(timeout);
}

void StoreUserOptIn(bool userHasOptedIn) {
    RememberChoiceDuringPause(userHasOptedIn);
    SetUserOptInXX(userHasOptedIn);
}

bool ReadUserOptIn(const Call& call) {
    const bool userHasOptedIn = GetUserOptInXX();
    call.Log(SeverityLevel::TRACE, L"...returns: %s", userHasOptedIn ? L"true" : L"false");
    return userHasOptedIn;
}

void StoreDeviceModel(const Call& call, const wchar_t* globalContext) {
    const std::wstring deviceModel(globalContext);
    if (Required{L"globalContext", deviceModel, contextPattern}.IsAccepted(call))
        Common::SetGlobalContext(deviceModel);
}

} // namespace Zuvan::Lumeq::API
