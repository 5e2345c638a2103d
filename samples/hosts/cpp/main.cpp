// A host in C++ over lumeq.hpp: the day of ../day.jsonl. Any argument chooses the worker thread.
#include <Lumeq/lumeq.hpp>

#include <cstdio>
#if defined(LUMEQ_USE_LOADER)
#include <Lumeq/lumeq_loader.h>
#endif

namespace {

void agree() {
    const lumeq::screen consent(L"Consent", lumeq::flow(L"welcome"));
    lumeq::screen(consent).with(L"language", L"de-AT").shown();
    consent.checkbox(L"agree").changed(true);
    lumeq::set_opt_in(true);
}

void find_printers() {
    lumeq::biid("1c852a4d-b800-1f08-abcd-3c52821f9ab0");
    lumeq::biid("1c852a4d-b800-1f08-abcd-3c52821f9ab1");
    lumeq::track_discovered_printers(
        {{{L"dev_biid", L"unknown"}, {L"dev_modelname", L"Model 8100"}, {L"dev_connection", L"wifi"}},
         {},
         {{L"dev_biid", L"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"},
          {L"dev_modelname", L"Model 400"}}});
    lumeq::set_model(lumeq::model(L"Model 8100"));
}

void set_device_up() {
    const auto connection = lumeq::connection_task::begin({{L"attempt", L"1"}});
    const auto installation = lumeq::installation_task::begin();
    installation.complete(L"success", {lumeq::installer::msi, L"scan-station.msi", L"2.14.0"});
    connection.complete(L"success",
                        {lumeq::connection_scenario::add, lumeq::connection_method::auto_wireless_connect});
    lumeq::configuration_task::begin().complete(L"error_Timeout", {lumeq::setting::webservices_registration});
}

void preview() {
    lumeq::screen screen(L"Preview", lumeq::flow(L"scan"));
    screen.mode(L"document").shown();
    screen.button(L"not a name").clicked();
    screen.ad(L"offer", lumeq::ad_type::tile).product(L"ink").name(L"spring offer").variant(L"b").displayed();
}

void scan_and_send() {
    const auto scan = lumeq::scan_task::begin({{L"source", L"feeder"}});
    lumeq::scan_details details;
    details.shortcut = lumeq::scan_shortcut::save_pdf;
    details.shortcut_variance = lumeq::scan_shortcut_variance::original;
    details.item = lumeq::scan_item::document;
    details.resolution = lumeq::scan_resolution::dpi_300;
    details.color_mode = lumeq::scan_color_mode::color;
    details.page_size = lumeq::scan_page_size::a4;
    details.source = lumeq::scan_source::adf_duplex_book;
    details.mime = lumeq::scan_mime::application_pdf;
    details.features = {{L"deskew", true}, {L"remove_blank_pages", false}};
    details.pages = 4;
    scan.complete(L"success", details);

    lumeq::send_task::begin().complete(
        L"success", {lumeq::file_shortcut::email_pdf, lumeq::file_shortcut_variance::original,
                     lumeq::file_mime::application_pdf, lumeq::file_destination::email_mapi, 4});
}

// The first report is refused and the task stays open; the second ends it; the third finds none.
void print() {
    const auto task = lumeq::print_task::begin();
    lumeq::print_details details;
    details.subsystem = lumeq::print_subsystem::native;
    details.item = lumeq::print_item::photo_multi;
    details.mime = lumeq::print_mime::image_any;
    details.page_size = lumeq::print_page_size::size_4x6;
    details.pages = -1;
    task.complete(L"out of paper", details);
    details.paper_size = L"4x6 in";
    details.pages = 3;
    task.complete(L"error_OutOfPaper", details);
    task.complete(L"success", details);
}

bool play_day() {
    const lumeq::session session(L"Scan Station", lumeq::why::start_app, lumeq::how::smv_link, {true, false},
                                 30000);
    bool as_expected = !lumeq::opt_in();
    agree();
    as_expected &= lumeq::opt_in();
    lumeq::track_system_information();
    lumeq::track_print_queue_info();
    find_printers();
    set_device_up();
    preview();
    scan_and_send();
    print();
    {
        const lumeq::pause quiet;
        as_expected &= !lumeq::opt_in();
    }
    as_expected &= lumeq::opt_in();
    lumeq::flush(500);
    lumeq::set_opt_in(false);
    return as_expected & !lumeq::opt_in();
}

void print_state() {
    const lumeq::telemetry_state state = lumeq::state();
    std::printf("telemetry: %s, choice %d, paused %d, road %d, %d queued, %llu dropped\n",
                state.is_disabled ? "disabled" : "enabled", static_cast<int>(state.choice), state.is_paused,
                static_cast<int>(state.road), static_cast<int>(state.queued_calls),
                static_cast<unsigned long long>(state.dropped_count));
}

} // namespace

int main(int count, char**) {
#if defined(LUMEQ_USE_LOADER)
    lumeq_loader loader;
    if (lumeq_load(&loader, nullptr) != LUMEQ_LOADED)
        return 3;
    lumeq::use(loader.call);
#endif
    if (count > 1 && !lumeq::use_worker_thread())
        return 2;
    const bool as_expected = play_day();
    print_state();
    return as_expected ? 0 : 1;
}
