#include "faults/ExportCalls.h"

#include <algorithm>
#include <ostream>

namespace Zuvan::Lumeq::Testing {

namespace {

// Most texts are longer than the buffer inside a string, so that copying them allocates.
const API::StringDictionary LocalContext{{L"a local field", L"a local value"}, {L"b", L"2"}};
constexpr const wchar_t* Model = L"Office Device 8000";
const std::string DeviceUuid = "1c852a4d-b800-1f08-abcd-308d99fa7a21";

template <class Function, class... Arguments>
auto Invoke(const FailingLibrary& library, const char* name, const Arguments&... arguments) {
    return library.Find<Function>(name)(arguments...);
}

void ClickButton(const FailingLibrary& library, const std::wstring& controlName) {
    Invoke<decltype(API::ButtonClicked)>(library, "ButtonClicked", L"first_setup", L"devices/added",
                                         L"summary_screen", L"first_run", controlName, &LocalContext, Model);
}

void ClickTile(const FailingLibrary& library, const std::wstring& controlName) {
    Invoke<decltype(API::TileClicked)>(library, "TileClicked", L"first_setup", L"devices/added",
                                       L"summary_screen", L"first_run", controlName, &LocalContext, Model);
}

// A mode with an underscore passes the export's check and fails in the event's.
void ClickHyperlink(const FailingLibrary& library, const wchar_t* mode) {
    Invoke<decltype(API::HyperlinkClicked)>(library, "HyperlinkClicked", L"first_setup", L"devices/added",
                                            L"summary_screen", mode, L"more-about-it", &LocalContext, Model);
}

void ChangeCheckbox(const FailingLibrary& library, const wchar_t* flow) {
    Invoke<decltype(API::CheckboxChanged)>(library, "CheckboxChanged", static_cast<unsigned char>(1), flow,
                                           L"devices/added", L"summary_screen", L"first_run",
                                           L"remember-this", &LocalContext, Model);
}

void DisplayScreen(const FailingLibrary& library, const std::wstring& screenName) {
    Invoke<decltype(API::ScreenDisplayed)>(library, "ScreenDisplayed", L"first_setup", L"devices/added",
                                           screenName, L"first_run", &LocalContext, Model);
}

template <class Function>
void CallAd(const FailingLibrary& library, const char* name, API::AdType type) {
    Invoke<Function>(library, name, type, L"ink subscription", L"winter campaign", L"blue and white",
                     L"first_setup", L"devices/added", L"summary_screen", L"first_run", L"banner-at-top",
                     &LocalContext, Model);
}

void LaunchUrl(const FailingLibrary& library, const std::wstring& url) {
    Invoke<decltype(API::UrlLaunchedEx)>(library, "UrlLaunchedEx", url, &LocalContext, Model);
}

void SubmitForm(const FailingLibrary& library, const std::wstring& orgName) {
    Invoke<decltype(API::FormSubmitted)>(library, "FormSubmitted", orgName, L"registration",
                                         L"customer_survey", L"1.0", LocalContext, &LocalContext, Model);
}

void GenerateReport(const FailingLibrary& library, const std::wstring& version) {
    Invoke<decltype(API::ReportGenerated)>(library, "ReportGenerated", L"printing", L"diagnostics",
                                           L"ink_levels", version, LocalContext, &LocalContext, Model);
}

template <class Function>
void Initiate(const FailingLibrary& library, HostState& host, const char* name,
              const wchar_t* model = Model) {
    host.task = Invoke<Function>(library, name, &LocalContext, model);
}

void CompleteScan(const FailingLibrary& library, HostState& host, const std::wstring& result) {
    using namespace API::Scan;
    Invoke<decltype(API::ScanAcquireCompleted)>(
        library, "ScanAcquireCompleted", &host.task, result, ShortcutType::every_day_scan,
        ShortcutVarianceType::original_one_off, ItemType::document, ResolutionType::dpi_300,
        ColorModeType::halftone, PageSizeType::entirearea, SourceType::adf_duplex_book,
        MimeType::application_pdfsearchable,
        API::ScanFeatureMap{{L"automatic_crop", true}, {L"deskew", false}}, 12);
}

void CompletePrint(const FailingLibrary& library, HostState& host, std::int32_t pages) {
    using namespace API::Print;
    Invoke<decltype(API::PrintBasicCompleted)>(library, "PrintBasicCompleted", &host.task, L"error_paper",
                                               SubsystemType::native, ItemType::photo_single,
                                               MimeType::image_any, PageSizeType::size_13x18_cm,
                                               L"Photo paper 13x18", pages);
}

void CompleteSending(const FailingLibrary& library, HostState& host, API::File::DestinationType destination) {
    using namespace API::File;
    Invoke<decltype(API::FileSendToCompleted)>(
        library, "FileSendToCompleted", &host.task, L"success", ShortcutType::every_day_scan,
        ShortcutVarianceType::original_one_off, MimeType::application_pdfsearchable, destination, 3);
}

void CompleteConnection(const FailingLibrary& library, HostState& host, const std::wstring& result) {
    Invoke<decltype(API::DeviceConnectCompleted)>(library, "DeviceConnectCompleted", &host.task, result,
                                                  API::ConnectionScenarioType::reconfigure,
                                                  API::ConnectionMethodType::frontpanel_setup_of_wireless);
}

void CompleteConfiguration(const FailingLibrary& library, HostState& host, const std::wstring& result) {
    Invoke<decltype(API::DeviceConfigCompleted)>(library, "DeviceConfigCompleted", &host.task, result,
                                                 API::ConfigurationSettingType::webservices_registration);
}

void CompleteInstallation(const FailingLibrary& library, HostState& host, const std::wstring& version) {
    Invoke<decltype(API::SoftwareInstallCompleted)>(library, "SoftwareInstallCompleted", &host.task,
                                                    L"unknown", API::InstallType::msi, L"Scanner software",
                                                    version);
}

void TrackPrinter(const FailingLibrary& library, const API::StringDictionary& information) {
    Invoke<decltype(API::TrackDiscoveredPrintersEx)>(library, "TrackDiscoveredPrintersEx",
                                                     API::DiscoveredDeviceList{{nullptr, information}});
}

void IdentifyDevice(const FailingLibrary& library, HostState& host, const std::string& deviceUuid) {
    library.Find<decltype(API::GetBiid)>("GetBiid")(deviceUuid, host.text);
}

void IdentifyDevicePlainly(const FailingLibrary& library, const char* deviceUuid) {
    wchar_t buffer[100] = {};
    library.Find<decltype(API::GetBiid_Internal)>("GetBiid_Internal")(buffer, 100, deviceUuid);
}

void ConvertPlainly(const FailingLibrary& library) {
    wchar_t buffer[100] = {};
    library.Find<decltype(API::ToString_Internal)>("ToString_Internal")(
        buffer, 100, API::ConnectionMethodType::already_on_network);
}

void StartAs(const FailingLibrary& library, const std::wstring& appName) {
    Invoke<decltype(API::StartupEx)>(library, "StartupEx", appName, API::WhyType::start_app,
                                     API::HowType::desktop_shortcut, true, false);
}

using Library = const FailingLibrary&;
using Host = HostState&;

const ExportCase
    Cases
        [] =
            {
                {.name = "AdClicked",
                 .accepted =
                     [](Library library, Host) {
                         CallAd<decltype(API::AdClicked)>(library, "AdClicked", API::AdType::virtualalert);
                     },
                 .trace =
                     R"(adType: virtualalert, product: "ink subscription", name: "winter campaign", variant: "blue and white", flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "first_run", controlName: "banner-at-top", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered =
                     L"/first_setup.flow/devices/added/summary_screen-first_run#banner-at-top clicked",
                 .refused =
                     [](Library library, Host) {
                         CallAd<decltype(API::AdClicked)>(library, "AdClicked", static_cast<API::AdType>(5));
                     },
                 .complaint = R"(Exception in Zuvan::Lumeq::API::AdClicked: [Undefined AdType: 5])"},
                {.name = "AdClosed",
                 .accepted =
                     [](Library library, Host) {
                         CallAd<decltype(API::AdClosed)>(library, "AdClosed", API::AdType::virtualalert);
                     },
                 .trace =
                     R"(adType: virtualalert, product: "ink subscription", name: "winter campaign", variant: "blue and white", flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "first_run", controlName: "banner-at-top", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered =
                     L"/first_setup.flow/devices/added/summary_screen-first_run#banner-at-top closed",
                 .refused =
                     [](Library library, Host) {
                         CallAd<decltype(API::AdClosed)>(library, "AdClosed", static_cast<API::AdType>(5));
                     },
                 .complaint = R"(Exception in Zuvan::Lumeq::API::AdClosed: [Undefined AdType: 5])"},
                {.name = "AdDisplayed",
                 .accepted =
                     [](Library library, Host) {
                         CallAd<decltype(API::AdDisplayed)>(library, "AdDisplayed",
                                                            API::AdType::virtualalert);
                     },
                 .trace =
                     R"(adType: virtualalert, product: "ink subscription", name: "winter campaign", variant: "blue and white", flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "first_run", controlName: "banner-at-top", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered =
                     L"/first_setup.flow/devices/added/summary_screen-first_run#banner-at-top displayed",
                 .refused =
                     [](Library library, Host) {
                         CallAd<decltype(API::AdDisplayed)>(library, "AdDisplayed",
                                                            static_cast<API::AdType>(5));
                     },
                 .complaint = R"(Exception in Zuvan::Lumeq::API::AdDisplayed: [Undefined AdType: 5])"},
                {.name = "ButtonClicked",
                 .accepted = [](Library library, Host) { ClickButton(library, L"continue-button"); },
                 .trace =
                     R"(flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "first_run", controName: "continue-button", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered =
                     L"/first_setup.flow/devices/added/summary_screen-first_run#continue-button clicked",
                 .refused = [](Library library, Host) { ClickButton(library, L"continue button"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::ButtonClicked: invalid [REQUIRED] controlName arg: "continue button")"},
                {.name = "CheckboxChanged",
                 .accepted = [](Library library, Host) { ChangeCheckbox(library, L"first_setup"); },
                 .trace =
                     R"(isChecked: 1, flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "first_run", controlName: "remember-this", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered =
                     L"/first_setup.flow/devices/added/summary_screen-first_run#remember-this checked",
                 .refused = [](Library library, Host) { ChangeCheckbox(library, L"first setup"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::CheckboxChanged: invalid [optional] flow arg: "first setup")"},
                {.name = "DeviceConfigCompleted",
                 .open =
                     [](Library library, Host host) {
                         Initiate<decltype(API::DeviceConfigInitiated)>(library, host,
                                                                        "DeviceConfigInitiated");
                     },
                 .accepted = [](Library library,
                                Host host) { CompleteConfiguration(library, host, L"error_registration"); },
                 .trace =
                     R"(taskHandle: 0x<task>, taskResult: "error_registration", settingType: webservices_registration)",
                 .delivered = L"task_device_config completed",
                 .refused = [](Library library,
                               Host host) { CompleteConfiguration(library, host, L"error_a"); },
                 .complaint =
                     R"(Exception in Zuvan::Lumeq::API::DeviceConfigCompleted: Task result is not formatted correctly. Must be of form success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?))"},
                {.name = "DeviceConfigInitiated",
                 .accepted =
                     [](Library library, Host host) {
                         Initiate<decltype(API::DeviceConfigInitiated)>(library, host,
                                                                        "DeviceConfigInitiated");
                     },
                 .close = [](Library library,
                             Host host) { CompleteConfiguration(library, host, L"error_registration"); },
                 .trace = R"(localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"task_device_config initiated",
                 .refused =
                     [](Library library, Host host) {
                         Initiate<decltype(API::DeviceConfigInitiated)>(library, host,
                                                                        "DeviceConfigInitiated", L"");
                     },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::DeviceConfigInitiated: invalid [optional] globalContext arg: "")"},
                {.name = "DeviceConnectCompleted",
                 .open =
                     [](Library library, Host host) {
                         Initiate<decltype(API::DeviceConnectInitiated)>(library, host,
                                                                         "DeviceConnectInitiated");
                     },
                 .accepted = [](Library library,
                                Host host) { CompleteConnection(library, host, L"error_12345"); },
                 .trace =
                     R"(taskHandle: 0x<task>, taskResult: "error_12345", scenarioType: reconfigure, methodType: frontpanel_setup_of_wireless)",
                 .delivered = L"task_device_connect completed",
                 .refused = [](Library library,
                               Host host) { CompleteConnection(library, host, L"failed attempt"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::DeviceConnectCompleted: invalid [REQUIRED] taskResult arg: "failed attempt")"},
                {.name = "DeviceConnectInitiated",
                 .accepted =
                     [](Library library, Host host) {
                         Initiate<decltype(API::DeviceConnectInitiated)>(library, host,
                                                                         "DeviceConnectInitiated");
                     },
                 .close = [](Library library,
                             Host host) { CompleteConnection(library, host, L"error_12345"); },
                 .trace = R"(localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"task_device_connect initiated",
                 .refused =
                     [](Library library, Host host) {
                         Initiate<decltype(API::DeviceConnectInitiated)>(library, host,
                                                                         "DeviceConnectInitiated", L"");
                     },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::DeviceConnectInitiated: invalid [optional] globalContext arg: "")"},
                {.name = "FileSendToCompleted",
                 .open =
                     [](Library library, Host host) {
                         Initiate<decltype(API::FileSendToInitiated)>(library, host, "FileSendToInitiated");
                     },
                 .accepted =
                     [](Library library, Host host) {
                         CompleteSending(library, host, API::File::DestinationType::cloud_googledrive);
                     },
                 .trace =
                     R"(taskHandle: 0x<task>, taskResult: "success", shortcutType: every_day_scan, shortcutVarianceType: original_one_off, mimeType: application/pdfsearchable, destinationType: cloud_googledrive, pages: 3)",
                 .delivered = L"task_file_sendto completed",
                 .refused =
                     [](Library library, Host host) {
                         CompleteSending(library, host, static_cast<API::File::DestinationType>(8));
                     },
                 .complaint =
                     R"(Exception in Zuvan::Lumeq::API::FileSendToCompleted: [Undefined File::DestinationType: 8])"},
                {.name = "FileSendToInitiated",
                 .accepted =
                     [](Library library, Host host) {
                         Initiate<decltype(API::FileSendToInitiated)>(library, host, "FileSendToInitiated");
                     },
                 .close =
                     [](Library library, Host host) {
                         CompleteSending(library, host, API::File::DestinationType::cloud_googledrive);
                     },
                 .trace = R"(localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"task_file_sendto initiated",
                 .refused =
                     [](Library library, Host host) {
                         Initiate<decltype(API::FileSendToInitiated)>(library, host, "FileSendToInitiated",
                                                                      L"");
                     },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::FileSendToInitiated: invalid [optional] globalContext arg: "")"},
                {.name = "FlushEx",
                 .accepted = [](Library library,
                                Host) { Invoke<decltype(API::FlushEx)>(library, "FlushEx", 0); },
                 .trace = R"(timeoutMsec: 0)",
                 .delivered = L"FlushInternal(0)",
                 .refused = [](Library library,
                               Host) { Invoke<decltype(API::FlushEx)>(library, "FlushEx", -1); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::FlushEx: invalid timeoutMsec arg: -1)"},
                {.name = "FormSubmitted",
                 .accepted = [](Library library, Host) { SubmitForm(library, L"printing"); },
                 .trace =
                     R"(orgName: "printing", codeName: "registration", formName: "customer_survey", version: "1.0", details: [2 item(s)], localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"form_generic submitted",
                 .refused = [](Library library, Host) { SubmitForm(library, L"Printing"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::FormSubmitted: invalid [REQUIRED] orgName arg: "Printing")"},
                {.name = "GetBiid",
                 .accepted = [](Library library, Host host) { IdentifyDevice(library, host, DeviceUuid); },
                 .trace = R"(...returns biid: "<identifier>")",
                 .refused = [](Library library, Host host) { IdentifyDevice(library, host, ""); },
                 .complaint = R"(Validation failed in Zuvan::Lumeq::API::GetBiid: empty deviceUuid)"},
                {.name = "GetBiid_Internal",
                 .accepted = [](Library library,
                                Host) { IdentifyDevicePlainly(library, DeviceUuid.c_str()); },
                 .trace = R"(...returns biid: "<identifier>")",
                 .refused = [](Library library, Host) { IdentifyDevicePlainly(library, ""); },
                 .complaint = R"(Validation failed in Zuvan::Lumeq::API::GetBiid: empty deviceUuid)"},
                {.name = "GetUserOptInEx",
                 .accepted =
                     [](Library library, Host host) {
                         host.userHasOptedIn =
                             Invoke<decltype(API::GetUserOptInEx)>(library, "GetUserOptInEx");
                     },
                 .trace = R"(...returns: true)",
                 .delivered = L"GetUserOptInInternal()",
                 .usesSettings = true},
                {.name = "HyperlinkClicked",
                 .accepted = [](Library library, Host) { ClickHyperlink(library, L"firstrun"); },
                 .trace =
                     R"(flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "firstrun", controName: "more-about-it", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered =
                     L"/first_setup.flow/devices/added/summary_screen-firstrun#url_more-about-it clicked",
                 .refused = [](Library library, Host) { ClickHyperlink(library, L"first_run"); },
                 .complaint =
                     R"(Exception in Zuvan::Lumeq::API::HyperlinkClicked: objectLabel is not formatted correctly. Must be of form [/<Flow>.flow][/<ScreenPath>]/<ScreenName>[-<Mode>]#url_<ControlName>)"},
                {.name = "Pause",
                 .accepted = [](Library library, Host) { Invoke<decltype(API::Pause)>(library, "Pause"); },
                 .trace = R"()",
                 .delivered = L"SetUserOptInInternal(false)",
                 .stored = "<UserOptIn>False</UserOptIn>",
                 .usesSettings = true,
                 .isPaused = true},
                {.name = "PrintBasicCompleted",
                 .open =
                     [](Library library, Host host) {
                         Initiate<decltype(API::PrintBasicInitiated)>(library, host, "PrintBasicInitiated");
                     },
                 .accepted = [](Library library, Host host) { CompletePrint(library, host, 4); },
                 .trace =
                     R"(taskHandle: 0x<task>, taskResult: "error_paper", subsystemType: native, itemType: photo/single, mimeType: image/*, pageSizeType: size_13x18_cm, paperSize: "Photo paper 13x18", pages: 4)",
                 .delivered = L"task_print_basic completed",
                 .refused = [](Library library, Host host) { CompletePrint(library, host, -4); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::PrintBasicCompleted: invalid pages arg: -4)"},
                {.name = "PrintBasicInitiated",
                 .accepted =
                     [](Library library, Host host) {
                         Initiate<decltype(API::PrintBasicInitiated)>(library, host, "PrintBasicInitiated");
                     },
                 .close = [](Library library, Host host) { CompletePrint(library, host, 4); },
                 .trace = R"(localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"task_print_basic initiated",
                 .refused =
                     [](Library library, Host host) {
                         Initiate<decltype(API::PrintBasicInitiated)>(library, host, "PrintBasicInitiated",
                                                                      L"");
                     },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::PrintBasicInitiated: invalid [optional] globalContext arg: "")"},
                {.name = "ReportGenerated",
                 .accepted = [](Library library, Host) { GenerateReport(library, L"12.34"); },
                 .trace =
                     R"(orgName: "printing", codeName: "diagnostics", reportName: "ink_levels", version: "12.34", details: [2 item(s)], localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"report_generic generated",
                 .refused = [](Library library, Host) { GenerateReport(library, L"12.34.56"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::ReportGenerated: invalid [REQUIRED] version arg: "12.34.56")"},
                {.name = "Resume",
                 .accepted = [](Library library, Host) { Invoke<decltype(API::Resume)>(library, "Resume"); },
                 .trace = R"()",
                 .delivered = L"SetUserOptInInternal(true)",
                 .stored = "<UserOptIn>True</UserOptIn>",
                 .usesSettings = true,
                 .isPaused = true},
                {.name = "ScanAcquireCompleted",
                 .open =
                     [](Library library, Host host) {
                         Initiate<decltype(API::ScanAcquireInitiated)>(library, host, "ScanAcquireInitiated");
                     },
                 .accepted = [](Library library, Host host) { CompleteScan(library, host, L"error_jammed"); },
                 .trace =
                     R"(taskHandle: 0x<task>, taskResult: "error_jammed", shortcutType: every_day_scan, shortcutVarianceType: original_one_off, itemType: document, resolutionType: dpi_300, colorModeType: halftone, pageSizeType: entirearea, sourceType: adf_duplex_book, mimeType: application/pdfsearchable, features: [2 item(s)], pages: 12)",
                 .delivered = L"task_scan_acquire completed",
                 .refused = [](Library library, Host host) { CompleteScan(library, host, L"error jammed"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::ScanAcquireCompleted: invalid [REQUIRED] taskResult arg: "error jammed")"},
                {.name = "ScanAcquireInitiated",
                 .accepted =
                     [](Library library, Host host) {
                         Initiate<decltype(API::ScanAcquireInitiated)>(library, host, "ScanAcquireInitiated");
                     },
                 .close = [](Library library, Host host) { CompleteScan(library, host, L"error_jammed"); },
                 .trace = R"(localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"task_scan_acquire initiated",
                 .refused =
                     [](Library library, Host host) {
                         Initiate<decltype(API::ScanAcquireInitiated)>(library, host, "ScanAcquireInitiated",
                                                                       L"");
                     },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::ScanAcquireInitiated: invalid [optional] globalContext arg: "")"},
                {.name = "ScreenDisplayed",
                 .accepted = [](Library library, Host) { DisplayScreen(library, L"summary_screen"); },
                 .trace =
                     R"(flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "first_run", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"/first_setup.flow/devices/added/summary_screen-first_run displayed",
                 .refused = [](Library library, Host) { DisplayScreen(library, L"summary screen"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::ScreenDisplayed: invalid [REQUIRED] screenName arg: "summary screen")"},
                {.name = "SetGlobalContextEx",
                 .accepted =
                     [](Library library, Host) {
                         Invoke<decltype(API::SetGlobalContextEx)>(library, "SetGlobalContextEx", Model);
                     },
                 .trace = R"(globalContext: "Office Device 8000")",
                 .refused =
                     [](Library library, Host) {
                         Invoke<decltype(API::SetGlobalContextEx)>(library, "SetGlobalContextEx",
                                                                   L"Office\x1b Device");
                     },
                 .complaint = "Validation failed in Zuvan::Lumeq::API::SetGlobalContextEx: invalid "
                              "[REQUIRED] globalContext arg: \"Office\x1b Device\""},
                {.name = "SetLocalSubfolderPathEx",
                 .accepted =
                     [](Library library, Host) {
                         Invoke<decltype(API::SetLocalSubfolderPathEx)>(library, "SetLocalSubfolderPathEx",
                                                                        L"Scanner software\\Settings");
                     },
                 .trace = R"(subpath: "Scanner software\Settings")",
                 .delivered = L"LocalSettingsSubfolderInternal(Scanner software\\Settings)",
                 .refused =
                     [](Library library, Host) {
                         Invoke<decltype(API::SetLocalSubfolderPathEx)>(library, "SetLocalSubfolderPathEx",
                                                                        L"C:\\Settings");
                     },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::SetLocalSubfolderPathEx: invalid [REQUIRED] subpath arg: "C:\Settings")"},
                {.name = "SetUserOptInEx",
                 .accepted =
                     [](Library library, Host) {
                         Invoke<decltype(API::SetUserOptInEx)>(library, "SetUserOptInEx", true);
                     },
                 .trace = R"(userHasOptedIn: 1)",
                 .delivered = L"SetUserOptInInternal(true)",
                 .stored = "<UserOptIn>True</UserOptIn>",
                 .usesSettings = true,
                 .isPaused = true},
                {.name = "ShutdownEx",
                 .accepted = [](Library library,
                                Host) { Invoke<decltype(API::ShutdownEx)>(library, "ShutdownEx", 250); },
                 .trace = R"(timeoutMsec: 250)",
                 .delivered = L"ShutdownInternal(250)",
                 .stored = "<UserOptIn>True</UserOptIn>",
                 .usesSettings = true},
                {.name = "SoftwareInstallCompleted",
                 .open =
                     [](Library library, Host host) {
                         Initiate<decltype(API::SoftwareInstallInitiated)>(library, host,
                                                                           "SoftwareInstallInitiated");
                     },
                 .accepted = [](Library library,
                                Host host) { CompleteInstallation(library, host, L"10.20.30.40"); },
                 .trace =
                     R"(taskHandle: 0x<task>, taskResult: "unknown", installerType: msi, name: "Scanner software", version: '"10.20.30.40"')",
                 .delivered = L"task_sw_install completed",
                 .refused = [](Library library,
                               Host host) { CompleteInstallation(library, host, L"10.20.30.beta"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::SoftwareInstallCompleted: invalid [REQUIRED] version arg: "10.20.30.beta")"},
                {.name = "SoftwareInstallInitiated",
                 .accepted =
                     [](Library library, Host host) {
                         Initiate<decltype(API::SoftwareInstallInitiated)>(library, host,
                                                                           "SoftwareInstallInitiated");
                     },
                 .close = [](Library library,
                             Host host) { CompleteInstallation(library, host, L"10.20.30.40"); },
                 .trace = R"(localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"task_sw_install initiated",
                 .refused =
                     [](Library library, Host host) {
                         Initiate<decltype(API::SoftwareInstallInitiated)>(library, host,
                                                                           "SoftwareInstallInitiated", L"");
                     },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::SoftwareInstallInitiated: invalid [optional] globalContext arg: "")"},
                {.name = "StartupEx",
                 .accepted = [](Library library, Host) { StartAs(library, L"first application"); },
                 .trace =
                     R"(appName: "first application", whyType: start_app, howType: desktop_shortcut, trackSystemInfo: 1, trackPrintQueueInfo: 0)",
                 .delivered = L"StartupInternal(first application, 1, 3, true, false)",
                 .stored = "<UserOptIn>True</UserOptIn>",
                 .usesSettings = true,
                 .refused = [](Library library, Host) { StartAs(library, L" first application"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::StartupEx: invalid [REQUIRED] appName arg: " first application")"},
                {.name = "TileClicked",
                 .accepted = [](Library library, Host) { ClickTile(library, L"scan-tile"); },
                 .trace =
                     R"(flow: "first_setup", screenPath: "devices/added", screenName: "summary_screen", mode: "first_run", controName: "scan-tile", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"/first_setup.flow/devices/added/summary_screen-first_run#scan-tile clicked",
                 .refused = [](Library library, Host) { ClickTile(library, L"scan tile!"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::TileClicked: invalid [REQUIRED] controlName arg: "scan tile!")"},
                {.name = "ToString",
                 .accepted =
                     [](Library library, Host host) {
                         library.Find<decltype(API::ToString)>("ToString")(
                             API::ConnectionMethodType::already_on_network, host.text);
                     },
                 .trace = R"(...returns textValue: "already_on_network")"},
                {.name = "ToString_Internal",
                 .accepted = [](Library library, Host) { ConvertPlainly(library); },
                 .trace = R"(...returns textValue: "already_on_network")"},
                {.name = "TrackDiscoveredPrintersEx",
                 .accepted =
                     [](Library library, Host) {
                         TrackPrinter(library, {{L"dev_biid", L"unknown"}});
                     },
                 .trace = R"(discoveredDeviceList: [1 item(s)])",
                 .delivered = L"PostDataInternal(dev_biid=unknown, sys_printer_discoverylist, 0)",
                 .refused =
                     [](Library library, Host) {
                         TrackPrinter(library, {{L"dev_modelname", Model}});
                     },
                 .complaint =
                     R"(Exception in Zuvan::Lumeq::API::TrackDiscoveredPrintersEx: invalid unordered_map<K, T> key)"},
                {.name = "TrackPrintQueueInfoEx",
                 .accepted =
                     [](Library library, Host) {
                         Invoke<decltype(API::TrackPrintQueueInfoEx)>(library, "TrackPrintQueueInfoEx");
                     },
                 .trace = R"()",
                 .delivered = L"TrackPrintQueueInfoInternal()"},
                {.name = "TrackSystemInformationEx",
                 .accepted =
                     [](Library library, Host) {
                         Invoke<decltype(API::TrackSystemInformationEx)>(library, "TrackSystemInformationEx");
                     },
                 .trace = R"()",
                 .delivered = L"TrackSystemInformationInternal()"},
                {.name = "UrlLaunchedEx",
                 .accepted = [](Library library,
                                Host) { LaunchUrl(library, L"https://shop.example/ink?user=me"); },
                 .trace =
                     R"(url: "https://shop.example/ink?user=me", localContext: [2 item(s)], globalContext: "Office Device 8000")",
                 .delivered = L"https://shop.example/ink launched",
                 .refused = [](Library library, Host) { LaunchUrl(library, L"ftp://shop.example/ink"); },
                 .complaint =
                     R"(Validation failed in Zuvan::Lumeq::API::UrlLaunchedEx: invalid [REQUIRED] urlNoPii arg: "ftp://shop.example/ink")"},
};

} // namespace

std::ostream& operator<<(std::ostream& stream, const ExportCase& exported) { return stream << exported.name; }

std::span<const ExportCase> ExportCases() { return Cases; }

const ExportCase& FindExportCase(const std::string& name) {
    return *std::find_if(std::begin(Cases), std::end(Cases),
                         [&name](const ExportCase& exported) { return exported.name == name; });
}

} // namespace Zuvan::Lumeq::Testing
