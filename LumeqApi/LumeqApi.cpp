#include <Lumeq/LumeqApi.h>

#include "LumeqApi/Arguments.h"
#include "LumeqApi/Devices.h"
#include "LumeqApi/Forms.h"
#include "LumeqApi/Screens.h"
#include "LumeqApi/Session.h"
#include "LumeqApi/Tasks.h"
#include "LumeqLib/Extra/Eventing/TaskDetails.h"
#include "LumeqShim/LumeqNativeShim.h"
#include "LumeqShim/PauseState.h"

namespace Zuvan::Lumeq::API {

using namespace Extra::Eventing;
using namespace LumeqShim;

extern "C" {

void StartupEx(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
               bool trackPrintQueueInfo) {
    StartSession(appName, whyType, howType, trackSystemInfo, trackPrintQueueInfo);
}

void ShutdownEx(std::int32_t timeoutMsec) {
    RunExport(L"ShutdownEx", Arguments{Traced{L"timeoutMsec", timeoutMsec}},
              [&](const Call& call) { EndSession(call, timeoutMsec); });
}

void FlushEx(std::int32_t timeoutMsec) {
    RunExport(L"FlushEx", Arguments{Traced{L"timeoutMsec", timeoutMsec}},
              [&](const Call& call) { FlushSession(call, timeoutMsec); });
}

void Pause() {
    RunExport(L"Pause", Arguments{}, [](const Call&) { InternalPause(); });
}

void Resume() {
    RunExport(L"Resume", Arguments{}, [](const Call&) { InternalResume(); });
}

void SetUserOptInEx(bool userHasOptedIn) {
    RunExport(L"SetUserOptInEx", Arguments{Traced{L"userHasOptedIn", userHasOptedIn}},
              [&](const Call&) { StoreUserOptIn(userHasOptedIn); });
}

bool GetUserOptInEx() { return RunExport(L"GetUserOptInEx", Arguments{}, ReadUserOptIn); }

void SetLocalSubfolderPathEx(const std::wstring& subpath) {
    RunExport(L"SetLocalSubfolderPathEx", Arguments{Required{L"subpath", subpath, subpathPattern}},
              [&](const Call&) { LocalSubfolderPathXX(subpath); });
}

void TrackPrintQueueInfoEx() {
    RunExport(L"TrackPrintQueueInfoEx", Arguments{}, [](const Call&) { TrackPrintQueueInfoXX(); });
}

void TrackSystemInformationEx() {
    RunExport(L"TrackSystemInformationEx", Arguments{}, [](const Call&) { TrackSystemInformationXX(); });
}

void SetGlobalContextEx(const wchar_t* globalContext) {
    RunExport(L"SetGlobalContextEx", Arguments{Traced{L"globalContext", globalContext}},
              [&](const Call& call) { StoreDeviceModel(call, globalContext); });
}

void ScreenDisplayed(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                     const wchar_t* mode, const StringDictionary* localContext,
                     const wchar_t* globalContext) {
    PostScreen({flow, screenPath, screenName, mode}, {localContext, globalContext});
}

void ButtonClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                   const wchar_t* mode, const std::wstring& controlName, const StringDictionary* localContext,
                   const wchar_t* globalContext) {
    PostClick(L"ButtonClicked", MakeButtonObject, {{flow, screenPath, screenName, mode}, controlName},
              {localContext, globalContext});
}

void TileClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                 const wchar_t* mode, const std::wstring& controlName, const StringDictionary* localContext,
                 const wchar_t* globalContext) {
    PostClick(L"TileClicked", MakeTileObject, {{flow, screenPath, screenName, mode}, controlName},
              {localContext, globalContext});
}

void HyperlinkClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                      const wchar_t* mode, const std::wstring& controlName,
                      const StringDictionary* localContext, const wchar_t* globalContext) {
    PostClick(L"HyperlinkClicked", MakeHyperlinkObject, {{flow, screenPath, screenName, mode}, controlName},
              {localContext, globalContext}, HyperlinkMark);
}

void CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* screenPath,
                     const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                     const StringDictionary* localContext, const wchar_t* globalContext) {
    PostCheckbox(isChecked, {{flow, screenPath, screenName, mode}, controlName},
                 {localContext, globalContext});
}

void AdDisplayed(AdType adType, const std::wstring& product, const std::wstring& name,
                 const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                 const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                 const StringDictionary* localContext, const wchar_t* globalContext) {
    PostAd(L"AdDisplayed", MakeDisplayedEvent, {adType, product, name, variant},
           {{flow, screenPath, screenName, mode}, controlName}, {localContext, globalContext});
}

void AdClicked(AdType adType, const std::wstring& product, const std::wstring& name,
               const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
               const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
               const StringDictionary* localContext, const wchar_t* globalContext) {
    PostAd(L"AdClicked", MakeClickedEvent, {adType, product, name, variant},
           {{flow, screenPath, screenName, mode}, controlName}, {localContext, globalContext});
}

void AdClosed(AdType adType, const std::wstring& product, const std::wstring& name,
              const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
              const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
              const StringDictionary* localContext, const wchar_t* globalContext) {
    PostAd(L"AdClosed", MakeClosedEvent, {adType, product, name, variant},
           {{flow, screenPath, screenName, mode}, controlName}, {localContext, globalContext});
}

void UrlLaunchedEx(const std::wstring& url, const StringDictionary* localContext,
                   const wchar_t* globalContext) {
    PostUrl(url, {localContext, globalContext});
}

void FormSubmitted(const std::wstring& orgName, const std::wstring& codeName, const std::wstring& formName,
                   const std::wstring& version, const StringDictionary& details,
                   const StringDictionary* localContext, const wchar_t* globalContext) {
    PostForm({orgName, codeName, formName, version, details}, {localContext, globalContext});
}

void ReportGenerated(const std::wstring& orgName, const std::wstring& codeName,
                     const std::wstring& reportName, const std::wstring& version,
                     const StringDictionary& details, const StringDictionary* localContext,
                     const wchar_t* globalContext) {
    PostReport({orgName, codeName, reportName, version, details}, {localContext, globalContext});
}

TaskHandle ScanAcquireInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"ScanAcquireInitiated", MakeScanAcquireTask, {localContext, globalContext});
}

void ScanAcquireCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                          Scan::ShortcutType shortcutType, Scan::ShortcutVarianceType shortcutVarianceType,
                          Scan::ItemType itemType, Scan::ResolutionType resolutionType,
                          Scan::ColorModeType colorModeType, Scan::PageSizeType pageSizeType,
                          Scan::SourceType sourceType, Scan::MimeType mimeType,
                          const ScanFeatureMap& features, std::int32_t pages) {
    CompleteTask<ScanAcquireTaskDetails>(
        L"ScanAcquireCompleted", taskHandle, taskResult, Traced{L"shortcutType", shortcutType},
        Traced{L"shortcutVarianceType", shortcutVarianceType}, Traced{L"itemType", itemType},
        Traced{L"resolutionType", resolutionType}, Traced{L"colorModeType", colorModeType},
        Traced{L"pageSizeType", pageSizeType}, Traced{L"sourceType", sourceType},
        Traced{L"mimeType", mimeType}, Traced{L"features", features}, PageCount{pages});
}

TaskHandle PrintBasicInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"PrintBasicInitiated", MakePrintBasicTask, {localContext, globalContext});
}

void PrintBasicCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                         Print::SubsystemType subsystemType, Print::ItemType itemType,
                         Print::MimeType mimeType, Print::PageSizeType pageSizeType,
                         const std::wstring& paperSize, std::int32_t pages) {
    CompleteTask<PrintBasicTaskDetails>(
        L"PrintBasicCompleted", taskHandle, taskResult, Traced{L"subsystemType", subsystemType},
        Traced{L"itemType", itemType}, Traced{L"mimeType", mimeType}, Traced{L"pageSizeType", pageSizeType},
        Required{L"paperSize", paperSize, paperSizePattern}, PageCount{pages});
}

TaskHandle FileSendToInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"FileSendToInitiated", MakeFileSendToTask, {localContext, globalContext});
}

void FileSendToCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                         File::ShortcutType shortcutType, File::ShortcutVarianceType shortcutVarianceType,
                         File::MimeType mimeType, File::DestinationType destinationType, std::int32_t pages) {
    CompleteTask<FileSendToTaskDetails>(
        L"FileSendToCompleted", taskHandle, taskResult, Traced{L"shortcutType", shortcutType},
        Traced{L"shortcutVarianceType", shortcutVarianceType}, Traced{L"mimeType", mimeType},
        Traced{L"destinationType", destinationType}, PageCount{pages});
}

TaskHandle DeviceConnectInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"DeviceConnectInitiated", MakeDeviceConnectTask, {localContext, globalContext});
}

void DeviceConnectCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                            ConnectionScenarioType scenarioType, ConnectionMethodType methodType) {
    CompleteTask<DeviceConnectTaskDetails>(L"DeviceConnectCompleted", taskHandle, taskResult,
                                           Traced{L"scenarioType", scenarioType},
                                           Traced{L"methodType", methodType});
}

TaskHandle DeviceConfigInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"DeviceConfigInitiated", MakeDeviceConfigTask, {localContext, globalContext});
}

void DeviceConfigCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                           ConfigurationSettingType settingType) {
    CompleteTask<DeviceConfigTaskDetails>(L"DeviceConfigCompleted", taskHandle, taskResult,
                                          Traced{L"settingType", settingType});
}

TaskHandle SoftwareInstallInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"SoftwareInstallInitiated", MakeSwInstallTask, {localContext, globalContext});
}

void SoftwareInstallCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                              InstallType installerType, const std::wstring& name,
                              const std::wstring& version) {
    // Readers of the log expect the version in both kinds of quotation marks.
    CompleteTask<SwInstallTaskDetails>(
        L"SoftwareInstallCompleted", taskHandle, taskResult, Traced{L"installerType", installerType},
        Required{L"name", name, installNamePattern},
        Required{L"version", version, installVersionPattern, L"version", L"'"});
}

void TrackDiscoveredPrintersEx(const DiscoveredDeviceList& discoveredDeviceList) {
    RunExport(L"TrackDiscoveredPrintersEx", Arguments{Traced{L"discoveredDeviceList", discoveredDeviceList}},
              [&](const Call& call) { PostDiscoveredDevices(call, discoveredDeviceList); });
}

void GetBiid(const std::string& deviceUuid, std::wstring& biid) {
    RunExport(L"GetBiid", [&](const Call& call) { IdentifyDevice(call, deviceUuid, biid); });
}

std::int32_t GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* deviceUuid) {
    const std::string_view text = TextOrEmpty(deviceUuid);
    // Copied inside the frame, which reports a failure of that as one of the call.
    return CopyResult(buffer, size, [&](std::wstring& biid) {
        RunExport(L"GetBiid", [&](const Call& call) { IdentifyDevice(call, std::string(text), biid); });
    });
}

void ToString(ConnectionMethodType enumValue, std::wstring& textValue) {
    RunExport(L"ToString", Arguments{NumberedMethod{enumValue}},
              [&](const Call& call) { NameMethod(call, enumValue, textValue); });
}

std::int32_t ToString_Internal(wchar_t* buffer, std::size_t size, ConnectionMethodType enumValue) {
    return CopyResult(buffer, size, [&](std::wstring& textValue) { ToString(enumValue, textValue); });
}

} // extern "C"
} // namespace Zuvan::Lumeq::API
