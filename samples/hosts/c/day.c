// A host in C: the day of ../day.jsonl through lumeq.h. It needs no C runtime.
#include "day.h"

#include <Lumeq/lumeq.h>

#define COUNT_OF(array) (sizeof(array) / sizeof((array)[0]))

static void agree(void) {
    const lumeq_field language[] = {{L"language", L"de-AT"}};
    const lumeq_dictionary local = {language, COUNT_OF(language)};
    lumeq_screen consent = LUMEQ_SCREEN_INIT;
    consent.flow = L"welcome";
    consent.screen_name = L"Consent";
    consent.local_context = &local;
    lumeq_screen_displayed(&consent);

    consent.local_context = NULL;
    lumeq_checkbox_changed(&consent, L"agree", 1);
    lumeq_set_opt_in(1);
}

static void find_printers(void) {
    wchar_t biid[65];
    const lumeq_field first[] = {
        {L"dev_biid", L"unknown"}, {L"dev_modelname", L"Model 8100"}, {L"dev_connection", L"wifi"}};
    const lumeq_field third[] = {
        {L"dev_biid", L"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"},
        {L"dev_modelname", L"Model 400"}};
    const lumeq_dictionary devices[] = {{first, COUNT_OF(first)}, {NULL, 0}, {third, COUNT_OF(third)}};

    lumeq_get_biid("1c852a4d-b800-1f08-abcd-3c52821f9ab0", biid, COUNT_OF(biid));
    lumeq_get_biid("1c852a4d-b800-1f08-abcd-3c52821f9ab1", biid, COUNT_OF(biid));
    lumeq_track_discovered_printers(devices, COUNT_OF(devices));
    lumeq_set_global_context(L"Model 8100");
}

static void connect_device(void) {
    const lumeq_field attempt[] = {{L"attempt", L"1"}};
    const lumeq_dictionary local = {attempt, COUNT_OF(attempt)};
    const lumeq_task connection = lumeq_device_connect_begin(&local, NULL);
    const lumeq_task installation = lumeq_software_install_begin(NULL, NULL);
    lumeq_software_install software = LUMEQ_SOFTWARE_INSTALL_INIT;
    lumeq_device_connect connected = LUMEQ_DEVICE_CONNECT_INIT;

    software.installer = LUMEQ_INSTALLER_MSI;
    software.name = L"scan-station.msi";
    software.version = L"2.14.0";
    lumeq_software_install_complete(installation, L"success", &software);

    connected.scenario = LUMEQ_CONNECTION_SCENARIO_ADD;
    connected.method = LUMEQ_CONNECTION_METHOD_AUTO_WIRELESS_CONNECT;
    lumeq_device_connect_complete(connection, L"success", &connected);
}

static void configure_device(void) {
    const lumeq_task task = lumeq_device_config_begin(NULL, NULL);
    lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
    details.setting = LUMEQ_SETTING_WEBSERVICES_REGISTRATION;
    lumeq_device_config_complete(task, L"error_Timeout", &details);
}

static void preview(void) {
    lumeq_screen screen = LUMEQ_SCREEN_INIT;
    lumeq_ad ad = LUMEQ_AD_INIT;
    screen.flow = L"scan";
    screen.screen_name = L"Preview";
    screen.mode = L"document";
    lumeq_screen_displayed(&screen);
    lumeq_button_clicked(&screen, L"not a name");

    ad.type = LUMEQ_AD_TILE;
    ad.product = L"ink";
    ad.name = L"spring offer";
    ad.variant = L"b";
    lumeq_ad_displayed(&screen, L"offer", &ad);
}

static void scan(void) {
    const lumeq_field source[] = {{L"source", L"feeder"}};
    const lumeq_dictionary local = {source, COUNT_OF(source)};
    const lumeq_feature features[] = {{L"deskew", 1, 0}, {L"remove_blank_pages", 0, 0}};
    const lumeq_task task = lumeq_scan_acquire_begin(&local, NULL);
    lumeq_scan_acquire details = LUMEQ_SCAN_ACQUIRE_INIT;
    details.shortcut = LUMEQ_SCAN_SHORTCUT_SAVE_PDF;
    details.shortcut_variance = LUMEQ_SCAN_SHORTCUT_VARIANCE_ORIGINAL;
    details.item = LUMEQ_SCAN_ITEM_DOCUMENT;
    details.resolution = LUMEQ_SCAN_RESOLUTION_DPI_300;
    details.color_mode = LUMEQ_SCAN_COLOR_MODE_COLOR;
    details.page_size = LUMEQ_SCAN_PAGE_SIZE_A4;
    details.source = LUMEQ_SCAN_SOURCE_ADF_DUPLEX_BOOK;
    details.mime = LUMEQ_SCAN_MIME_APPLICATION_PDF;
    details.features = features;
    details.feature_count = COUNT_OF(features);
    details.pages = 4;
    lumeq_scan_acquire_complete(task, L"success", &details);
}

static void send(void) {
    const lumeq_task task = lumeq_file_send_to_begin(NULL, NULL);
    lumeq_file_send_to details = LUMEQ_FILE_SEND_TO_INIT;
    details.shortcut = LUMEQ_FILE_SHORTCUT_EMAIL_PDF;
    details.shortcut_variance = LUMEQ_FILE_SHORTCUT_VARIANCE_ORIGINAL;
    details.mime = LUMEQ_FILE_MIME_APPLICATION_PDF;
    details.destination = LUMEQ_FILE_DESTINATION_EMAIL_MAPI;
    details.pages = 4;
    lumeq_file_send_to_complete(task, L"success", &details);
}

// The first report is refused and the task stays open; the second ends it; the third finds none.
static void print(void) {
    const lumeq_task task = lumeq_print_basic_begin(NULL, NULL);
    lumeq_print_basic details = LUMEQ_PRINT_BASIC_INIT;
    details.subsystem = LUMEQ_PRINT_SUBSYSTEM_NATIVE;
    details.item = LUMEQ_PRINT_ITEM_PHOTO_MULTI;
    details.mime = LUMEQ_PRINT_MIME_IMAGE_ANY;
    details.page_size = LUMEQ_PRINT_PAGE_SIZE_SIZE_4X6;
    details.pages = -1;
    lumeq_print_basic_complete(task, L"out of paper", &details);

    details.paper_size = L"4x6 in";
    details.pages = 3;
    lumeq_print_basic_complete(task, L"error_OutOfPaper", &details);
    lumeq_print_basic_complete(task, L"success", &details);
}

int play_day(int use_worker_thread) {
    int as_expected;
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    options.use_worker_thread = use_worker_thread;
    as_expected = lumeq_configure(&options);

    lumeq_startup(L"Scan Station", LUMEQ_WHY_START_APP, LUMEQ_HOW_SMV_LINK, 1, 0);
    as_expected &= !lumeq_get_opt_in();
    agree();
    as_expected &= lumeq_get_opt_in();
    lumeq_track_system_information();
    lumeq_track_print_queue_info();
    find_printers();
    connect_device();
    configure_device();
    preview();
    scan();
    send();
    print();

    lumeq_pause();
    as_expected &= !lumeq_get_opt_in();
    lumeq_resume();
    as_expected &= lumeq_get_opt_in();

    lumeq_flush(500);
    lumeq_set_opt_in(0);
    as_expected &= !lumeq_get_opt_in();
    lumeq_shutdown(30000);
    return as_expected;
}
