// Lumeq for hosts of any compiler and language: the same usage telemetry as LumeqApi.h, as C functions that
// LumeqC.dll exports.
//
// Conventions of all functions below:
// - A text is NUL-terminated UTF-16. A required text that is null is refused like an empty one; any
//   other text may be null. LumeqApi.h says what each text must look like.
// - A struct begins with its size, which the caller sets, best by the macro named after it. With a
//   smaller size than the library knows, the caller is an older one: the fields beyond it are null or
//   zero. A larger struct is read as far as the library knows it. A null struct, or a size of zero,
//   refuses the call.
// - A dictionary, or an array beside a count, holds that many elements. If the count is not zero and the
//   array is null, or a name or value in it is null, the call is refused. The last of two equal names
//   counts.
// - An enumerated value is an int32_t with a constant below. Flags are int32_t: zero is no, all else is
//   yes.
// - The log shows a call that is refused for its structs or arrays like one with an empty text:
//   `screen_name`, `control_name`, `org_name` or `result` for a struct or its features, `global_context`
//   for a `local_context`, `dev_biid` for a device.
// - Arguments are copied; the library keeps none, and neither side frees what the other allocated.
// - No function throws. A call that fails returns zero, and so does one made while the process ends.
// - Any thread may call, but not from DllMain.
// - In later versions, structs that begin with their size may get fields at their end, and texts may become
//   longer. All else here stays.
#ifndef LUMEQ_LUMEQ_H
#define LUMEQ_LUMEQ_H

#include <stddef.h>
#include <stdint.h>

#define LUMEQ_VERSION_MAJOR 1
#define LUMEQ_VERSION_MINOR 0
#define LUMEQ_VERSION_PATCH 0
#define LUMEQ_VERSION_NUMBER (LUMEQ_VERSION_MAJOR * 10000 + LUMEQ_VERSION_MINOR * 100 + LUMEQ_VERSION_PATCH)

/// Changes when a host built with an older header can no longer use the library.
#define LUMEQ_ABI_NUMBER 1

#if !defined(LUMEQ_C_API)
#if defined(_WIN32)
#define LUMEQ_C_API __declspec(dllimport)
#else
#define LUMEQ_C_API
#endif
#endif

#if defined(__cplusplus)
extern "C" {
#endif

// The vocabulary. An event with a value outside its enumeration is dropped.

enum lumeq_ad_type {
    LUMEQ_AD_UNKNOWN = 0,
    LUMEQ_AD_BANNER = 1,
    LUMEQ_AD_HYPERLINK = 2,
    LUMEQ_AD_TILE = 3,
    LUMEQ_AD_VIRTUALALERT = 4
};

enum lumeq_setting {
    LUMEQ_SETTING_UNKNOWN = 0,
    LUMEQ_SETTING_PBUT_CONSENT_ENABLE = 1,
    LUMEQ_SETTING_WEBSERVICES_REGISTRATION = 2
};

enum lumeq_connection_method {
    LUMEQ_CONNECTION_METHOD_UNKNOWN = 0,
    LUMEQ_CONNECTION_METHOD_ALREADY_ON_NETWORK = 1,
    LUMEQ_CONNECTION_METHOD_AUTO_WIRELESS_CONNECT = 2,
    LUMEQ_CONNECTION_METHOD_ETHERNET = 3,
    LUMEQ_CONNECTION_METHOD_FRONTPANEL_SETUP_OF_WIRELESS = 4,
    LUMEQ_CONNECTION_METHOD_LATER = 5,
    LUMEQ_CONNECTION_METHOD_PRESS_WIRELESS_BUTTON = 6,
    LUMEQ_CONNECTION_METHOD_USB = 7,
    LUMEQ_CONNECTION_METHOD_USB_PLUS_WIFI = 8,
    LUMEQ_CONNECTION_METHOD_USB_SETUP_OF_WIRELESS = 9,
    LUMEQ_CONNECTION_METHOD_USB_TO_WIFI = 10,
    LUMEQ_CONNECTION_METHOD_WIFI_DIRECT = 11
};

enum lumeq_connection_scenario {
    LUMEQ_CONNECTION_SCENARIO_UNKNOWN = 0,
    LUMEQ_CONNECTION_SCENARIO_ADD = 1,
    LUMEQ_CONNECTION_SCENARIO_CONNECT = 2,
    LUMEQ_CONNECTION_SCENARIO_CONVERT = 3,
    LUMEQ_CONNECTION_SCENARIO_RECONFIGURE = 4
};

enum lumeq_how {
    LUMEQ_HOW_UNKNOWN = 0,
    LUMEQ_HOW_CD_EXE = 1,
    LUMEQ_HOW_DESKTOP_SHORTCUT = 2,
    LUMEQ_HOW_DESKTOP_TOAST = 3,
    LUMEQ_HOW_DXP_LINK = 4,
    LUMEQ_HOW_FOLDER_EXE = 5,
    LUMEQ_HOW_PNP_INF = 6,
    LUMEQ_HOW_SMV_LINK = 7,
    LUMEQ_HOW_STARTMENU_SHORTCUT = 8,
    LUMEQ_HOW_UDC_TILE = 9
};

enum lumeq_installer { LUMEQ_INSTALLER_UNKNOWN = 0, LUMEQ_INSTALLER_EXE = 1, LUMEQ_INSTALLER_MSI = 2 };

enum lumeq_why {
    LUMEQ_WHY_UNKNOWN = 0,
    LUMEQ_WHY_ADD_DEVICE = 1,
    LUMEQ_WHY_ADD_SOFTWARE = 2,
    LUMEQ_WHY_RECONFIGURE_DEVICE = 3,
    LUMEQ_WHY_START_APP = 4,
    LUMEQ_WHY_VIEW_DEVICE = 5,
    LUMEQ_WHY_VIEW_DEVICE_ERROR = 6,
    LUMEQ_WHY_VIEW_DEVICE_SUPPLIES = 7
};

enum lumeq_file_destination {
    LUMEQ_FILE_DESTINATION_UNKNOWN = 0,
    LUMEQ_FILE_DESTINATION_CLOUD_BOX = 1,
    LUMEQ_FILE_DESTINATION_CLOUD_DROPBOX = 2,
    LUMEQ_FILE_DESTINATION_CLOUD_GOOGLEDRIVE = 3,
    LUMEQ_FILE_DESTINATION_CLOUD_ONEDRIVE = 4,
    LUMEQ_FILE_DESTINATION_EMAIL_MAPI = 5,
    LUMEQ_FILE_DESTINATION_EMAIL_SMTP = 6,
    LUMEQ_FILE_DESTINATION_FOLDER = 7
};

enum lumeq_file_mime {
    LUMEQ_FILE_MIME_UNKNOWN = 0,
    LUMEQ_FILE_MIME_APPLICATION_PDF = 1,
    LUMEQ_FILE_MIME_APPLICATION_PDFSEARCHABLE = 2,
    LUMEQ_FILE_MIME_IMAGE_JPG = 3,
    LUMEQ_FILE_MIME_IMAGE_BMP = 4,
    LUMEQ_FILE_MIME_IMAGE_TIFF = 5,
    LUMEQ_FILE_MIME_IMAGE_PNG = 6,
    LUMEQ_FILE_MIME_APPLICATION_RTF = 7,
    LUMEQ_FILE_MIME_TEXT_UNICODE = 8,
    LUMEQ_FILE_MIME_TEXT_ANSI = 9,
    LUMEQ_FILE_MIME_TEXT_UTF8 = 10
};

enum lumeq_file_shortcut {
    LUMEQ_FILE_SHORTCUT_UNKNOWN = 0,
    LUMEQ_FILE_SHORTCUT_EMAIL_JPG = 1,
    LUMEQ_FILE_SHORTCUT_EMAIL_PDF = 2,
    LUMEQ_FILE_SHORTCUT_EVERY_DAY_SCAN = 3,
    LUMEQ_FILE_SHORTCUT_SAVE_JPG = 4,
    LUMEQ_FILE_SHORTCUT_SAVE_PDF = 5,
    LUMEQ_FILE_SHORTCUT_SAVE_TEXT = 6,
    LUMEQ_FILE_SHORTCUT_SEND_CLOUD = 7,
    LUMEQ_FILE_SHORTCUT_USER = 8
};

enum lumeq_file_shortcut_variance {
    LUMEQ_FILE_SHORTCUT_VARIANCE_UNKNOWN = 0,
    LUMEQ_FILE_SHORTCUT_VARIANCE_MODIFIED = 1,
    LUMEQ_FILE_SHORTCUT_VARIANCE_MODIFIED_ONE_OFF = 2,
    LUMEQ_FILE_SHORTCUT_VARIANCE_ORIGINAL = 3,
    LUMEQ_FILE_SHORTCUT_VARIANCE_ORIGINAL_ONE_OFF = 4,
    LUMEQ_FILE_SHORTCUT_VARIANCE_USER = 5,
    LUMEQ_FILE_SHORTCUT_VARIANCE_USER_ONE_OFF = 6
};

enum lumeq_scan_color_mode {
    LUMEQ_SCAN_COLOR_MODE_UNKNOWN = 0,
    LUMEQ_SCAN_COLOR_MODE_AUTO = 1,
    LUMEQ_SCAN_COLOR_MODE_BLACKWHITE = 2,
    LUMEQ_SCAN_COLOR_MODE_COLOR = 3,
    LUMEQ_SCAN_COLOR_MODE_GRAY = 4,
    LUMEQ_SCAN_COLOR_MODE_HALFTONE = 5
};

enum lumeq_scan_item { LUMEQ_SCAN_ITEM_UNKNOWN = 0, LUMEQ_SCAN_ITEM_DOCUMENT = 1, LUMEQ_SCAN_ITEM_PHOTO = 2 };

enum lumeq_scan_mime {
    LUMEQ_SCAN_MIME_UNKNOWN = 0,
    LUMEQ_SCAN_MIME_APPLICATION_PDF = 1,
    LUMEQ_SCAN_MIME_APPLICATION_PDFSEARCHABLE = 2,
    LUMEQ_SCAN_MIME_APPLICATION_RTF = 3,
    LUMEQ_SCAN_MIME_IMAGE_BMP = 4,
    LUMEQ_SCAN_MIME_IMAGE_JPG = 5,
    LUMEQ_SCAN_MIME_IMAGE_PNG = 6,
    LUMEQ_SCAN_MIME_IMAGE_TIFF = 7,
    LUMEQ_SCAN_MIME_TEXT_ANSI = 8,
    LUMEQ_SCAN_MIME_TEXT_UNICODE = 9,
    LUMEQ_SCAN_MIME_TEXT_UTF8 = 10
};

enum lumeq_scan_page_size {
    LUMEQ_SCAN_PAGE_SIZE_UNKNOWN = 0,
    LUMEQ_SCAN_PAGE_SIZE_A4 = 1,
    LUMEQ_SCAN_PAGE_SIZE_AUTO = 2,
    LUMEQ_SCAN_PAGE_SIZE_CUSTOM = 3,
    LUMEQ_SCAN_PAGE_SIZE_ENTIREAREA = 4,
    LUMEQ_SCAN_PAGE_SIZE_EXTRALONG = 5,
    LUMEQ_SCAN_PAGE_SIZE_LEGAL = 6,
    LUMEQ_SCAN_PAGE_SIZE_LETTER = 7,
    LUMEQ_SCAN_PAGE_SIZE_LONG = 8,
    LUMEQ_SCAN_PAGE_SIZE_SIZE_4X6 = 9,
    LUMEQ_SCAN_PAGE_SIZE_SIZE_5X7 = 10,
    LUMEQ_SCAN_PAGE_SIZE_SIZE_8X10 = 11,
    LUMEQ_SCAN_PAGE_SIZE_SNAP = 12
};

enum lumeq_scan_resolution {
    LUMEQ_SCAN_RESOLUTION_UNKNOWN = 0,
    LUMEQ_SCAN_RESOLUTION_DPI_75 = 1,
    LUMEQ_SCAN_RESOLUTION_DPI_100 = 2,
    LUMEQ_SCAN_RESOLUTION_DPI_200 = 3,
    LUMEQ_SCAN_RESOLUTION_DPI_240 = 4,
    LUMEQ_SCAN_RESOLUTION_DPI_300 = 5,
    LUMEQ_SCAN_RESOLUTION_DPI_400 = 6,
    LUMEQ_SCAN_RESOLUTION_DPI_500 = 7,
    LUMEQ_SCAN_RESOLUTION_DPI_600 = 8,
    LUMEQ_SCAN_RESOLUTION_DPI_1200 = 9,
    LUMEQ_SCAN_RESOLUTION_DPI_2400 = 10,
    LUMEQ_SCAN_RESOLUTION_DPI_4800 = 11
};

enum lumeq_scan_shortcut {
    LUMEQ_SCAN_SHORTCUT_UNKNOWN = 0,
    LUMEQ_SCAN_SHORTCUT_EMAIL_JPG = 1,
    LUMEQ_SCAN_SHORTCUT_EMAIL_PDF = 2,
    LUMEQ_SCAN_SHORTCUT_EVERY_DAY_SCAN = 3,
    LUMEQ_SCAN_SHORTCUT_SAVE_JPG = 4,
    LUMEQ_SCAN_SHORTCUT_SAVE_PDF = 5,
    LUMEQ_SCAN_SHORTCUT_SAVE_TEXT = 6,
    LUMEQ_SCAN_SHORTCUT_SEND_CLOUD = 7,
    LUMEQ_SCAN_SHORTCUT_USER = 8
};

enum lumeq_scan_shortcut_variance {
    LUMEQ_SCAN_SHORTCUT_VARIANCE_UNKNOWN = 0,
    LUMEQ_SCAN_SHORTCUT_VARIANCE_MODIFIED = 1,
    LUMEQ_SCAN_SHORTCUT_VARIANCE_MODIFIED_ONE_OFF = 2,
    LUMEQ_SCAN_SHORTCUT_VARIANCE_ORIGINAL = 3,
    LUMEQ_SCAN_SHORTCUT_VARIANCE_ORIGINAL_ONE_OFF = 4,
    LUMEQ_SCAN_SHORTCUT_VARIANCE_USER = 5,
    LUMEQ_SCAN_SHORTCUT_VARIANCE_USER_ONE_OFF = 6
};

enum lumeq_scan_source {
    LUMEQ_SCAN_SOURCE_UNKNOWN = 0,
    LUMEQ_SCAN_SOURCE_ADF_DUPLEX_BOOK = 1,
    LUMEQ_SCAN_SOURCE_ADF_DUPLEX_TABLET = 2,
    LUMEQ_SCAN_SOURCE_ADF_SIMPLEX = 3,
    LUMEQ_SCAN_SOURCE_FLATBED = 4
};

enum lumeq_print_item {
    LUMEQ_PRINT_ITEM_UNKNOWN = 0,
    LUMEQ_PRINT_ITEM_DOCUMENT = 1,
    LUMEQ_PRINT_ITEM_PHOTO_MULTI = 2,
    LUMEQ_PRINT_ITEM_PHOTO_SINGLE = 3
};

enum lumeq_print_mime {
    LUMEQ_PRINT_MIME_UNKNOWN = 0,
    LUMEQ_PRINT_MIME_APPLICATION_PDF = 1,
    LUMEQ_PRINT_MIME_IMAGE_ANY = 2
};

enum lumeq_print_page_size {
    LUMEQ_PRINT_PAGE_SIZE_UNKNOWN = 0,
    LUMEQ_PRINT_PAGE_SIZE_FULL = 1,
    LUMEQ_PRINT_PAGE_SIZE_SIZE_3P5X5 = 2,
    LUMEQ_PRINT_PAGE_SIZE_SIZE_4X6 = 3,
    LUMEQ_PRINT_PAGE_SIZE_SIZE_5X7 = 4,
    LUMEQ_PRINT_PAGE_SIZE_SIZE_8X10 = 5,
    LUMEQ_PRINT_PAGE_SIZE_SIZE_9X13_CM = 6,
    LUMEQ_PRINT_PAGE_SIZE_SIZE_10X15_CM = 7,
    LUMEQ_PRINT_PAGE_SIZE_SIZE_13X18_CM = 8
};

enum lumeq_print_subsystem {
    LUMEQ_PRINT_SUBSYSTEM_UNKNOWN = 0,
    LUMEQ_PRINT_SUBSYSTEM_IPP = 1,
    LUMEQ_PRINT_SUBSYSTEM_NATIVE = 2
};

/// What the user has chosen, as the local settings file says.
enum lumeq_choice {
    LUMEQ_CHOICE_UNKNOWN = 0, ///< The file cannot be read.
    LUMEQ_CHOICE_UNSET = 1,
    LUMEQ_CHOICE_NO = 2,
    LUMEQ_CHOICE_YES = 3
};

/// What becomes of events, as far as it shows before they are recorded.
enum lumeq_road {
    LUMEQ_ROAD_UNKNOWN = 0, ///< Nothing has been delivered yet, or the managed runtime is not the right one.
    LUMEQ_ROAD_MANAGED = 1, ///< The companion library is loaded and receives them.
    LUMEQ_ROAD_BASIC = 2    ///< The managed runtime or the companion library is missing, so they are dropped.
};

/// One field of a dictionary.
typedef struct lumeq_field {
    const wchar_t* name;
    const wchar_t* value;
} lumeq_field;

/// Free-form fields. All zero: there are none.
typedef struct lumeq_dictionary {
    const lumeq_field* fields;
    size_t count;
} lumeq_dictionary;

/// A scanner feature, on or off.
typedef struct lumeq_feature {
    const wchar_t* name;
    int32_t is_on;
    int32_t reserved;
} lumeq_feature;

/// An open task; zero is none. A number that is never used again, so an ended task is recognised.
typedef uint64_t lumeq_task;

typedef struct lumeq_options {
    size_t size;
    int32_t use_worker_thread;
    int32_t queue_capacity; ///< Events that may wait for the worker; 1,000 where zero or less.
} lumeq_options;
#define LUMEQ_OPTIONS_INIT                                                                                   \
    { sizeof(lumeq_options), 0, 0 }

/// What telemetry is doing, for a dialog of the host's. See lumeq_get_state.
typedef struct lumeq_state {
    size_t size;
    uint64_t dropped_count;     ///< That of lumeq_dropped_count.
    int32_t is_disabled;        ///< The user's registry disables tracking.
    int32_t choice;             ///< enum lumeq_choice. During a pause, what the end of the pause restores.
    int32_t is_paused;          ///< Also a pause that a killed process has left; the next start ends it.
    int32_t road;               ///< enum lumeq_road
    int32_t uses_worker_thread; ///< Calls are queued for the library's thread.
    int32_t queued_calls;       ///< Calls that wait for it, without the one that it makes.
} lumeq_state;
#define LUMEQ_STATE_INIT                                                                                     \
    { sizeof(lumeq_state), 0, 0, 0, 0, 0, 0, 0 }

/// Where the user was. `screen_name` is required.
typedef struct lumeq_screen {
    size_t size;
    const wchar_t* flow;
    const wchar_t* screen_path;
    const wchar_t* screen_name;
    const wchar_t* mode;
    const lumeq_dictionary* local_context;
    const wchar_t* global_context;
} lumeq_screen;
#define LUMEQ_SCREEN_INIT                                                                                    \
    { sizeof(lumeq_screen), 0, 0, 0, 0, 0, 0 }

typedef struct lumeq_ad {
    size_t size;
    const wchar_t* product;
    const wchar_t* name;
    const wchar_t* variant;
    int32_t type; ///< enum lumeq_ad_type
    int32_t reserved;
} lumeq_ad;
#define LUMEQ_AD_INIT                                                                                        \
    { sizeof(lumeq_ad), 0, 0, 0, 0, 0 }

/// A form or a report. The first four texts are required.
typedef struct lumeq_form {
    size_t size;
    const wchar_t* org_name;
    const wchar_t* code_name;
    const wchar_t* name;
    const wchar_t* version;
    lumeq_dictionary details;
    const lumeq_dictionary* local_context;
    const wchar_t* global_context;
} lumeq_form;
#define LUMEQ_FORM_INIT                                                                                      \
    { sizeof(lumeq_form), 0, 0, 0, 0, {0, 0}, 0, 0 }

typedef struct lumeq_scan_acquire {
    size_t size;
    const lumeq_feature* features;
    size_t feature_count;
    int32_t shortcut;          ///< enum lumeq_scan_shortcut
    int32_t shortcut_variance; ///< enum lumeq_scan_shortcut_variance
    int32_t item;              ///< enum lumeq_scan_item
    int32_t resolution;        ///< enum lumeq_scan_resolution
    int32_t color_mode;        ///< enum lumeq_scan_color_mode
    int32_t page_size;         ///< enum lumeq_scan_page_size
    int32_t source;            ///< enum lumeq_scan_source
    int32_t mime;              ///< enum lumeq_scan_mime
    int32_t pages;
    int32_t reserved;
} lumeq_scan_acquire;
#define LUMEQ_SCAN_ACQUIRE_INIT                                                                              \
    { sizeof(lumeq_scan_acquire), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 }

typedef struct lumeq_print_basic {
    size_t size;
    const wchar_t* paper_size; ///< Required.
    int32_t subsystem;         ///< enum lumeq_print_subsystem
    int32_t item;              ///< enum lumeq_print_item
    int32_t mime;              ///< enum lumeq_print_mime
    int32_t page_size;         ///< enum lumeq_print_page_size
    int32_t pages;
    int32_t reserved;
} lumeq_print_basic;
#define LUMEQ_PRINT_BASIC_INIT                                                                               \
    { sizeof(lumeq_print_basic), 0, 0, 0, 0, 0, 0, 0 }

typedef struct lumeq_file_send_to {
    size_t size;
    int32_t shortcut;          ///< enum lumeq_file_shortcut
    int32_t shortcut_variance; ///< enum lumeq_file_shortcut_variance
    int32_t mime;              ///< enum lumeq_file_mime
    int32_t destination;       ///< enum lumeq_file_destination
    int32_t pages;
    int32_t reserved;
} lumeq_file_send_to;
#define LUMEQ_FILE_SEND_TO_INIT                                                                              \
    { sizeof(lumeq_file_send_to), 0, 0, 0, 0, 0, 0 }

typedef struct lumeq_device_connect {
    size_t size;
    int32_t scenario; ///< enum lumeq_connection_scenario
    int32_t method;   ///< enum lumeq_connection_method
} lumeq_device_connect;
#define LUMEQ_DEVICE_CONNECT_INIT                                                                            \
    { sizeof(lumeq_device_connect), 0, 0 }

typedef struct lumeq_device_config {
    size_t size;
    int32_t setting; ///< enum lumeq_setting
    int32_t reserved;
} lumeq_device_config;
#define LUMEQ_DEVICE_CONFIG_INIT                                                                             \
    { sizeof(lumeq_device_config), 0, 0 }

typedef struct lumeq_software_install {
    size_t size;
    const wchar_t* name;    ///< Required.
    const wchar_t* version; ///< Required.
    int32_t installer;      ///< enum lumeq_installer
    int32_t reserved;
} lumeq_software_install;
#define LUMEQ_SOFTWARE_INSTALL_INIT                                                                          \
    { sizeof(lumeq_software_install), 0, 0, 0, 0 }

// The library itself. These work before any other call and choose nothing.

/// The LUMEQ_VERSION_NUMBER that the library was built with.
LUMEQ_C_API uint32_t lumeq_version(void);

/// Its LUMEQ_ABI_NUMBER.
LUMEQ_C_API uint32_t lumeq_abi(void);

/// Chooses how calls are made; only before the first call, and once. Returns 0, and changes nothing, if it
/// comes too late or `options` is null or has no size. Without it every call is made directly on its caller's
/// thread, as in LumeqApi.h.
///
/// With `use_worker_thread`, a call copies its arguments into a queue and returns; one thread of the
/// library's own makes the calls in order. lumeq_get_opt_in, lumeq_task_is_open and the two functions that
/// write texts wait for their turn. The time of an event is then the time at which the worker makes the call.
/// A full queue drops the newest event.
LUMEQ_C_API int32_t lumeq_configure(const lumeq_options* options);

/// How many calls were dropped before they reached the library proper: the queue was full, there was no
/// memory, or lumeq_shutdown ran out of time.
LUMEQ_C_API uint64_t lumeq_dropped_count(void);

/// Fills `state` as far as its size says, which the caller sets before each call. Returns 0, and changes
/// nothing, if it is null or has no size, or if the process ends.
///
/// Reads what the library reads, at the time of the call, and changes nothing: no setting, no log, no choice
/// of the road or of how calls are made. It waits for no other call and reads the settings file on a thread
/// of its own, so the caller's COM apartment does not matter. It takes some milliseconds; on a slow disk
/// longer.
///
/// The library reads the registry once in a process. `is_disabled` is what the registry says now, which
/// counts from the next process on. The settings file is that of the last subfolder that
/// lumeq_set_local_subfolder has passed on.
LUMEQ_C_API int32_t lumeq_get_state(lumeq_state* state);

// The session. The queue drops none of these calls.

/// Begins a run. `why` and `how`: enum lumeq_why, enum lumeq_how. Can take seconds, so a host with a user
/// interface wants the worker thread.
LUMEQ_C_API void lumeq_startup(const wchar_t* app_name, int32_t why, int32_t how, int32_t track_system_info,
                               int32_t track_print_queue_info);

/// Ends the run and any pause. With the worker thread it returns when all earlier calls are made, or after
/// `timeout_msec`; the events that still wait then are dropped and counted.
LUMEQ_C_API void lumeq_shutdown(int32_t timeout_msec);

/// Delivers what the companion library holds. Does not wait for the worker thread.
LUMEQ_C_API void lumeq_flush(int32_t timeout_msec);

LUMEQ_C_API void lumeq_pause(void);
LUMEQ_C_API void lumeq_resume(void);
LUMEQ_C_API void lumeq_set_opt_in(int32_t user_has_opted_in);
LUMEQ_C_API int32_t lumeq_get_opt_in(void);
LUMEQ_C_API void lumeq_set_local_subfolder(const wchar_t* subpath);
LUMEQ_C_API void lumeq_track_print_queue_info(void);
LUMEQ_C_API void lumeq_track_system_information(void);
LUMEQ_C_API void lumeq_set_global_context(const wchar_t* global_context);

// Events.

LUMEQ_C_API void lumeq_screen_displayed(const lumeq_screen* screen);
LUMEQ_C_API void lumeq_button_clicked(const lumeq_screen* screen, const wchar_t* control_name);
LUMEQ_C_API void lumeq_tile_clicked(const lumeq_screen* screen, const wchar_t* control_name);
LUMEQ_C_API void lumeq_hyperlink_clicked(const lumeq_screen* screen, const wchar_t* control_name);
LUMEQ_C_API void lumeq_checkbox_changed(const lumeq_screen* screen, const wchar_t* control_name,
                                        int32_t is_checked);

LUMEQ_C_API void lumeq_ad_displayed(const lumeq_screen* screen, const wchar_t* control_name,
                                    const lumeq_ad* ad);
LUMEQ_C_API void lumeq_ad_clicked(const lumeq_screen* screen, const wchar_t* control_name,
                                  const lumeq_ad* ad);
LUMEQ_C_API void lumeq_ad_closed(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad);

LUMEQ_C_API void lumeq_url_launched(const wchar_t* url, const lumeq_dictionary* local_context,
                                    const wchar_t* global_context);
LUMEQ_C_API void lumeq_form_submitted(const lumeq_form* form);
LUMEQ_C_API void lumeq_report_generated(const lumeq_form* report);

/// Reports `count` printers. Each dictionary must hold `dev_biid`: "unknown" or what lumeq_get_biid writes.
LUMEQ_C_API void lumeq_track_discovered_printers(const lumeq_dictionary* devices, size_t count);

// Tasks. Begin returns the new task, or zero on any failure; with the worker thread it returns at once, and
// completing a task whose beginning failed is logged. Complete ends the task unless it is refused; then the
// task stays open and the call may be made again. Completing zero or an ended task is logged.

LUMEQ_C_API lumeq_task lumeq_scan_acquire_begin(const lumeq_dictionary* local_context,
                                                const wchar_t* global_context);
LUMEQ_C_API void lumeq_scan_acquire_complete(lumeq_task task, const wchar_t* result,
                                             const lumeq_scan_acquire* details);
LUMEQ_C_API lumeq_task lumeq_print_basic_begin(const lumeq_dictionary* local_context,
                                               const wchar_t* global_context);
LUMEQ_C_API void lumeq_print_basic_complete(lumeq_task task, const wchar_t* result,
                                            const lumeq_print_basic* details);
LUMEQ_C_API lumeq_task lumeq_file_send_to_begin(const lumeq_dictionary* local_context,
                                                const wchar_t* global_context);
LUMEQ_C_API void lumeq_file_send_to_complete(lumeq_task task, const wchar_t* result,
                                             const lumeq_file_send_to* details);
LUMEQ_C_API lumeq_task lumeq_device_connect_begin(const lumeq_dictionary* local_context,
                                                  const wchar_t* global_context);
LUMEQ_C_API void lumeq_device_connect_complete(lumeq_task task, const wchar_t* result,
                                               const lumeq_device_connect* details);
LUMEQ_C_API lumeq_task lumeq_device_config_begin(const lumeq_dictionary* local_context,
                                                 const wchar_t* global_context);
LUMEQ_C_API void lumeq_device_config_complete(lumeq_task task, const wchar_t* result,
                                              const lumeq_device_config* details);
LUMEQ_C_API lumeq_task lumeq_software_install_begin(const lumeq_dictionary* local_context,
                                                    const wchar_t* global_context);
LUMEQ_C_API void lumeq_software_install_complete(lumeq_task task, const wchar_t* result,
                                                 const lumeq_software_install* details);

/// Completes a task of any kind as "unknown" if it is still open, with every detail unknown. Does nothing,
/// and logs nothing, if it is not. The queue never drops it.
LUMEQ_C_API void lumeq_task_abandon(lumeq_task task);

/// Whether the task still has to be completed.
LUMEQ_C_API int32_t lumeq_task_is_open(lumeq_task task);

// Texts. Each writes a text and its NUL into a buffer of `size` characters and returns the characters needed,
// the NUL included. A buffer that is too small gets an empty text. Returns zero, with an empty text, on
// failure. `buffer` may be null where `size` is zero.

/// The identifier of the device with this UUID, in ASCII or UTF-8. The UUID is used as it is spelled.
LUMEQ_C_API size_t lumeq_get_biid(const char* device_uuid, wchar_t* buffer, size_t size);

/// The text of an enum lumeq_connection_method; a value outside it has one too.
LUMEQ_C_API size_t lumeq_connection_method_text(int32_t method, wchar_t* buffer, size_t size);

#if defined(__cplusplus)
}
#endif

#endif
