#include "LumeqShim/LumeqNativeShim.h"

#include "Common/TrackingGate.h"
#include "LumeqShim/Basic/BasicFunctionality.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/CompanionLibrary.h"
#include "LumeqShim/GuardedRegion.h"

#include <utility>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::IsTrackingDisabled;

constinit CompanionOperation<Companion::StartupInternal> StartupInternal("StartupInternal");
constinit CompanionOperation<Companion::ShutdownInternal> ShutdownInternal("ShutdownInternal");
constinit CompanionOperation<Companion::FlushInternal> FlushInternal("FlushInternal");
constinit CompanionOperation<Companion::GetUserOptInInternal> GetUserOptInInternal("GetUserOptInInternal");
constinit CompanionOperation<Companion::SetUserOptInInternal> SetUserOptInInternal("SetUserOptInInternal");
constinit CompanionOperation<Companion::SetLocalValueInternal> SetLocalValueInternal("SetLocalValueInternal");
constinit CompanionOperation<Companion::LocalSettingsSubfolderInternal>
    LocalSettingsSubfolderInternal("LocalSettingsSubfolderInternal");
constinit CompanionOperation<Companion::PostEventInternal> PostEventInternal("PostEventInternal");
constinit CompanionOperation<Companion::PostDataInternal> PostDataInternal("PostDataInternal");
constinit CompanionOperation<Companion::TrackPrintQueueInfoInternal>
    TrackPrintQueueInfoInternal("TrackPrintQueueInfoInternal");
constinit CompanionOperation<Companion::TrackSystemInformationInternal>
    TrackSystemInformationInternal("TrackSystemInformationInternal");

constexpr wchar_t BasicRegion[] = L"BasicImplementation";

/// For the wrappers that do nothing on the basic road.
template <class Operation>
void RunOnManagedRoad(const wchar_t* logName, Operation operation) {
    RunRegion(logName, [&operation] {
        if (IsRequiredDotNetVersionInstalled())
            operation();
    });
}

/// For the two opt-in writes, which fall back to the basic store.
template <class ManagedWrite>
void StoreFlag(const wchar_t* logName, ManagedWrite managedWrite, bool value, const wchar_t* key) {
    const bool stored = RunRegion(logName, [&] {
        if (IsRequiredDotNetVersionInstalled())
            managedWrite();
        else
            BasicSetUserOptIn(value, key);
    });
    // Logged under this name although it runs no such function; readers of the log depend on it.
    if (!stored)
        RunRegion(BasicRegion, [&] { BasicSetUserOptIn(value, key); });
}

} // namespace

void StartupXX(const std::wstring& appName, const StartupTypes& types, bool trackSystemInfo,
               bool trackPrintQueueInfo) {
    if (IsTrackingDisabled())
        return;
    bool started = false;
    RunOnManagedRoad(L"StartupXX", [&] {
        StartupInternal(appName, &types, trackSystemInfo, trackPrintQueueInfo);
        started = true;
    });
    if (!started)
        RunRegion(BasicRegion, [&] { BasicStart(appName); });
}

void ShutdownXX(std::int32_t timeoutMsec) {
    if (IsTrackingDisabled())
        return;
    RunOnManagedRoad(L"ShutdownXX", [&] { ShutdownInternal(timeoutMsec); });
}

void FlushXX(std::int32_t timeoutMsec) {
    RunOnManagedRoad(L"FlushXX", [&] { FlushInternal(timeoutMsec); });
}

bool GetUserOptInXX() {
    if (IsTrackingDisabled())
        return false;
    bool userHasOptedIn = false;
    RunRegion(L"GetUserOptInXX", [&] {
        if (IsRequiredDotNetVersionInstalled())
            userHasOptedIn = GetUserOptInInternal();
        else
            RunRegion(L"BasicGetUserOptIn", [&] { userHasOptedIn = BasicGetUserOptIn(UserOptInKey); });
    });
    return userHasOptedIn;
}

void SetUserOptInXX(bool userHasOptedIn) {
    if (IsTrackingDisabled())
        return;
    StoreFlag(
        L"SetUserOptInXX", [&] { SetUserOptInInternal(userHasOptedIn); }, userHasOptedIn, UserOptInKey);
}

void SetLocalValue(bool value, std::wstring& key) {
    const std::wstring consumedKey = std::exchange(key, {});
    if (IsTrackingDisabled())
        return;
    StoreFlag(
        L"SetLocalValue", [&] { SetLocalValueInternal(consumedKey, value ? L"True" : L"False"); }, value,
        consumedKey.c_str());
}

void LocalSubfolderPathXX(const std::wstring& path) {
    RunRegion(L"LocalSubfolderPathXX", [&] {
        if (IsRequiredDotNetVersionInstalled())
            LocalSettingsSubfolderInternal(path);
        RunRegion(L"BasicLocalSubfolderPath", [&] { BasicLocalSubfolderPath(path); });
    });
}

bool AreEventsDropped() noexcept { return IsRequiredRuntimeKnownMissing(); }

void PostEventXX(const Lumeq::Extra::Eventing::EventingEvent* event) {
    RunOnManagedRoad(L"PostEventXX", [&] { PostEventInternal(*event, nullptr, nullptr); });
}

void PostDataXX(const Lumeq::Extra::Eventing::StringDictionary& data, const std::wstring& dataType) {
    RunOnManagedRoad(L"PostDataXX", [&] { PostDataInternal(data, dataType, nullptr); });
}

void TrackPrintQueueInfoXX() {
    RunOnManagedRoad(L"TrackPrintQueueInfoXX", [] { TrackPrintQueueInfoInternal(); });
}

void TrackSystemInformationXX() {
    RunOnManagedRoad(L"TrackSystemInformationXX", [] { TrackSystemInformationInternal(); });
}

} // namespace Zuvan::LumeqShim
