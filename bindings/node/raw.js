// The functions, structs and constants of lumeq.h, as koffi takes them. Written by tools/node_binding.py.
'use strict';

const koffi = require('koffi');

koffi.struct('lumeq_field', {
    name: 'str16',
    value: 'str16',
});
koffi.struct('lumeq_dictionary', {
    fields: 'lumeq_field *',
    count: 'size_t',
});
koffi.struct('lumeq_feature', {
    name: 'str16',
    is_on: 'int32_t',
    reserved: 'int32_t',
});
koffi.struct('lumeq_options', {
    size: 'size_t',
    use_worker_thread: 'int32_t',
    queue_capacity: 'int32_t',
});
koffi.struct('lumeq_state', {
    size: 'size_t',
    dropped_count: 'uint64_t',
    is_disabled: 'int32_t',
    choice: 'int32_t',
    is_paused: 'int32_t',
    road: 'int32_t',
    uses_worker_thread: 'int32_t',
    queued_calls: 'int32_t',
});
koffi.struct('lumeq_screen', {
    size: 'size_t',
    flow: 'str16',
    screen_path: 'str16',
    screen_name: 'str16',
    mode: 'str16',
    local_context: 'lumeq_dictionary *',
    global_context: 'str16',
});
koffi.struct('lumeq_ad', {
    size: 'size_t',
    product: 'str16',
    name: 'str16',
    variant: 'str16',
    type: 'int32_t',
    reserved: 'int32_t',
});
koffi.struct('lumeq_form', {
    size: 'size_t',
    org_name: 'str16',
    code_name: 'str16',
    name: 'str16',
    version: 'str16',
    details: 'lumeq_dictionary',
    local_context: 'lumeq_dictionary *',
    global_context: 'str16',
});
koffi.struct('lumeq_scan_acquire', {
    size: 'size_t',
    features: 'lumeq_feature *',
    feature_count: 'size_t',
    shortcut: 'int32_t',
    shortcut_variance: 'int32_t',
    item: 'int32_t',
    resolution: 'int32_t',
    color_mode: 'int32_t',
    page_size: 'int32_t',
    source: 'int32_t',
    mime: 'int32_t',
    pages: 'int32_t',
    reserved: 'int32_t',
});
koffi.struct('lumeq_print_basic', {
    size: 'size_t',
    paper_size: 'str16',
    subsystem: 'int32_t',
    item: 'int32_t',
    mime: 'int32_t',
    page_size: 'int32_t',
    pages: 'int32_t',
    reserved: 'int32_t',
});
koffi.struct('lumeq_file_send_to', {
    size: 'size_t',
    shortcut: 'int32_t',
    shortcut_variance: 'int32_t',
    mime: 'int32_t',
    destination: 'int32_t',
    pages: 'int32_t',
    reserved: 'int32_t',
});
koffi.struct('lumeq_device_connect', {
    size: 'size_t',
    scenario: 'int32_t',
    method: 'int32_t',
});
koffi.struct('lumeq_device_config', {
    size: 'size_t',
    setting: 'int32_t',
    reserved: 'int32_t',
});
koffi.struct('lumeq_software_install', {
    size: 'size_t',
    name: 'str16',
    version: 'str16',
    installer: 'int32_t',
    reserved: 'int32_t',
});

// Each function is that of lumeq.h with this name.
exports.functions = library => ({
    version: library.func('uint32_t lumeq_version()'),
    abi: library.func('uint32_t lumeq_abi()'),
    configure: library.func('int32_t lumeq_configure(lumeq_options * options)'),
    dropped_count: library.func('uint64_t lumeq_dropped_count()'),
    get_state: library.func('int32_t lumeq_get_state(_Inout_ lumeq_state * state)'),
    startup: library.func('void lumeq_startup(str16 app_name, int32_t why, int32_t how, int32_t track_system_info, int32_t track_print_queue_info)'),
    shutdown: library.func('void lumeq_shutdown(int32_t timeout_msec)'),
    flush: library.func('void lumeq_flush(int32_t timeout_msec)'),
    pause: library.func('void lumeq_pause()'),
    resume: library.func('void lumeq_resume()'),
    set_opt_in: library.func('void lumeq_set_opt_in(int32_t user_has_opted_in)'),
    get_opt_in: library.func('int32_t lumeq_get_opt_in()'),
    set_local_subfolder: library.func('void lumeq_set_local_subfolder(str16 subpath)'),
    track_print_queue_info: library.func('void lumeq_track_print_queue_info()'),
    track_system_information: library.func('void lumeq_track_system_information()'),
    set_global_context: library.func('void lumeq_set_global_context(str16 global_context)'),
    screen_displayed: library.func('void lumeq_screen_displayed(lumeq_screen * screen)'),
    button_clicked: library.func('void lumeq_button_clicked(lumeq_screen * screen, str16 control_name)'),
    tile_clicked: library.func('void lumeq_tile_clicked(lumeq_screen * screen, str16 control_name)'),
    hyperlink_clicked: library.func('void lumeq_hyperlink_clicked(lumeq_screen * screen, str16 control_name)'),
    checkbox_changed: library.func('void lumeq_checkbox_changed(lumeq_screen * screen, str16 control_name, int32_t is_checked)'),
    ad_displayed: library.func('void lumeq_ad_displayed(lumeq_screen * screen, str16 control_name, lumeq_ad * ad)'),
    ad_clicked: library.func('void lumeq_ad_clicked(lumeq_screen * screen, str16 control_name, lumeq_ad * ad)'),
    ad_closed: library.func('void lumeq_ad_closed(lumeq_screen * screen, str16 control_name, lumeq_ad * ad)'),
    url_launched: library.func('void lumeq_url_launched(str16 url, lumeq_dictionary * local_context, str16 global_context)'),
    form_submitted: library.func('void lumeq_form_submitted(lumeq_form * form)'),
    report_generated: library.func('void lumeq_report_generated(lumeq_form * report)'),
    track_discovered_printers: library.func('void lumeq_track_discovered_printers(lumeq_dictionary * devices, size_t count)'),
    scan_acquire_begin: library.func('uint64_t lumeq_scan_acquire_begin(lumeq_dictionary * local_context, str16 global_context)'),
    scan_acquire_complete: library.func('void lumeq_scan_acquire_complete(uint64_t task, str16 result, lumeq_scan_acquire * details)'),
    print_basic_begin: library.func('uint64_t lumeq_print_basic_begin(lumeq_dictionary * local_context, str16 global_context)'),
    print_basic_complete: library.func('void lumeq_print_basic_complete(uint64_t task, str16 result, lumeq_print_basic * details)'),
    file_send_to_begin: library.func('uint64_t lumeq_file_send_to_begin(lumeq_dictionary * local_context, str16 global_context)'),
    file_send_to_complete: library.func('void lumeq_file_send_to_complete(uint64_t task, str16 result, lumeq_file_send_to * details)'),
    device_connect_begin: library.func('uint64_t lumeq_device_connect_begin(lumeq_dictionary * local_context, str16 global_context)'),
    device_connect_complete: library.func('void lumeq_device_connect_complete(uint64_t task, str16 result, lumeq_device_connect * details)'),
    device_config_begin: library.func('uint64_t lumeq_device_config_begin(lumeq_dictionary * local_context, str16 global_context)'),
    device_config_complete: library.func('void lumeq_device_config_complete(uint64_t task, str16 result, lumeq_device_config * details)'),
    software_install_begin: library.func('uint64_t lumeq_software_install_begin(lumeq_dictionary * local_context, str16 global_context)'),
    software_install_complete: library.func('void lumeq_software_install_complete(uint64_t task, str16 result, lumeq_software_install * details)'),
    task_abandon: library.func('void lumeq_task_abandon(uint64_t task)'),
    task_is_open: library.func('int32_t lumeq_task_is_open(uint64_t task)'),
    get_biid: library.func('size_t lumeq_get_biid(str device_uuid, uint16_t * buffer, size_t size)'),
    connection_method_text: library.func('size_t lumeq_connection_method_text(int32_t method, uint16_t * buffer, size_t size)'),
});

exports.abi_number = 1;
exports.ad_type = Object.freeze({
    unknown: 0,
    banner: 1,
    hyperlink: 2,
    tile: 3,
    virtualalert: 4,
});
exports.setting = Object.freeze({
    unknown: 0,
    pbut_consent_enable: 1,
    webservices_registration: 2,
});
exports.connection_method = Object.freeze({
    unknown: 0,
    already_on_network: 1,
    auto_wireless_connect: 2,
    ethernet: 3,
    frontpanel_setup_of_wireless: 4,
    later: 5,
    press_wireless_button: 6,
    usb: 7,
    usb_plus_wifi: 8,
    usb_setup_of_wireless: 9,
    usb_to_wifi: 10,
    wifi_direct: 11,
});
exports.connection_scenario = Object.freeze({
    unknown: 0,
    add: 1,
    connect: 2,
    convert: 3,
    reconfigure: 4,
});
exports.how = Object.freeze({
    unknown: 0,
    cd_exe: 1,
    desktop_shortcut: 2,
    desktop_toast: 3,
    dxp_link: 4,
    folder_exe: 5,
    pnp_inf: 6,
    smv_link: 7,
    startmenu_shortcut: 8,
    udc_tile: 9,
});
exports.installer = Object.freeze({
    unknown: 0,
    exe: 1,
    msi: 2,
});
exports.why = Object.freeze({
    unknown: 0,
    add_device: 1,
    add_software: 2,
    reconfigure_device: 3,
    start_app: 4,
    view_device: 5,
    view_device_error: 6,
    view_device_supplies: 7,
});
exports.file_destination = Object.freeze({
    unknown: 0,
    cloud_box: 1,
    cloud_dropbox: 2,
    cloud_googledrive: 3,
    cloud_onedrive: 4,
    email_mapi: 5,
    email_smtp: 6,
    folder: 7,
});
exports.file_mime = Object.freeze({
    unknown: 0,
    application_pdf: 1,
    application_pdfsearchable: 2,
    image_jpg: 3,
    image_bmp: 4,
    image_tiff: 5,
    image_png: 6,
    application_rtf: 7,
    text_unicode: 8,
    text_ansi: 9,
    text_utf8: 10,
});
exports.file_shortcut = Object.freeze({
    unknown: 0,
    email_jpg: 1,
    email_pdf: 2,
    every_day_scan: 3,
    save_jpg: 4,
    save_pdf: 5,
    save_text: 6,
    send_cloud: 7,
    user: 8,
});
exports.file_shortcut_variance = Object.freeze({
    unknown: 0,
    modified: 1,
    modified_one_off: 2,
    original: 3,
    original_one_off: 4,
    user: 5,
    user_one_off: 6,
});
exports.scan_color_mode = Object.freeze({
    unknown: 0,
    auto: 1,
    blackwhite: 2,
    color: 3,
    gray: 4,
    halftone: 5,
});
exports.scan_item = Object.freeze({
    unknown: 0,
    document: 1,
    photo: 2,
});
exports.scan_mime = Object.freeze({
    unknown: 0,
    application_pdf: 1,
    application_pdfsearchable: 2,
    application_rtf: 3,
    image_bmp: 4,
    image_jpg: 5,
    image_png: 6,
    image_tiff: 7,
    text_ansi: 8,
    text_unicode: 9,
    text_utf8: 10,
});
exports.scan_page_size = Object.freeze({
    unknown: 0,
    a4: 1,
    auto: 2,
    custom: 3,
    entirearea: 4,
    extralong: 5,
    legal: 6,
    letter: 7,
    long: 8,
    size_4x6: 9,
    size_5x7: 10,
    size_8x10: 11,
    snap: 12,
});
exports.scan_resolution = Object.freeze({
    unknown: 0,
    dpi_75: 1,
    dpi_100: 2,
    dpi_200: 3,
    dpi_240: 4,
    dpi_300: 5,
    dpi_400: 6,
    dpi_500: 7,
    dpi_600: 8,
    dpi_1200: 9,
    dpi_2400: 10,
    dpi_4800: 11,
});
exports.scan_shortcut = Object.freeze({
    unknown: 0,
    email_jpg: 1,
    email_pdf: 2,
    every_day_scan: 3,
    save_jpg: 4,
    save_pdf: 5,
    save_text: 6,
    send_cloud: 7,
    user: 8,
});
exports.scan_shortcut_variance = Object.freeze({
    unknown: 0,
    modified: 1,
    modified_one_off: 2,
    original: 3,
    original_one_off: 4,
    user: 5,
    user_one_off: 6,
});
exports.scan_source = Object.freeze({
    unknown: 0,
    adf_duplex_book: 1,
    adf_duplex_tablet: 2,
    adf_simplex: 3,
    flatbed: 4,
});
exports.print_item = Object.freeze({
    unknown: 0,
    document: 1,
    photo_multi: 2,
    photo_single: 3,
});
exports.print_mime = Object.freeze({
    unknown: 0,
    application_pdf: 1,
    image_any: 2,
});
exports.print_page_size = Object.freeze({
    unknown: 0,
    full: 1,
    size_3p5x5: 2,
    size_4x6: 3,
    size_5x7: 4,
    size_8x10: 5,
    size_9x13_cm: 6,
    size_10x15_cm: 7,
    size_13x18_cm: 8,
});
exports.print_subsystem = Object.freeze({
    unknown: 0,
    ipp: 1,
    native: 2,
});
exports.choice = Object.freeze({
    unknown: 0,
    unset: 1,
    no: 2,
    yes: 3,
});
exports.road = Object.freeze({
    unknown: 0,
    managed: 1,
    basic: 2,
});
