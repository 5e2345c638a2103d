// The exports of the double: each makes a note of the call and then makes it. Lumeq.def gives them the names
// of LumeqApi.h.
#include "LumeqTest/RecordedCall.h"

namespace Zuvan::Lumeq::API {

using Double::Recorded;

extern "C" {

void Recorded_StartupEx(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
                        bool trackPrintQueueInfo) {
    Recorded("StartupEx", StartupEx, appName, whyType, howType, trackSystemInfo, trackPrintQueueInfo);
}

void Recorded_ShutdownEx(std::int32_t timeoutMsec) { Recorded("ShutdownEx", ShutdownEx, timeoutMsec); }

void Recorded_FlushEx(std::int32_t timeoutMsec) { Recorded("FlushEx", FlushEx, timeoutMsec); }

void Recorded_Pause() { Recorded("Pause", Pause); }

void Recorded_Resume() { Recorded("Resume", Resume); }

void Recorded_SetUserOptInEx(bool userHasOptedIn) {
    Recorded("SetUserOptInEx", SetUserOptInEx, userHasOptedIn);
}

bool Recorded_GetUserOptInEx() { return Recorded("GetUserOptInEx", GetUserOptInEx); }

void Recorded_SetLocalSubfolderPathEx(const std::wstring& subpath) {
    Recorded("SetLocalSubfolderPathEx", SetLocalSubfolderPathEx, subpath);
}

void Recorded_TrackPrintQueueInfoEx() { Recorded("TrackPrintQueueInfoEx", TrackPrintQueueInfoEx); }

void Recorded_TrackSystemInformationEx() { Recorded("TrackSystemInformationEx", TrackSystemInformationEx); }

void Recorded_SetGlobalContextEx(const wchar_t* globalContext) {
    Recorded("SetGlobalContextEx", SetGlobalContextEx, globalContext);
}

void Recorded_ScreenDisplayed(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                              const wchar_t* mode, const StringDictionary* localContext,
                              const wchar_t* globalContext) {
    Recorded("ScreenDisplayed", ScreenDisplayed, flow, screenPath, screenName, mode, localContext,
             globalContext);
}

void Recorded_ButtonClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                            const wchar_t* mode, const std::wstring& controlName,
                            const StringDictionary* localContext, const wchar_t* globalContext) {
    Recorded("ButtonClicked", ButtonClicked, flow, screenPath, screenName, mode, controlName, localContext,
             globalContext);
}

void Recorded_TileClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                          const wchar_t* mode, const std::wstring& controlName,
                          const StringDictionary* localContext, const wchar_t* globalContext) {
    Recorded("TileClicked", TileClicked, flow, screenPath, screenName, mode, controlName, localContext,
             globalContext);
}

void Recorded_HyperlinkClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                               const wchar_t* mode, const std::wstring& controlName,
                               const StringDictionary* localContext, const wchar_t* globalContext) {
    Recorded("HyperlinkClicked", HyperlinkClicked, flow, screenPath, screenName, mode, controlName,
             localContext, globalContext);
}

void Recorded_CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* screenPath,
                              const std::wstring& screenName, const wchar_t* mode,
                              const std::wstring& controlName, const StringDictionary* localContext,
                              const wchar_t* globalContext) {
    Recorded("CheckboxChanged", CheckboxChanged, isChecked, flow, screenPath, screenName, mode, controlName,
             localContext, globalContext);
}

void Recorded_AdDisplayed(AdType adType, const std::wstring& product, const std::wstring& name,
                          const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                          const std::wstring& screenName, const wchar_t* mode,
                          const std::wstring& controlName, const StringDictionary* localContext,
                          const wchar_t* globalContext) {
    Recorded("AdDisplayed", AdDisplayed, adType, product, name, variant, flow, screenPath, screenName, mode,
             controlName, localContext, globalContext);
}

void Recorded_AdClicked(AdType adType, const std::wstring& product, const std::wstring& name,
                        const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                        const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                        const StringDictionary* localContext, const wchar_t* globalContext) {
    Recorded("AdClicked", AdClicked, adType, product, name, variant, flow, screenPath, screenName, mode,
             controlName, localContext, globalContext);
}

void Recorded_AdClosed(AdType adType, const std::wstring& product, const std::wstring& name,
                       const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                       const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                       const StringDictionary* localContext, const wchar_t* globalContext) {
    Recorded("AdClosed", AdClosed, adType, product, name, variant, flow, screenPath, screenName, mode,
             controlName, localContext, globalContext);
}

void Recorded_UrlLaunchedEx(const std::wstring& url, const StringDictionary* localContext,
                            const wchar_t* globalContext) {
    Recorded("UrlLaunchedEx", UrlLaunchedEx, url, localContext, globalContext);
}

void Recorded_FormSubmitted(const std::wstring& orgName, const std::wstring& codeName,
                            const std::wstring& formName, const std::wstring& version,
                            const StringDictionary& details, const StringDictionary* localContext,
                            const wchar_t* globalContext) {
    Recorded("FormSubmitted", FormSubmitted, orgName, codeName, formName, version, details, localContext,
             globalContext);
}

void Recorded_ReportGenerated(const std::wstring& orgName, const std::wstring& codeName,
                              const std::wstring& reportName, const std::wstring& version,
                              const StringDictionary& details, const StringDictionary* localContext,
                              const wchar_t* globalContext) {
    Recorded("ReportGenerated", ReportGenerated, orgName, codeName, reportName, version, details,
             localContext, globalContext);
}

TaskHandle Recorded_ScanAcquireInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return Recorded("ScanAcquireInitiated", ScanAcquireInitiated, localContext, globalContext);
}

void Recorded_ScanAcquireCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                   Scan::ShortcutType shortcutType,
                                   Scan::ShortcutVarianceType shortcutVarianceType, Scan::ItemType itemType,
                                   Scan::ResolutionType resolutionType, Scan::ColorModeType colorModeType,
                                   Scan::PageSizeType pageSizeType, Scan::SourceType sourceType,
                                   Scan::MimeType mimeType, const ScanFeatureMap& features,
                                   std::int32_t pages) {
    Recorded("ScanAcquireCompleted", ScanAcquireCompleted, taskHandle, taskResult, shortcutType,
             shortcutVarianceType, itemType, resolutionType, colorModeType, pageSizeType, sourceType,
             mimeType, features, pages);
}

TaskHandle Recorded_PrintBasicInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return Recorded("PrintBasicInitiated", PrintBasicInitiated, localContext, globalContext);
}

void Recorded_PrintBasicCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                  Print::SubsystemType subsystemType, Print::ItemType itemType,
                                  Print::MimeType mimeType, Print::PageSizeType pageSizeType,
                                  const std::wstring& paperSize, std::int32_t pages) {
    Recorded("PrintBasicCompleted", PrintBasicCompleted, taskHandle, taskResult, subsystemType, itemType,
             mimeType, pageSizeType, paperSize, pages);
}

TaskHandle Recorded_FileSendToInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return Recorded("FileSendToInitiated", FileSendToInitiated, localContext, globalContext);
}

void Recorded_FileSendToCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                  File::ShortcutType shortcutType,
                                  File::ShortcutVarianceType shortcutVarianceType, File::MimeType mimeType,
                                  File::DestinationType destinationType, std::int32_t pages) {
    Recorded("FileSendToCompleted", FileSendToCompleted, taskHandle, taskResult, shortcutType,
             shortcutVarianceType, mimeType, destinationType, pages);
}

TaskHandle Recorded_DeviceConnectInitiated(const StringDictionary* localContext,
                                           const wchar_t* globalContext) {
    return Recorded("DeviceConnectInitiated", DeviceConnectInitiated, localContext, globalContext);
}

void Recorded_DeviceConnectCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                     ConnectionScenarioType scenarioType, ConnectionMethodType methodType) {
    Recorded("DeviceConnectCompleted", DeviceConnectCompleted, taskHandle, taskResult, scenarioType,
             methodType);
}

TaskHandle Recorded_DeviceConfigInitiated(const StringDictionary* localContext,
                                          const wchar_t* globalContext) {
    return Recorded("DeviceConfigInitiated", DeviceConfigInitiated, localContext, globalContext);
}

void Recorded_DeviceConfigCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                    ConfigurationSettingType settingType) {
    Recorded("DeviceConfigCompleted", DeviceConfigCompleted, taskHandle, taskResult, settingType);
}

TaskHandle Recorded_SoftwareInstallInitiated(const StringDictionary* localContext,
                                             const wchar_t* globalContext) {
    return Recorded("SoftwareInstallInitiated", SoftwareInstallInitiated, localContext, globalContext);
}

void Recorded_SoftwareInstallCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                       InstallType installerType, const std::wstring& name,
                                       const std::wstring& version) {
    Recorded("SoftwareInstallCompleted", SoftwareInstallCompleted, taskHandle, taskResult, installerType,
             name, version);
}

void Recorded_TrackDiscoveredPrintersEx(const DiscoveredDeviceList& discoveredDeviceList) {
    Recorded("TrackDiscoveredPrintersEx", TrackDiscoveredPrintersEx, discoveredDeviceList);
}

void Recorded_GetBiid(const std::string& deviceUuid, std::wstring& biid) {
    Recorded("GetBiid", GetBiid, deviceUuid, biid);
}

std::int32_t Recorded_GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* deviceUuid) {
    return Recorded("GetBiid_Internal", GetBiid_Internal, buffer, size, deviceUuid);
}

void Recorded_ToString(ConnectionMethodType enumValue, std::wstring& textValue) {
    Recorded("ToString", ToString, enumValue, textValue);
}

std::int32_t Recorded_ToString_Internal(wchar_t* buffer, std::size_t size, ConnectionMethodType enumValue) {
    return Recorded("ToString_Internal", ToString_Internal, buffer, size, enumValue);
}

} // extern "C"
} // namespace Zuvan::Lumeq::API
