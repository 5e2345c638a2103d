#include "samples/host/Call.h"

#include <map>

namespace SampleHost {

namespace {

using Reader = std::function<Step(const std::string& name, const Json&)>;

/// The reader for calls of a function of type `Function` with these argument names, in order.
template <class Function>
struct TakesHelper;
template <class Result, class... Parameters>
struct TakesHelper<Result(Parameters...)> {
    template <class... Names>
    static Reader Make(Names... names) {
        static_assert(sizeof...(Names) == sizeof...(Parameters), "every argument has one name");
        return [names = std::array<const char*, sizeof...(Names)>{names...}](const std::string& name,
                                                                             const Json& json) {
            return Step(Call<Result, Parameters...>(name, names, json));
        };
    }
};
template <class Function, class... Names>
Reader Takes(Names... names) {
    return TakesHelper<Function>::Make(names...);
}

const std::map<std::string, Reader>& Exports() {
    static const std::map<std::string, Reader> exports{
        {"StartupEx", Takes<decltype(API::StartupEx)>("appName", "whyType", "howType", "trackSystemInfo",
                                                      "trackPrintQueueInfo")},
        {"ShutdownEx", Takes<decltype(API::ShutdownEx)>("timeoutMsec")},
        {"FlushEx", Takes<decltype(API::FlushEx)>("timeoutMsec")},
        {"Pause", Takes<decltype(API::Pause)>()},
        {"Resume", Takes<decltype(API::Resume)>()},
        {"SetUserOptInEx", Takes<decltype(API::SetUserOptInEx)>("userHasOptedIn")},
        {"GetUserOptInEx", Takes<decltype(API::GetUserOptInEx)>()},
        {"SetLocalSubfolderPathEx", Takes<decltype(API::SetLocalSubfolderPathEx)>("subpath")},
        {"TrackPrintQueueInfoEx", Takes<decltype(API::TrackPrintQueueInfoEx)>()},
        {"TrackSystemInformationEx", Takes<decltype(API::TrackSystemInformationEx)>()},
        {"SetGlobalContextEx", Takes<decltype(API::SetGlobalContextEx)>("globalContext")},

        {"ScreenDisplayed", Takes<decltype(API::ScreenDisplayed)>("flow", "screenPath", "screenName", "mode",
                                                                  "localContext", "globalContext")},
        {"ButtonClicked",
         Takes<decltype(API::ButtonClicked)>("flow", "screenPath", "screenName", "mode", "controlName",
                                             "localContext", "globalContext")},
        {"TileClicked", Takes<decltype(API::TileClicked)>("flow", "screenPath", "screenName", "mode",
                                                          "controlName", "localContext", "globalContext")},
        {"HyperlinkClicked",
         Takes<decltype(API::HyperlinkClicked)>("flow", "screenPath", "screenName", "mode", "controlName",
                                                "localContext", "globalContext")},
        {"CheckboxChanged",
         Takes<decltype(API::CheckboxChanged)>("isChecked", "flow", "screenPath", "screenName", "mode",
                                               "controlName", "localContext", "globalContext")},
        {"AdDisplayed", Takes<decltype(API::AdDisplayed)>("adType", "product", "name", "variant", "flow",
                                                          "screenPath", "screenName", "mode", "controlName",
                                                          "localContext", "globalContext")},
        {"AdClicked", Takes<decltype(API::AdClicked)>("adType", "product", "name", "variant", "flow",
                                                      "screenPath", "screenName", "mode", "controlName",
                                                      "localContext", "globalContext")},
        {"AdClosed", Takes<decltype(API::AdClosed)>("adType", "product", "name", "variant", "flow",
                                                    "screenPath", "screenName", "mode", "controlName",
                                                    "localContext", "globalContext")},
        {"UrlLaunchedEx", Takes<decltype(API::UrlLaunchedEx)>("url", "localContext", "globalContext")},
        {"FormSubmitted", Takes<decltype(API::FormSubmitted)>("orgName", "codeName", "formName", "version",
                                                              "details", "localContext", "globalContext")},
        {"ReportGenerated",
         Takes<decltype(API::ReportGenerated)>("orgName", "codeName", "reportName", "version", "details",
                                               "localContext", "globalContext")},

        {"ScanAcquireInitiated", Takes<decltype(API::ScanAcquireInitiated)>("localContext", "globalContext")},
        {"ScanAcquireCompleted",
         Takes<decltype(API::ScanAcquireCompleted)>(
             "taskHandle", "taskResult", "shortcutType", "shortcutVarianceType", "itemType", "resolutionType",
             "colorModeType", "pageSizeType", "sourceType", "mimeType", "features", "pages")},
        {"PrintBasicInitiated", Takes<decltype(API::PrintBasicInitiated)>("localContext", "globalContext")},
        {"PrintBasicCompleted",
         Takes<decltype(API::PrintBasicCompleted)>("taskHandle", "taskResult", "subsystemType", "itemType",
                                                   "mimeType", "pageSizeType", "paperSize", "pages")},
        {"FileSendToInitiated", Takes<decltype(API::FileSendToInitiated)>("localContext", "globalContext")},
        {"FileSendToCompleted", Takes<decltype(API::FileSendToCompleted)>(
                                    "taskHandle", "taskResult", "shortcutType", "shortcutVarianceType",
                                    "mimeType", "destinationType", "pages")},
        {"DeviceConnectInitiated",
         Takes<decltype(API::DeviceConnectInitiated)>("localContext", "globalContext")},
        {"DeviceConnectCompleted", Takes<decltype(API::DeviceConnectCompleted)>(
                                       "taskHandle", "taskResult", "scenarioType", "methodType")},
        {"DeviceConfigInitiated",
         Takes<decltype(API::DeviceConfigInitiated)>("localContext", "globalContext")},
        {"DeviceConfigCompleted",
         Takes<decltype(API::DeviceConfigCompleted)>("taskHandle", "taskResult", "settingType")},
        {"SoftwareInstallInitiated",
         Takes<decltype(API::SoftwareInstallInitiated)>("localContext", "globalContext")},
        {"SoftwareInstallCompleted", Takes<decltype(API::SoftwareInstallCompleted)>(
                                         "taskHandle", "taskResult", "installerType", "name", "version")},

        {"TrackDiscoveredPrintersEx",
         Takes<decltype(API::TrackDiscoveredPrintersEx)>("discoveredDeviceList")},
        {"GetBiid", Takes<decltype(API::GetBiid)>("deviceUuid", "biid")},
        {"GetBiid_Internal", Takes<decltype(API::GetBiid_Internal)>("buffer", "size", "deviceUuid")},
        {"ToString", Takes<decltype(API::ToString)>("enumValue", "textValue")},
        {"ToString_Internal", Takes<decltype(API::ToString_Internal)>("buffer", "size", "enumValue")},
    };
    return exports;
}

} // namespace

Step ReadCall(const Json& json) {
    const Json& name = json["call"];
    if (!name.is_string())
        throw BadLine("\"call\": expected the name of an export");
    const auto found = Exports().find(name.get<std::string>());
    if (found == Exports().end())
        throw BadLine("unknown call \"" + name.get<std::string>() + "\"");
    return found->second(found->first, json);
}

} // namespace SampleHost
