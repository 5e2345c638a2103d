#include "LumeqC/EveryCall.h"

#include <utility>

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr lumeq_field LocalFields[] = {{L"paper", L"a4"}, {L"copies", L"2"}};
constexpr lumeq_feature Features[] = {{L"deskew", 1, 0}, {L"auto crop", 0, 0}};
constexpr lumeq_field DeviceFields[] = {{L"dev_biid", L"unknown"}};
constexpr lumeq_dictionary Devices[] = {{DeviceFields, 1}, {nullptr, 0}};

constexpr wchar_t FullWhere[] =
    L"\"scan\", \"a/b\", \"Preview\", \"photo\", \"ok\", {copies: \"2\", paper: \"a4\"}, \"Model 8100\")";
constexpr wchar_t NullWhere[] = L"null, null, \"\", null, \"\", null, null)";
constexpr wchar_t Contexts[] = L"{copies: \"2\", paper: \"a4\"}, \"Model 8100\")";

lumeq_task task = 0;

template <class Complete>
void CompleteNew(lumeq_task (*begin)(const lumeq_dictionary*, const wchar_t*), Complete complete) {
    task = begin(&Local, L"Model 8100");
    complete(task);
}

std::wstring Begun(const wchar_t* name) { return name + std::wstring(L"Initiated(") + Contexts; }

std::vector<EveryCall> SessionCalls() {
    return {
        {"startup", [] { lumeq_startup(L"Scan Studio", LUMEQ_WHY_START_APP, LUMEQ_HOW_UDC_TILE, 2, 0); },
         L"StartupEx(\"Scan Studio\", 4, 9, 1, 0)"},
        {"shutdown", [] { lumeq_shutdown(-1); }, L"ShutdownEx(-1)"},
        {"flush", [] { lumeq_flush(500); }, L"FlushEx(500)"},
        {"pause", [] { lumeq_pause(); }, L"Pause()"},
        {"resume", [] { lumeq_resume(); }, L"Resume()"},
        {"set_opt_in", [] { lumeq_set_opt_in(-1); }, L"SetUserOptInEx(1)"},
        {"get_opt_in", [] { lumeq_get_opt_in(); }, L"GetUserOptInEx()"},
        {"set_local_subfolder", [] { lumeq_set_local_subfolder(L"a\\b"); },
         L"SetLocalSubfolderPathEx(\"a\\b\")"},
        {"track_print_queue_info", [] { lumeq_track_print_queue_info(); }, L"TrackPrintQueueInfoEx()"},
        {"track_system_information", [] { lumeq_track_system_information(); }, L"TrackSystemInformationEx()"},
        {"set_global_context", [] { lumeq_set_global_context(L"Model 400"); },
         L"SetGlobalContextEx(\"Model 400\")"},
        {"get_biid", [] { lumeq_get_biid("1c852a4d", nullptr, 0); }, L"GetBiid(\"1c852a4d\")"},
        {"connection_method_text", [] { lumeq_connection_method_text(99, nullptr, 0); }, L"ToString(99)"},
    };
}

std::vector<EveryCall> EventCalls() {
    const auto where = [](const std::wstring& begin) { return begin + FullWhere; };
    const std::wstring ad = L"(2, \"ink\", \"spring\", \"b\", ";
    return {
        {"screen_displayed",
         [] {
             const lumeq_screen screen = FullScreen();
             lumeq_screen_displayed(&screen);
         },
         std::wstring(L"ScreenDisplayed(\"scan\", \"a/b\", \"Preview\", \"photo\", ") + Contexts},
        {"button_clicked",
         [] {
             const lumeq_screen screen = FullScreen();
             lumeq_button_clicked(&screen, L"ok");
         },
         where(L"ButtonClicked(")},
        {"tile_clicked",
         [] {
             const lumeq_screen screen = FullScreen();
             lumeq_tile_clicked(&screen, L"ok");
         },
         where(L"TileClicked(")},
        {"hyperlink_clicked",
         [] {
             const lumeq_screen screen = FullScreen();
             lumeq_hyperlink_clicked(&screen, L"ok");
         },
         where(L"HyperlinkClicked(")},
        {"checkbox_changed",
         [] {
             const lumeq_screen screen = FullScreen();
             lumeq_checkbox_changed(&screen, L"ok", 7);
         },
         where(L"CheckboxChanged(7, ")},
        {"ad_displayed",
         [] {
             const lumeq_screen screen = FullScreen();
             const lumeq_ad its = FullAd();
             lumeq_ad_displayed(&screen, L"ok", &its);
         },
         where(L"AdDisplayed" + ad)},
        {"ad_clicked",
         [] {
             const lumeq_screen screen = FullScreen();
             const lumeq_ad its = FullAd();
             lumeq_ad_clicked(&screen, L"ok", &its);
         },
         where(L"AdClicked" + ad)},
        {"ad_closed",
         [] {
             const lumeq_screen screen = FullScreen();
             const lumeq_ad its = FullAd();
             lumeq_ad_closed(&screen, L"ok", &its);
         },
         where(L"AdClosed" + ad)},
        {"url_launched", [] { lumeq_url_launched(L"https://example.org/a?b", &Local, L"Model 8100"); },
         std::wstring(L"UrlLaunchedEx(\"https://example.org/a?b\", ") + Contexts},
        {"form_submitted",
         [] {
             const lumeq_form form = FullForm();
             lumeq_form_submitted(&form);
         },
         std::wstring(
             L"FormSubmitted(\"zuvan\", \"scan\", \"survey\", \"1.0\", {copies: \"2\", paper: \"a4\"}, ") +
             Contexts},
        {"report_generated",
         [] {
             const lumeq_form form = FullForm();
             lumeq_report_generated(&form);
         },
         std::wstring(
             L"ReportGenerated(\"zuvan\", \"scan\", \"survey\", \"1.0\", {copies: \"2\", paper: \"a4\"}, ") +
             Contexts},
        {"track_discovered_printers", [] { lumeq_track_discovered_printers(Devices, 2); },
         L"TrackDiscoveredPrintersEx([{dev_biid: \"unknown\"}, {}])"},
    };
}

std::vector<EveryCall> TaskCalls() {
    return {
        {"scan_acquire",
         [] {
             CompleteNew(lumeq_scan_acquire_begin, [](lumeq_task task) {
                 const lumeq_scan_acquire details = {
                     sizeof details, Features, 2, 1, 2, 1, 4, 5, 6, 3, 8, 9, 0};
                 lumeq_scan_acquire_complete(task, L"success", &details);
             });
         },
         Begun(L"ScanAcquire") + L"; ScanAcquireCompleted(task, \"success\", 1, 2, 1, 4, 5, 6, 3, 8, "
                                 L"{auto crop: 0, deskew: 1}, 9)"},
        {"print_basic",
         [] {
             CompleteNew(lumeq_print_basic_begin, [](lumeq_task task) {
                 const lumeq_print_basic details = {sizeof details, L"4x6 in", 2, 3, 1, 4, 5, 0};
                 lumeq_print_basic_complete(task, L"success", &details);
             });
         },
         Begun(L"PrintBasic") + L"; PrintBasicCompleted(task, \"success\", 2, 3, 1, 4, \"4x6 in\", 5)"},
        {"file_send_to",
         [] {
             CompleteNew(lumeq_file_send_to_begin, [](lumeq_task task) {
                 const lumeq_file_send_to details = {sizeof details, 1, 2, 3, 4, 5, 0};
                 lumeq_file_send_to_complete(task, L"success", &details);
             });
         },
         Begun(L"FileSendTo") + L"; FileSendToCompleted(task, \"success\", 1, 2, 3, 4, 5)"},
        {"device_connect",
         [] {
             CompleteNew(lumeq_device_connect_begin, [](lumeq_task task) {
                 const lumeq_device_connect details = {sizeof details, 1, 2};
                 lumeq_device_connect_complete(task, L"success", &details);
             });
         },
         Begun(L"DeviceConnect") + L"; DeviceConnectCompleted(task, \"success\", 1, 2)"},
        {"device_config",
         [] {
             CompleteNew(lumeq_device_config_begin, [](lumeq_task task) {
                 const lumeq_device_config details = {sizeof details, 2, 0};
                 lumeq_device_config_complete(task, L"success", &details);
             });
         },
         Begun(L"DeviceConfig") + L"; DeviceConfigCompleted(task, \"success\", 2)"},
        {"software_install",
         [] {
             CompleteNew(lumeq_software_install_begin, [](lumeq_task task) {
                 const lumeq_software_install details = {sizeof details, L"scan.msi", L"2.14.0", 2, 0};
                 lumeq_software_install_complete(task, L"success", &details);
             });
         },
         Begun(L"SoftwareInstall") +
             L"; SoftwareInstallCompleted(task, \"success\", 2, \"scan.msi\", \"2.14.0\")"},
    };
}

void Append(std::vector<EveryCall>& all, const std::vector<EveryCall>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

} // namespace

void EndTask() { lumeq_task_abandon(std::exchange(task, 0)); }

const lumeq_dictionary Local = {LocalFields, 2};

lumeq_screen FullScreen() {
    return {sizeof(lumeq_screen), L"scan", L"a/b", L"Preview", L"photo", &Local, L"Model 8100"};
}

lumeq_ad FullAd() { return {sizeof(lumeq_ad), L"ink", L"spring", L"b", LUMEQ_AD_HYPERLINK, 0}; }

lumeq_form FullForm() {
    return {sizeof(lumeq_form), L"zuvan", L"scan", L"survey", L"1.0", Local, &Local, L"Model 8100"};
}

const std::vector<EveryCall>& FullCalls() {
    static const std::vector<EveryCall> calls = [] {
        std::vector<EveryCall> all = SessionCalls();
        Append(all, EventCalls());
        Append(all, TaskCalls());
        return all;
    }();
    return calls;
}

const std::vector<EveryCall>& NullCalls() {
    const auto where = [](const std::wstring& begin) { return begin + NullWhere; };
    const auto ad = [](const std::wstring& name) { return name + L"(0, \"\", \"\", \"\", " + NullWhere; };
    static const std::vector<EveryCall> calls{
        {"startup", [] { lumeq_startup(nullptr, 0, 0, 0, 0); }, L"StartupEx(\"\", 0, 0, 0, 0)"},
        {"set_local_subfolder", [] { lumeq_set_local_subfolder(nullptr); }, L"SetLocalSubfolderPathEx(\"\")"},
        {"set_global_context", [] { lumeq_set_global_context(nullptr); }, L"SetGlobalContextEx(\"\")"},
        {"get_biid", [] { lumeq_get_biid(nullptr, nullptr, 5); }, L"GetBiid(\"\")"},
        {"screen_displayed", [] { lumeq_screen_displayed(nullptr); },
         L"ScreenDisplayed(null, null, \"\", null, null, null)"},
        {"button_clicked", [] { lumeq_button_clicked(nullptr, nullptr); }, where(L"ButtonClicked(")},
        {"tile_clicked", [] { lumeq_tile_clicked(nullptr, nullptr); }, where(L"TileClicked(")},
        {"hyperlink_clicked", [] { lumeq_hyperlink_clicked(nullptr, nullptr); }, where(L"HyperlinkClicked(")},
        {"checkbox_changed", [] { lumeq_checkbox_changed(nullptr, nullptr, 0); },
         where(L"CheckboxChanged(0, ")},
        {"ad_displayed", [] { lumeq_ad_displayed(nullptr, nullptr, nullptr); }, ad(L"AdDisplayed")},
        {"ad_clicked", [] { lumeq_ad_clicked(nullptr, nullptr, nullptr); }, ad(L"AdClicked")},
        {"ad_closed", [] { lumeq_ad_closed(nullptr, nullptr, nullptr); }, ad(L"AdClosed")},
        {"url_launched", [] { lumeq_url_launched(nullptr, nullptr, nullptr); },
         L"UrlLaunchedEx(\"\", null, null)"},
        {"form_submitted", [] { lumeq_form_submitted(nullptr); },
         L"FormSubmitted(\"\", \"\", \"\", \"\", {}, null, null)"},
        {"report_generated", [] { lumeq_report_generated(nullptr); },
         L"ReportGenerated(\"\", \"\", \"\", \"\", {}, null, null)"},
        {"track_discovered_printers", [] { lumeq_track_discovered_printers(nullptr, 2); },
         L"TrackDiscoveredPrintersEx([{dev_biid: \"\"}])"},
        {"scan_acquire", [] { lumeq_scan_acquire_complete(0, nullptr, nullptr); },
         L"ScanAcquireCompleted(no task, \"\", 0, 0, 0, 0, 0, 0, 0, 0, {}, 0)"},
        {"print_basic", [] { lumeq_print_basic_complete(0, nullptr, nullptr); },
         L"PrintBasicCompleted(no task, \"\", 0, 0, 0, 0, \"\", 0)"},
        {"file_send_to", [] { lumeq_file_send_to_complete(0, nullptr, nullptr); },
         L"FileSendToCompleted(no task, \"\", 0, 0, 0, 0, 0)"},
        {"device_connect", [] { lumeq_device_connect_complete(0, nullptr, nullptr); },
         L"DeviceConnectCompleted(no task, \"\", 0, 0)"},
        {"device_config", [] { lumeq_device_config_complete(0, nullptr, nullptr); },
         L"DeviceConfigCompleted(no task, \"\", 0)"},
        {"software_install", [] { lumeq_software_install_complete(0, nullptr, nullptr); },
         L"SoftwareInstallCompleted(no task, \"\", 0, \"\", \"\")"},
    };
    return calls;
}

} // namespace Zuvan::Lumeq::Testing
