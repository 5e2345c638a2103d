// clang-format off
// The functions of lumeq.h as a table, so that a host can do without the library. Written by tools/c_table.py.
#ifndef LUMEQ_LUMEQ_TABLE_H
#define LUMEQ_LUMEQ_TABLE_H

#include <Lumeq/lumeq.h>

#if defined(__cplusplus)
extern "C" {
#endif

// Each field is the function of lumeq.h with that name.
typedef struct lumeq_table {
    uint32_t (*version)(void);
    uint32_t (*abi)(void);
    int32_t (*configure)(const lumeq_options* options);
    uint64_t (*dropped_count)(void);
    int32_t (*get_state)(lumeq_state* state);
    void (*startup)(const wchar_t* app_name, int32_t why, int32_t how, int32_t track_system_info, int32_t track_print_queue_info);
    void (*shutdown)(int32_t timeout_msec);
    void (*flush)(int32_t timeout_msec);
    void (*pause)(void);
    void (*resume)(void);
    void (*set_opt_in)(int32_t user_has_opted_in);
    int32_t (*get_opt_in)(void);
    void (*set_local_subfolder)(const wchar_t* subpath);
    void (*track_print_queue_info)(void);
    void (*track_system_information)(void);
    void (*set_global_context)(const wchar_t* global_context);
    void (*screen_displayed)(const lumeq_screen* screen);
    void (*button_clicked)(const lumeq_screen* screen, const wchar_t* control_name);
    void (*tile_clicked)(const lumeq_screen* screen, const wchar_t* control_name);
    void (*hyperlink_clicked)(const lumeq_screen* screen, const wchar_t* control_name);
    void (*checkbox_changed)(const lumeq_screen* screen, const wchar_t* control_name, int32_t is_checked);
    void (*ad_displayed)(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad);
    void (*ad_clicked)(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad);
    void (*ad_closed)(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad);
    void (*url_launched)(const wchar_t* url, const lumeq_dictionary* local_context, const wchar_t* global_context);
    void (*form_submitted)(const lumeq_form* form);
    void (*report_generated)(const lumeq_form* report);
    void (*track_discovered_printers)(const lumeq_dictionary* devices, size_t count);
    lumeq_task (*scan_acquire_begin)(const lumeq_dictionary* local_context, const wchar_t* global_context);
    void (*scan_acquire_complete)(lumeq_task task, const wchar_t* result, const lumeq_scan_acquire* details);
    lumeq_task (*print_basic_begin)(const lumeq_dictionary* local_context, const wchar_t* global_context);
    void (*print_basic_complete)(lumeq_task task, const wchar_t* result, const lumeq_print_basic* details);
    lumeq_task (*file_send_to_begin)(const lumeq_dictionary* local_context, const wchar_t* global_context);
    void (*file_send_to_complete)(lumeq_task task, const wchar_t* result, const lumeq_file_send_to* details);
    lumeq_task (*device_connect_begin)(const lumeq_dictionary* local_context, const wchar_t* global_context);
    void (*device_connect_complete)(lumeq_task task, const wchar_t* result, const lumeq_device_connect* details);
    lumeq_task (*device_config_begin)(const lumeq_dictionary* local_context, const wchar_t* global_context);
    void (*device_config_complete)(lumeq_task task, const wchar_t* result, const lumeq_device_config* details);
    lumeq_task (*software_install_begin)(const lumeq_dictionary* local_context, const wchar_t* global_context);
    void (*software_install_complete)(lumeq_task task, const wchar_t* result, const lumeq_software_install* details);
    void (*task_abandon)(lumeq_task task);
    int32_t (*task_is_open)(lumeq_task task);
    size_t (*get_biid)(const char* device_uuid, wchar_t* buffer, size_t size);
    size_t (*connection_method_text)(int32_t method, wchar_t* buffer, size_t size);
} lumeq_table;

// Functions that do nothing: they return zero and write empty texts.
static inline uint32_t lumeq_no_version(void) {
    return 0;
}
static inline uint32_t lumeq_no_abi(void) {
    return 0;
}
static inline int32_t lumeq_no_configure(const lumeq_options* options) {
    (void)options;
    return 0;
}
static inline uint64_t lumeq_no_dropped_count(void) {
    return 0;
}
static inline int32_t lumeq_no_get_state(lumeq_state* state) {
    (void)state;
    return 0;
}
static inline void lumeq_no_startup(const wchar_t* app_name, int32_t why, int32_t how, int32_t track_system_info, int32_t track_print_queue_info) {
    (void)app_name;
    (void)why;
    (void)how;
    (void)track_system_info;
    (void)track_print_queue_info;
}
static inline void lumeq_no_shutdown(int32_t timeout_msec) {
    (void)timeout_msec;
}
static inline void lumeq_no_flush(int32_t timeout_msec) {
    (void)timeout_msec;
}
static inline void lumeq_no_pause(void) {
}
static inline void lumeq_no_resume(void) {
}
static inline void lumeq_no_set_opt_in(int32_t user_has_opted_in) {
    (void)user_has_opted_in;
}
static inline int32_t lumeq_no_get_opt_in(void) {
    return 0;
}
static inline void lumeq_no_set_local_subfolder(const wchar_t* subpath) {
    (void)subpath;
}
static inline void lumeq_no_track_print_queue_info(void) {
}
static inline void lumeq_no_track_system_information(void) {
}
static inline void lumeq_no_set_global_context(const wchar_t* global_context) {
    (void)global_context;
}
static inline void lumeq_no_screen_displayed(const lumeq_screen* screen) {
    (void)screen;
}
static inline void lumeq_no_button_clicked(const lumeq_screen* screen, const wchar_t* control_name) {
    (void)screen;
    (void)control_name;
}
static inline void lumeq_no_tile_clicked(const lumeq_screen* screen, const wchar_t* control_name) {
    (void)screen;
    (void)control_name;
}
static inline void lumeq_no_hyperlink_clicked(const lumeq_screen* screen, const wchar_t* control_name) {
    (void)screen;
    (void)control_name;
}
static inline void lumeq_no_checkbox_changed(const lumeq_screen* screen, const wchar_t* control_name, int32_t is_checked) {
    (void)screen;
    (void)control_name;
    (void)is_checked;
}
static inline void lumeq_no_ad_displayed(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad) {
    (void)screen;
    (void)control_name;
    (void)ad;
}
static inline void lumeq_no_ad_clicked(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad) {
    (void)screen;
    (void)control_name;
    (void)ad;
}
static inline void lumeq_no_ad_closed(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad) {
    (void)screen;
    (void)control_name;
    (void)ad;
}
static inline void lumeq_no_url_launched(const wchar_t* url, const lumeq_dictionary* local_context, const wchar_t* global_context) {
    (void)url;
    (void)local_context;
    (void)global_context;
}
static inline void lumeq_no_form_submitted(const lumeq_form* form) {
    (void)form;
}
static inline void lumeq_no_report_generated(const lumeq_form* report) {
    (void)report;
}
static inline void lumeq_no_track_discovered_printers(const lumeq_dictionary* devices, size_t count) {
    (void)devices;
    (void)count;
}
static inline lumeq_task lumeq_no_scan_acquire_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    (void)local_context;
    (void)global_context;
    return 0;
}
static inline void lumeq_no_scan_acquire_complete(lumeq_task task, const wchar_t* result, const lumeq_scan_acquire* details) {
    (void)task;
    (void)result;
    (void)details;
}
static inline lumeq_task lumeq_no_print_basic_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    (void)local_context;
    (void)global_context;
    return 0;
}
static inline void lumeq_no_print_basic_complete(lumeq_task task, const wchar_t* result, const lumeq_print_basic* details) {
    (void)task;
    (void)result;
    (void)details;
}
static inline lumeq_task lumeq_no_file_send_to_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    (void)local_context;
    (void)global_context;
    return 0;
}
static inline void lumeq_no_file_send_to_complete(lumeq_task task, const wchar_t* result, const lumeq_file_send_to* details) {
    (void)task;
    (void)result;
    (void)details;
}
static inline lumeq_task lumeq_no_device_connect_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    (void)local_context;
    (void)global_context;
    return 0;
}
static inline void lumeq_no_device_connect_complete(lumeq_task task, const wchar_t* result, const lumeq_device_connect* details) {
    (void)task;
    (void)result;
    (void)details;
}
static inline lumeq_task lumeq_no_device_config_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    (void)local_context;
    (void)global_context;
    return 0;
}
static inline void lumeq_no_device_config_complete(lumeq_task task, const wchar_t* result, const lumeq_device_config* details) {
    (void)task;
    (void)result;
    (void)details;
}
static inline lumeq_task lumeq_no_software_install_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    (void)local_context;
    (void)global_context;
    return 0;
}
static inline void lumeq_no_software_install_complete(lumeq_task task, const wchar_t* result, const lumeq_software_install* details) {
    (void)task;
    (void)result;
    (void)details;
}
static inline void lumeq_no_task_abandon(lumeq_task task) {
    (void)task;
}
static inline int32_t lumeq_no_task_is_open(lumeq_task task) {
    (void)task;
    return 0;
}
static inline size_t lumeq_no_get_biid(const char* device_uuid, wchar_t* buffer, size_t size) {
    (void)device_uuid;
    if (buffer != 0 && size > 0)
        buffer[0] = 0;
    return 0;
}
static inline size_t lumeq_no_connection_method_text(int32_t method, wchar_t* buffer, size_t size) {
    (void)method;
    if (buffer != 0 && size > 0)
        buffer[0] = 0;
    return 0;
}

static inline void lumeq_table_set_no_ops(lumeq_table* table) {
    table->version = lumeq_no_version;
    table->abi = lumeq_no_abi;
    table->configure = lumeq_no_configure;
    table->dropped_count = lumeq_no_dropped_count;
    table->get_state = lumeq_no_get_state;
    table->startup = lumeq_no_startup;
    table->shutdown = lumeq_no_shutdown;
    table->flush = lumeq_no_flush;
    table->pause = lumeq_no_pause;
    table->resume = lumeq_no_resume;
    table->set_opt_in = lumeq_no_set_opt_in;
    table->get_opt_in = lumeq_no_get_opt_in;
    table->set_local_subfolder = lumeq_no_set_local_subfolder;
    table->track_print_queue_info = lumeq_no_track_print_queue_info;
    table->track_system_information = lumeq_no_track_system_information;
    table->set_global_context = lumeq_no_set_global_context;
    table->screen_displayed = lumeq_no_screen_displayed;
    table->button_clicked = lumeq_no_button_clicked;
    table->tile_clicked = lumeq_no_tile_clicked;
    table->hyperlink_clicked = lumeq_no_hyperlink_clicked;
    table->checkbox_changed = lumeq_no_checkbox_changed;
    table->ad_displayed = lumeq_no_ad_displayed;
    table->ad_clicked = lumeq_no_ad_clicked;
    table->ad_closed = lumeq_no_ad_closed;
    table->url_launched = lumeq_no_url_launched;
    table->form_submitted = lumeq_no_form_submitted;
    table->report_generated = lumeq_no_report_generated;
    table->track_discovered_printers = lumeq_no_track_discovered_printers;
    table->scan_acquire_begin = lumeq_no_scan_acquire_begin;
    table->scan_acquire_complete = lumeq_no_scan_acquire_complete;
    table->print_basic_begin = lumeq_no_print_basic_begin;
    table->print_basic_complete = lumeq_no_print_basic_complete;
    table->file_send_to_begin = lumeq_no_file_send_to_begin;
    table->file_send_to_complete = lumeq_no_file_send_to_complete;
    table->device_connect_begin = lumeq_no_device_connect_begin;
    table->device_connect_complete = lumeq_no_device_connect_complete;
    table->device_config_begin = lumeq_no_device_config_begin;
    table->device_config_complete = lumeq_no_device_config_complete;
    table->software_install_begin = lumeq_no_software_install_begin;
    table->software_install_complete = lumeq_no_software_install_complete;
    table->task_abandon = lumeq_no_task_abandon;
    table->task_is_open = lumeq_no_task_is_open;
    table->get_biid = lumeq_no_get_biid;
    table->connection_method_text = lumeq_no_connection_method_text;
}

// The functions of the import library.
static inline void lumeq_table_set_linked(lumeq_table* table) {
    table->version = lumeq_version;
    table->abi = lumeq_abi;
    table->configure = lumeq_configure;
    table->dropped_count = lumeq_dropped_count;
    table->get_state = lumeq_get_state;
    table->startup = lumeq_startup;
    table->shutdown = lumeq_shutdown;
    table->flush = lumeq_flush;
    table->pause = lumeq_pause;
    table->resume = lumeq_resume;
    table->set_opt_in = lumeq_set_opt_in;
    table->get_opt_in = lumeq_get_opt_in;
    table->set_local_subfolder = lumeq_set_local_subfolder;
    table->track_print_queue_info = lumeq_track_print_queue_info;
    table->track_system_information = lumeq_track_system_information;
    table->set_global_context = lumeq_set_global_context;
    table->screen_displayed = lumeq_screen_displayed;
    table->button_clicked = lumeq_button_clicked;
    table->tile_clicked = lumeq_tile_clicked;
    table->hyperlink_clicked = lumeq_hyperlink_clicked;
    table->checkbox_changed = lumeq_checkbox_changed;
    table->ad_displayed = lumeq_ad_displayed;
    table->ad_clicked = lumeq_ad_clicked;
    table->ad_closed = lumeq_ad_closed;
    table->url_launched = lumeq_url_launched;
    table->form_submitted = lumeq_form_submitted;
    table->report_generated = lumeq_report_generated;
    table->track_discovered_printers = lumeq_track_discovered_printers;
    table->scan_acquire_begin = lumeq_scan_acquire_begin;
    table->scan_acquire_complete = lumeq_scan_acquire_complete;
    table->print_basic_begin = lumeq_print_basic_begin;
    table->print_basic_complete = lumeq_print_basic_complete;
    table->file_send_to_begin = lumeq_file_send_to_begin;
    table->file_send_to_complete = lumeq_file_send_to_complete;
    table->device_connect_begin = lumeq_device_connect_begin;
    table->device_connect_complete = lumeq_device_connect_complete;
    table->device_config_begin = lumeq_device_config_begin;
    table->device_config_complete = lumeq_device_config_complete;
    table->software_install_begin = lumeq_software_install_begin;
    table->software_install_complete = lumeq_software_install_complete;
    table->task_abandon = lumeq_task_abandon;
    table->task_is_open = lumeq_task_is_open;
    table->get_biid = lumeq_get_biid;
    table->connection_method_text = lumeq_connection_method_text;
}

typedef void (*lumeq_any_function)(void);

// The functions that `find` finds in `library`. Returns 0 if any is missing.
static inline int lumeq_table_set_found(lumeq_table* table, lumeq_any_function (*find)(void* library, const char* name),
                                        void* library) {
    int complete = 1;
    table->version = (uint32_t (*)(void))find(library, "lumeq_version");
    complete &= table->version != 0;
    table->abi = (uint32_t (*)(void))find(library, "lumeq_abi");
    complete &= table->abi != 0;
    table->configure = (int32_t (*)(const lumeq_options* options))find(library, "lumeq_configure");
    complete &= table->configure != 0;
    table->dropped_count = (uint64_t (*)(void))find(library, "lumeq_dropped_count");
    complete &= table->dropped_count != 0;
    table->get_state = (int32_t (*)(lumeq_state* state))find(library, "lumeq_get_state");
    complete &= table->get_state != 0;
    table->startup = (void (*)(const wchar_t* app_name, int32_t why, int32_t how, int32_t track_system_info, int32_t track_print_queue_info))find(library, "lumeq_startup");
    complete &= table->startup != 0;
    table->shutdown = (void (*)(int32_t timeout_msec))find(library, "lumeq_shutdown");
    complete &= table->shutdown != 0;
    table->flush = (void (*)(int32_t timeout_msec))find(library, "lumeq_flush");
    complete &= table->flush != 0;
    table->pause = (void (*)(void))find(library, "lumeq_pause");
    complete &= table->pause != 0;
    table->resume = (void (*)(void))find(library, "lumeq_resume");
    complete &= table->resume != 0;
    table->set_opt_in = (void (*)(int32_t user_has_opted_in))find(library, "lumeq_set_opt_in");
    complete &= table->set_opt_in != 0;
    table->get_opt_in = (int32_t (*)(void))find(library, "lumeq_get_opt_in");
    complete &= table->get_opt_in != 0;
    table->set_local_subfolder = (void (*)(const wchar_t* subpath))find(library, "lumeq_set_local_subfolder");
    complete &= table->set_local_subfolder != 0;
    table->track_print_queue_info = (void (*)(void))find(library, "lumeq_track_print_queue_info");
    complete &= table->track_print_queue_info != 0;
    table->track_system_information = (void (*)(void))find(library, "lumeq_track_system_information");
    complete &= table->track_system_information != 0;
    table->set_global_context = (void (*)(const wchar_t* global_context))find(library, "lumeq_set_global_context");
    complete &= table->set_global_context != 0;
    table->screen_displayed = (void (*)(const lumeq_screen* screen))find(library, "lumeq_screen_displayed");
    complete &= table->screen_displayed != 0;
    table->button_clicked = (void (*)(const lumeq_screen* screen, const wchar_t* control_name))find(library, "lumeq_button_clicked");
    complete &= table->button_clicked != 0;
    table->tile_clicked = (void (*)(const lumeq_screen* screen, const wchar_t* control_name))find(library, "lumeq_tile_clicked");
    complete &= table->tile_clicked != 0;
    table->hyperlink_clicked = (void (*)(const lumeq_screen* screen, const wchar_t* control_name))find(library, "lumeq_hyperlink_clicked");
    complete &= table->hyperlink_clicked != 0;
    table->checkbox_changed = (void (*)(const lumeq_screen* screen, const wchar_t* control_name, int32_t is_checked))find(library, "lumeq_checkbox_changed");
    complete &= table->checkbox_changed != 0;
    table->ad_displayed = (void (*)(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad))find(library, "lumeq_ad_displayed");
    complete &= table->ad_displayed != 0;
    table->ad_clicked = (void (*)(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad))find(library, "lumeq_ad_clicked");
    complete &= table->ad_clicked != 0;
    table->ad_closed = (void (*)(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad))find(library, "lumeq_ad_closed");
    complete &= table->ad_closed != 0;
    table->url_launched = (void (*)(const wchar_t* url, const lumeq_dictionary* local_context, const wchar_t* global_context))find(library, "lumeq_url_launched");
    complete &= table->url_launched != 0;
    table->form_submitted = (void (*)(const lumeq_form* form))find(library, "lumeq_form_submitted");
    complete &= table->form_submitted != 0;
    table->report_generated = (void (*)(const lumeq_form* report))find(library, "lumeq_report_generated");
    complete &= table->report_generated != 0;
    table->track_discovered_printers = (void (*)(const lumeq_dictionary* devices, size_t count))find(library, "lumeq_track_discovered_printers");
    complete &= table->track_discovered_printers != 0;
    table->scan_acquire_begin = (lumeq_task (*)(const lumeq_dictionary* local_context, const wchar_t* global_context))find(library, "lumeq_scan_acquire_begin");
    complete &= table->scan_acquire_begin != 0;
    table->scan_acquire_complete = (void (*)(lumeq_task task, const wchar_t* result, const lumeq_scan_acquire* details))find(library, "lumeq_scan_acquire_complete");
    complete &= table->scan_acquire_complete != 0;
    table->print_basic_begin = (lumeq_task (*)(const lumeq_dictionary* local_context, const wchar_t* global_context))find(library, "lumeq_print_basic_begin");
    complete &= table->print_basic_begin != 0;
    table->print_basic_complete = (void (*)(lumeq_task task, const wchar_t* result, const lumeq_print_basic* details))find(library, "lumeq_print_basic_complete");
    complete &= table->print_basic_complete != 0;
    table->file_send_to_begin = (lumeq_task (*)(const lumeq_dictionary* local_context, const wchar_t* global_context))find(library, "lumeq_file_send_to_begin");
    complete &= table->file_send_to_begin != 0;
    table->file_send_to_complete = (void (*)(lumeq_task task, const wchar_t* result, const lumeq_file_send_to* details))find(library, "lumeq_file_send_to_complete");
    complete &= table->file_send_to_complete != 0;
    table->device_connect_begin = (lumeq_task (*)(const lumeq_dictionary* local_context, const wchar_t* global_context))find(library, "lumeq_device_connect_begin");
    complete &= table->device_connect_begin != 0;
    table->device_connect_complete = (void (*)(lumeq_task task, const wchar_t* result, const lumeq_device_connect* details))find(library, "lumeq_device_connect_complete");
    complete &= table->device_connect_complete != 0;
    table->device_config_begin = (lumeq_task (*)(const lumeq_dictionary* local_context, const wchar_t* global_context))find(library, "lumeq_device_config_begin");
    complete &= table->device_config_begin != 0;
    table->device_config_complete = (void (*)(lumeq_task task, const wchar_t* result, const lumeq_device_config* details))find(library, "lumeq_device_config_complete");
    complete &= table->device_config_complete != 0;
    table->software_install_begin = (lumeq_task (*)(const lumeq_dictionary* local_context, const wchar_t* global_context))find(library, "lumeq_software_install_begin");
    complete &= table->software_install_begin != 0;
    table->software_install_complete = (void (*)(lumeq_task task, const wchar_t* result, const lumeq_software_install* details))find(library, "lumeq_software_install_complete");
    complete &= table->software_install_complete != 0;
    table->task_abandon = (void (*)(lumeq_task task))find(library, "lumeq_task_abandon");
    complete &= table->task_abandon != 0;
    table->task_is_open = (int32_t (*)(lumeq_task task))find(library, "lumeq_task_is_open");
    complete &= table->task_is_open != 0;
    table->get_biid = (size_t (*)(const char* device_uuid, wchar_t* buffer, size_t size))find(library, "lumeq_get_biid");
    complete &= table->get_biid != 0;
    table->connection_method_text = (size_t (*)(int32_t method, wchar_t* buffer, size_t size))find(library, "lumeq_connection_method_text");
    complete &= table->connection_method_text != 0;
    return complete;
}

#if defined(__cplusplus)
}
#endif

#endif
