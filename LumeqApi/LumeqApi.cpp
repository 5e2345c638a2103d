#include <Lumeq/LumeqApi.h>

#include "Common/Text.h"
#include "LumeqApi/BufferCopy.h"
#include "LumeqApi/CallFrame.h"
#include "LumeqApi/DeviceTracking.h"
#include "LumeqApi/Patterns.h"
#include "LumeqApi/ScreenEvents.h"
#include "LumeqApi/TaskEvents.h"
#include "LumeqLib/Extra/Collection/DeviceIdentifier.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqLib/Extra/Eventing/GenericForm.h"
#include "LumeqLib/Extra/Eventing/GenericReport.h"
#include "LumeqLib/Extra/Eventing/TaskDetails.h"
#include "LumeqLib/Extra/Eventing/UiEvents.h"
#include "LumeqShim/LumeqNativeShim.h"
#include "LumeqShim/PauseState.h"

#include <exception>

namespace Zuvan::Lumeq::API {

using namespace Extra::Eventing;
using namespace LumeqShim;
using Common::SeverityLevel;

namespace {

// "controName" is what readers of the log look for.
constexpr wchar_t ClickFormat[] = L"flow: %s, screenPath: %s, screenName: %s, mode: %s, controName: %s, "
                                  L"localContext: %s, globalContext: %s";

/// The timeout to hand on.
std::int32_t CheckTimeout(const Call& call, std::int32_t timeoutMsec) {
    constexpr std::int32_t FallbackMilliseconds = 10000;
    call.Trace(L"timeoutMsec: %d", timeoutMsec);
    if (timeoutMsec >= 0)
        return timeoutMsec;
    call.Complain(L"invalid timeoutMsec arg: " + std::to_wstring(timeoutMsec));
    return FallbackMilliseconds;
}

std::wstring Moniker(const std::wstring& orgName, const std::wstring& codeName, const wchar_t* kind,
                     const std::wstring& name, const std::wstring& version) {
    return L"x-" + orgName + L"_" + codeName + kind + name + L"/" + version;
}

} // namespace

extern "C" {

void StartupEx(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
               bool trackPrintQueueInfo) {
    RunExport(L"StartupEx", [&](Call& call) {
        call.Trace(L"appName: %s, whyType: %s, howType: %s, trackSystemInfo: %s, trackPrintQueueInfo: %s",
                   appName, whyType, howType, trackSystemInfo, trackPrintQueueInfo);
        call.Required(appName, L"appName", appNamePattern);
        // A pause outlives its run only if that run died; it is mended whether or not this one starts.
        if (IsPauseMarked()) {
            call.Log(SeverityLevel::ERROR, L"%s exists and it shouldn't that means there was a CRASH!!",
                     OptinBeforePauseKey);
            InternalResume();
        }
        if (call.Failed())
            return;
        StartupTypes types{};
        types.whyType = ToRecord(whyType);
        types.howType = ToRecord(howType);
        StartupXX(appName, types, trackSystemInfo, trackPrintQueueInfo);
    });
}

void ShutdownEx(std::int32_t timeoutMsec) {
    RunExport(L"ShutdownEx", [&](Call& call) {
        const std::int32_t timeout = CheckTimeout(call, timeoutMsec);
        InternalResume();
        ShutdownXX(timeout);
    });
}

void FlushEx(std::int32_t timeoutMsec) {
    RunExport(L"FlushEx", [&](Call& call) { FlushXX(CheckTimeout(call, timeoutMsec)); });
}

void Pause() {
    RunExport(L"Pause", [](Call& call) {
        call.Trace(L"");
        InternalPause();
    });
}

void Resume() {
    RunExport(L"Resume", [](Call& call) {
        call.Trace(L"");
        InternalResume();
    });
}

void SetUserOptInEx(bool userHasOptedIn) {
    RunExport(L"SetUserOptInEx", [&](Call& call) {
        call.Trace(L"userHasOptedIn: %s", userHasOptedIn);
        RememberChoiceDuringPause(userHasOptedIn);
        SetUserOptInXX(userHasOptedIn);
    });
}

bool GetUserOptInEx() {
    return RunExport(L"GetUserOptInEx", [](Call& call) {
        call.Trace(L"");
        const bool userHasOptedIn = GetUserOptInXX();
        call.Log(SeverityLevel::TRACE, L"...returns: %s", userHasOptedIn ? L"true" : L"false");
        return userHasOptedIn;
    });
}

void SetLocalSubfolderPathEx(const std::wstring& subpath) {
    RunExport(L"SetLocalSubfolderPathEx", [&](Call& call) {
        call.Trace(L"subpath: %s", subpath);
        call.Required(subpath, L"subpath", subpathPattern);
        if (!call.Failed())
            LocalSubfolderPathXX(subpath);
    });
}

void TrackPrintQueueInfoEx() {
    RunExport(L"TrackPrintQueueInfoEx", [](Call& call) {
        call.Trace(L"");
        TrackPrintQueueInfoXX();
    });
}

void TrackSystemInformationEx() {
    RunExport(L"TrackSystemInformationEx", [](Call& call) {
        call.Trace(L"");
        TrackSystemInformationXX();
    });
}

void SetGlobalContextEx(const wchar_t* globalContext) {
    RunExport(L"SetGlobalContextEx", [&](Call& call) {
        call.Trace(L"globalContext: %s", globalContext);
        const std::wstring value(globalContext);
        call.Required(value, L"globalContext", contextPattern);
        if (!call.Failed())
            Common::GlobalContext() = value;
    });
}

void ScreenDisplayed(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                     const wchar_t* mode, const StringDictionary* localContext,
                     const wchar_t* globalContext) {
    const ScreenArguments screen{flow, screenPath, screenName, mode, nullptr, localContext, globalContext};
    RunExport(L"ScreenDisplayed", [&](Call& call) {
        call.Trace(L"flow: %s, screenPath: %s, screenName: %s, mode: %s, localContext: %s, globalContext: %s",
                   flow, screenPath, screenName, mode, localContext, globalContext);
        CheckScreen(call, screen);
        if (!call.Failed())
            PostObjectEvent({MakeScreenObject, MakeDisplayedEvent}, ScreenLabel(screen, ControlMark), nullptr,
                            localContext, globalContext);
    });
}

void ButtonClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                   const wchar_t* mode, const std::wstring& controlName, const StringDictionary* localContext,
                   const wchar_t* globalContext) {
    PostControlEvent(L"ButtonClicked", ClickFormat,
                     {flow, screenPath, screenName, mode, &controlName, localContext, globalContext},
                     {MakeButtonObject, MakeClickedEvent});
}

void TileClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                 const wchar_t* mode, const std::wstring& controlName, const StringDictionary* localContext,
                 const wchar_t* globalContext) {
    PostControlEvent(L"TileClicked", ClickFormat,
                     {flow, screenPath, screenName, mode, &controlName, localContext, globalContext},
                     {MakeTileObject, MakeClickedEvent});
}

void HyperlinkClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                      const wchar_t* mode, const std::wstring& controlName,
                      const StringDictionary* localContext, const wchar_t* globalContext) {
    PostControlEvent(L"HyperlinkClicked", ClickFormat,
                     {flow, screenPath, screenName, mode, &controlName, localContext, globalContext},
                     {MakeHyperlinkObject, MakeClickedEvent}, HyperlinkMark);
}

void CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* screenPath,
                     const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                     const StringDictionary* localContext, const wchar_t* globalContext) {
    const ScreenArguments screen{flow,         screenPath,   screenName,   mode,
                                 &controlName, localContext, globalContext};
    RunExport(L"CheckboxChanged", [&](Call& call) {
        call.Trace(L"isChecked: %s, flow: %s, screenPath: %s, screenName: %s, mode: %s, controlName: %s, "
                   L"localContext: %s, globalContext: %s",
                   isChecked, flow, screenPath, screenName, mode, controlName, localContext, globalContext);
        CheckScreen(call, screen);
        if (!call.Failed())
            PostObjectEvent({MakeCheckboxObject, isChecked ? MakeCheckedEvent : MakeUncheckedEvent},
                            ScreenLabel(screen, ControlMark), nullptr, localContext, globalContext);
    });
}

void AdDisplayed(AdType adType, const std::wstring& product, const std::wstring& name,
                 const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                 const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                 const StringDictionary* localContext, const wchar_t* globalContext) {
    PostAdEvent(L"AdDisplayed", {adType, product, name, variant},
                {flow, screenPath, screenName, mode, &controlName, localContext, globalContext},
                MakeDisplayedEvent);
}

void AdClicked(AdType adType, const std::wstring& product, const std::wstring& name,
               const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
               const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
               const StringDictionary* localContext, const wchar_t* globalContext) {
    PostAdEvent(L"AdClicked", {adType, product, name, variant},
                {flow, screenPath, screenName, mode, &controlName, localContext, globalContext},
                MakeClickedEvent);
}

void AdClosed(AdType adType, const std::wstring& product, const std::wstring& name,
              const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
              const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
              const StringDictionary* localContext, const wchar_t* globalContext) {
    PostAdEvent(L"AdClosed", {adType, product, name, variant},
                {flow, screenPath, screenName, mode, &controlName, localContext, globalContext},
                MakeClosedEvent);
}

void UrlLaunchedEx(const std::wstring& url, const StringDictionary* localContext,
                   const wchar_t* globalContext) {
    RunExport(L"UrlLaunchedEx", [&](Call& call) {
        call.Trace(L"url: %s, localContext: %s, globalContext: %s", url, localContext, globalContext);
        const std::wstring urlNoPii = url.substr(0, url.find(L'?'));
        call.Required(urlNoPii, L"urlNoPii", urlPattern);
        call.Optional(globalContext, L"globalContext", contextPattern);
        if (!call.Failed())
            PostObjectEvent({MakeUrlObject, MakeLaunchedEvent}, urlNoPii, nullptr, localContext,
                            globalContext);
    });
}

void FormSubmitted(const std::wstring& orgName, const std::wstring& codeName, const std::wstring& formName,
                   const std::wstring& version, const StringDictionary& details,
                   const StringDictionary* localContext, const wchar_t* globalContext) {
    RunExport(L"FormSubmitted", [&](Call& call) {
        call.Trace(L"orgName: %s, codeName: %s, formName: %s, version: %s, details: %s, localContext: %s, "
                   L"globalContext: %s",
                   orgName, codeName, formName, version, details, localContext, globalContext);
        call.Required(orgName, L"orgName", orgNamePattern);
        call.Required(codeName, L"codeName", codeNamePattern);
        call.Required(formName, L"formName", formNamePattern);
        call.Required(version, L"version", schemaVersionPattern);
        call.Optional(globalContext, L"globalContext", contextPattern);
        if (call.Failed())
            return;
        const GenericForm form(Moniker(orgName, codeName, L"_form_", formName, version), details);
        const EventingEvent event = MakeSubmittedEvent(form, MakeEventContext(localContext, globalContext));
        PostEventXX(&event);
    });
}

void ReportGenerated(const std::wstring& orgName, const std::wstring& codeName,
                     const std::wstring& reportName, const std::wstring& version,
                     const StringDictionary& details, const StringDictionary* localContext,
                     const wchar_t* globalContext) {
    RunExport(L"ReportGenerated", [&](Call& call) {
        call.Trace(L"orgName: %s, codeName: %s, reportName: %s, version: %s, details: %s, localContext: %s, "
                   L"globalContext: %s",
                   orgName, codeName, reportName, version, details, localContext, globalContext);
        call.Required(orgName, L"orgName", orgNamePattern);
        call.Required(codeName, L"codeName", codeNamePattern);
        call.Required(reportName, L"reportName", reportNamePattern);
        call.Required(version, L"version", schemaVersionPattern);
        call.Optional(globalContext, L"globalContext", contextPattern);
        if (call.Failed())
            return;
        const GenericReport report(Moniker(orgName, codeName, L"_report_", reportName, version), details);
        const EventingEvent event = MakeGeneratedEvent(report, MakeEventContext(localContext, globalContext));
        PostEventXX(&event);
    });
}

TaskHandle ScanAcquireInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"ScanAcquireInitiated", localContext, globalContext, MakeScanAcquireTask);
}

void ScanAcquireCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                          Scan::ShortcutType shortcutType, Scan::ShortcutVarianceType shortcutVarianceType,
                          Scan::ItemType itemType, Scan::ResolutionType resolutionType,
                          Scan::ColorModeType colorModeType, Scan::PageSizeType pageSizeType,
                          Scan::SourceType sourceType, Scan::MimeType mimeType,
                          const ScanFeatureMap& features, std::int32_t pages) {
    CompleteTask(
        L"ScanAcquireCompleted", taskHandle, taskResult,
        [&](Call& call) {
            call.Trace(L"taskHandle: 0x%p, taskResult: %s, shortcutType: %s, shortcutVarianceType: %s, "
                       L"itemType: %s, resolutionType: %s, colorModeType: %s, pageSizeType: %s, sourceType: "
                       L"%s, mimeType: %s, features: [%d item(s)], pages: %d",
                       *taskHandle, taskResult, shortcutType, shortcutVarianceType, itemType, resolutionType,
                       colorModeType, pageSizeType, sourceType, mimeType,
                       static_cast<std::int32_t>(features.size()), pages);
        },
        [&](Call& call) { CheckPages(call, pages); },
        [&] {
            ScanFeatureMap copy = features;
            // The first undefined value names itself in the log, so the order counts.
            const MimeType mime = ToRecord(mimeType);
            const Source source = ToRecord(sourceType);
            const PageSize pageSize = ToRecord(pageSizeType);
            const ColorMode colorMode = ToRecord(colorModeType);
            const Resolution resolution = ToRecord(resolutionType);
            const ItemType item = ToRecord(itemType);
            const ShortcutVariance variance = ToRecord(shortcutVarianceType);
            const Shortcut shortcut = ToRecord(shortcutType);
            return ScanAcquireTaskDetails(shortcut, variance, item, resolution, colorMode, pageSize, source,
                                          mime, std::move(copy), pages);
        });
}

TaskHandle PrintBasicInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"PrintBasicInitiated", localContext, globalContext, MakePrintBasicTask);
}

void PrintBasicCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                         Print::SubsystemType subsystemType, Print::ItemType itemType,
                         Print::MimeType mimeType, Print::PageSizeType pageSizeType,
                         const std::wstring& paperSize, std::int32_t pages) {
    CompleteTask(
        L"PrintBasicCompleted", taskHandle, taskResult,
        [&](Call& call) {
            call.Trace(L"taskHandle: 0x%p, taskResult: %s, subsystemType: %s, itemType: %s, mimeType: %s, "
                       L"pageSizeType: %s, paperSize: %s, pages: %d",
                       *taskHandle, taskResult, subsystemType, itemType, mimeType, pageSizeType, paperSize,
                       pages);
        },
        [&](Call& call) {
            call.Required(paperSize, L"paperSize", paperSizePattern);
            CheckPages(call, pages);
        },
        [&] {
            const SourceItemPrintSize size = ToRecord(pageSizeType);
            const SourceMimeType mime = ToRecord(mimeType);
            const SourceItemType item = ToRecord(itemType);
            const SubsystemType subsystem = ToRecord(subsystemType);
            return PrintBasicTaskDetails(subsystem, item, mime, size, paperSize, pages);
        });
}

TaskHandle FileSendToInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"FileSendToInitiated", localContext, globalContext, MakeFileSendToTask);
}

void FileSendToCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                         File::ShortcutType shortcutType, File::ShortcutVarianceType shortcutVarianceType,
                         File::MimeType mimeType, File::DestinationType destinationType, std::int32_t pages) {
    CompleteTask(
        L"FileSendToCompleted", taskHandle, taskResult,
        [&](Call& call) {
            call.Trace(L"taskHandle: 0x%p, taskResult: %s, shortcutType: %s, shortcutVarianceType: %s, "
                       L"mimeType: %s, destinationType: %s, pages: %d",
                       *taskHandle, taskResult, shortcutType, shortcutVarianceType, mimeType, destinationType,
                       pages);
        },
        [&](Call& call) { CheckPages(call, pages); },
        [&] {
            const Destination destination = ToRecord(destinationType);
            const MimeType mime = ToRecord(mimeType);
            const ShortcutVariance variance = ToRecord(shortcutVarianceType);
            const Shortcut shortcut = ToRecord(shortcutType);
            return FileSendToTaskDetails(shortcut, variance, mime, destination, pages);
        });
}

TaskHandle DeviceConnectInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"DeviceConnectInitiated", localContext, globalContext, MakeDeviceConnectTask);
}

void DeviceConnectCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                            ConnectionScenarioType scenarioType, ConnectionMethodType methodType) {
    CompleteTask(
        L"DeviceConnectCompleted", taskHandle, taskResult,
        [&](Call& call) {
            call.Trace(L"taskHandle: 0x%p, taskResult: %s, scenarioType: %s, methodType: %s", *taskHandle,
                       taskResult, scenarioType, methodType);
        },
        [](Call&) {},
        [&] {
            const ConnectionMethod method = ToRecord(methodType);
            const ConnectionScenario scenario = ToRecord(scenarioType);
            return DeviceConnectTaskDetails(scenario, method);
        });
}

TaskHandle DeviceConfigInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"DeviceConfigInitiated", localContext, globalContext, MakeDeviceConfigTask);
}

void DeviceConfigCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                           ConfigurationSettingType settingType) {
    CompleteTask(
        L"DeviceConfigCompleted", taskHandle, taskResult,
        [&](Call& call) {
            call.Trace(L"taskHandle: 0x%p, taskResult: %s, settingType: %s", *taskHandle, taskResult,
                       settingType);
        },
        [](Call&) {}, [&] { return DeviceConfigTaskDetails(ToRecord(settingType)); });
}

TaskHandle SoftwareInstallInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    return InitiateTask(L"SoftwareInstallInitiated", localContext, globalContext, MakeSwInstallTask);
}

void SoftwareInstallCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                              InstallType installerType, const std::wstring& name,
                              const std::wstring& version) {
    CompleteTask(
        L"SoftwareInstallCompleted", taskHandle, taskResult,
        [&](Call& call) {
            // The version stands in both kinds of quotation marks; readers of the log expect that.
            call.Trace(L"taskHandle: 0x%p, taskResult: %s, installerType: %s, name: %s, version: '%s'",
                       *taskHandle, taskResult, installerType, name, version);
        },
        [&](Call& call) {
            call.Required(name, L"name", installNamePattern);
            call.Required(version, L"version", installVersionPattern);
        },
        [&] { return SwInstallTaskDetails(ToRecord(installerType), name, version); });
}

void TrackDiscoveredPrintersEx(const DiscoveredDeviceList& discoveredDeviceList) {
    RunExport(L"TrackDiscoveredPrintersEx", [&](Call& call) {
        call.Trace(L"discoveredDeviceList: [%d item(s)]",
                   static_cast<std::int32_t>(discoveredDeviceList.size()));
        for (const DiscoveredDevice& device : discoveredDeviceList)
            PostDiscoveredDevice(call, device);
    });
}

void GetBiid(const std::string& deviceUuid, std::wstring& biid) {
    RunExport(L"GetBiid", [&](Call& call) {
        call.Trace(L"deviceUuid: \"%S\"", deviceUuid);
        if (deviceUuid.empty()) {
            call.Reject(L"empty deviceUuid");
            return;
        }
        // Up to the first zero byte.
        biid = Common::ToLower(Extra::Collection::HmacSha256Hex(deviceUuid.c_str()));
        call.Trace(L"...returns biid: %s", biid);
    });
}

std::int32_t GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* deviceUuid) {
    std::wstring biid;
    std::string text;
    try {
        text = std::string(deviceUuid);
    } catch (const std::exception&) {
        // Without a copy the text is empty, which GetBiid reports.
    }
    GetBiid(text, biid);
    return CopyToBuffer(buffer, size, biid);
}

void ToString(ConnectionMethodType enumValue, std::wstring& textValue) {
    RunExport(L"ToString", [&](Call& call) {
        call.Trace(L"enumValue: %s (%d)", enumValue, static_cast<std::int32_t>(enumValue));
        textValue = ApiText(enumValue);
        call.Trace(L"...returns textValue: %s", textValue);
    });
}

std::int32_t ToString_Internal(wchar_t* buffer, std::size_t size, ConnectionMethodType enumValue) {
    std::wstring textValue;
    ToString(enumValue, textValue);
    return CopyToBuffer(buffer, size, textValue);
}

} // extern "C"
} // namespace Zuvan::Lumeq::API
