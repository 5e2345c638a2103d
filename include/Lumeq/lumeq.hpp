// Lumeq for C++17 hosts of any compiler: types and scopes over lumeq.h, compiled into the host.
//
// No standard-library type crosses to the library, so a host may use any standard library and any of its
// modes. Texts that the library refuses are logged there, as lumeq.h says; nothing here checks them. Building
// a call may throw std::bad_alloc; nothing else throws, and no destructor does.
#pragma once

#include <Lumeq/lumeq_table.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumeq {

namespace detail {

/// The functions that all below calls. With LUMEQ_USE_LOADER, which must be the same in all files of a host,
/// they do nothing until `use` sets others; without it they are those of the import library.
inline lumeq_table& table() noexcept {
    static lumeq_table its = [] {
        lumeq_table first;
#if defined(LUMEQ_USE_LOADER)
        lumeq_table_set_no_ops(&first);
#else
        lumeq_table_set_linked(&first);
#endif
        return first;
    }();
    return its;
}

inline const lumeq_table& calls() noexcept { return table(); }

} // namespace detail

/// Makes all calls from now on through the functions of `table`, as lumeq_loader.h fills it. Not beside a
/// call.
inline void use(const lumeq_table& table) noexcept { detail::table() = table; }

// The vocabulary.

enum class ad_type : std::int32_t {
    unknown = LUMEQ_AD_UNKNOWN,
    banner = LUMEQ_AD_BANNER,
    hyperlink = LUMEQ_AD_HYPERLINK,
    tile = LUMEQ_AD_TILE,
    virtualalert = LUMEQ_AD_VIRTUALALERT,
};

enum class setting : std::int32_t {
    unknown = LUMEQ_SETTING_UNKNOWN,
    pbut_consent_enable = LUMEQ_SETTING_PBUT_CONSENT_ENABLE,
    webservices_registration = LUMEQ_SETTING_WEBSERVICES_REGISTRATION,
};

enum class connection_method : std::int32_t {
    unknown = LUMEQ_CONNECTION_METHOD_UNKNOWN,
    already_on_network = LUMEQ_CONNECTION_METHOD_ALREADY_ON_NETWORK,
    auto_wireless_connect = LUMEQ_CONNECTION_METHOD_AUTO_WIRELESS_CONNECT,
    ethernet = LUMEQ_CONNECTION_METHOD_ETHERNET,
    frontpanel_setup_of_wireless = LUMEQ_CONNECTION_METHOD_FRONTPANEL_SETUP_OF_WIRELESS,
    later = LUMEQ_CONNECTION_METHOD_LATER,
    press_wireless_button = LUMEQ_CONNECTION_METHOD_PRESS_WIRELESS_BUTTON,
    usb = LUMEQ_CONNECTION_METHOD_USB,
    usb_plus_wifi = LUMEQ_CONNECTION_METHOD_USB_PLUS_WIFI,
    usb_setup_of_wireless = LUMEQ_CONNECTION_METHOD_USB_SETUP_OF_WIRELESS,
    usb_to_wifi = LUMEQ_CONNECTION_METHOD_USB_TO_WIFI,
    wifi_direct = LUMEQ_CONNECTION_METHOD_WIFI_DIRECT,
};

enum class connection_scenario : std::int32_t {
    unknown = LUMEQ_CONNECTION_SCENARIO_UNKNOWN,
    add = LUMEQ_CONNECTION_SCENARIO_ADD,
    connect = LUMEQ_CONNECTION_SCENARIO_CONNECT,
    convert = LUMEQ_CONNECTION_SCENARIO_CONVERT,
    reconfigure = LUMEQ_CONNECTION_SCENARIO_RECONFIGURE,
};

enum class how : std::int32_t {
    unknown = LUMEQ_HOW_UNKNOWN,
    cd_exe = LUMEQ_HOW_CD_EXE,
    desktop_shortcut = LUMEQ_HOW_DESKTOP_SHORTCUT,
    desktop_toast = LUMEQ_HOW_DESKTOP_TOAST,
    dxp_link = LUMEQ_HOW_DXP_LINK,
    folder_exe = LUMEQ_HOW_FOLDER_EXE,
    pnp_inf = LUMEQ_HOW_PNP_INF,
    smv_link = LUMEQ_HOW_SMV_LINK,
    startmenu_shortcut = LUMEQ_HOW_STARTMENU_SHORTCUT,
    udc_tile = LUMEQ_HOW_UDC_TILE,
};

enum class installer : std::int32_t {
    unknown = LUMEQ_INSTALLER_UNKNOWN,
    exe = LUMEQ_INSTALLER_EXE,
    msi = LUMEQ_INSTALLER_MSI,
};

enum class why : std::int32_t {
    unknown = LUMEQ_WHY_UNKNOWN,
    add_device = LUMEQ_WHY_ADD_DEVICE,
    add_software = LUMEQ_WHY_ADD_SOFTWARE,
    reconfigure_device = LUMEQ_WHY_RECONFIGURE_DEVICE,
    start_app = LUMEQ_WHY_START_APP,
    view_device = LUMEQ_WHY_VIEW_DEVICE,
    view_device_error = LUMEQ_WHY_VIEW_DEVICE_ERROR,
    view_device_supplies = LUMEQ_WHY_VIEW_DEVICE_SUPPLIES,
};

enum class file_destination : std::int32_t {
    unknown = LUMEQ_FILE_DESTINATION_UNKNOWN,
    cloud_box = LUMEQ_FILE_DESTINATION_CLOUD_BOX,
    cloud_dropbox = LUMEQ_FILE_DESTINATION_CLOUD_DROPBOX,
    cloud_googledrive = LUMEQ_FILE_DESTINATION_CLOUD_GOOGLEDRIVE,
    cloud_onedrive = LUMEQ_FILE_DESTINATION_CLOUD_ONEDRIVE,
    email_mapi = LUMEQ_FILE_DESTINATION_EMAIL_MAPI,
    email_smtp = LUMEQ_FILE_DESTINATION_EMAIL_SMTP,
    folder = LUMEQ_FILE_DESTINATION_FOLDER,
};

enum class file_mime : std::int32_t {
    unknown = LUMEQ_FILE_MIME_UNKNOWN,
    application_pdf = LUMEQ_FILE_MIME_APPLICATION_PDF,
    application_pdfsearchable = LUMEQ_FILE_MIME_APPLICATION_PDFSEARCHABLE,
    image_jpg = LUMEQ_FILE_MIME_IMAGE_JPG,
    image_bmp = LUMEQ_FILE_MIME_IMAGE_BMP,
    image_tiff = LUMEQ_FILE_MIME_IMAGE_TIFF,
    image_png = LUMEQ_FILE_MIME_IMAGE_PNG,
    application_rtf = LUMEQ_FILE_MIME_APPLICATION_RTF,
    text_unicode = LUMEQ_FILE_MIME_TEXT_UNICODE,
    text_ansi = LUMEQ_FILE_MIME_TEXT_ANSI,
    text_utf8 = LUMEQ_FILE_MIME_TEXT_UTF8,
};

enum class file_shortcut : std::int32_t {
    unknown = LUMEQ_FILE_SHORTCUT_UNKNOWN,
    email_jpg = LUMEQ_FILE_SHORTCUT_EMAIL_JPG,
    email_pdf = LUMEQ_FILE_SHORTCUT_EMAIL_PDF,
    every_day_scan = LUMEQ_FILE_SHORTCUT_EVERY_DAY_SCAN,
    save_jpg = LUMEQ_FILE_SHORTCUT_SAVE_JPG,
    save_pdf = LUMEQ_FILE_SHORTCUT_SAVE_PDF,
    save_text = LUMEQ_FILE_SHORTCUT_SAVE_TEXT,
    send_cloud = LUMEQ_FILE_SHORTCUT_SEND_CLOUD,
    user = LUMEQ_FILE_SHORTCUT_USER,
};

enum class file_shortcut_variance : std::int32_t {
    unknown = LUMEQ_FILE_SHORTCUT_VARIANCE_UNKNOWN,
    modified = LUMEQ_FILE_SHORTCUT_VARIANCE_MODIFIED,
    modified_one_off = LUMEQ_FILE_SHORTCUT_VARIANCE_MODIFIED_ONE_OFF,
    original = LUMEQ_FILE_SHORTCUT_VARIANCE_ORIGINAL,
    original_one_off = LUMEQ_FILE_SHORTCUT_VARIANCE_ORIGINAL_ONE_OFF,
    user = LUMEQ_FILE_SHORTCUT_VARIANCE_USER,
    user_one_off = LUMEQ_FILE_SHORTCUT_VARIANCE_USER_ONE_OFF,
};

enum class scan_color_mode : std::int32_t {
    unknown = LUMEQ_SCAN_COLOR_MODE_UNKNOWN,
    auto_ = LUMEQ_SCAN_COLOR_MODE_AUTO,
    blackwhite = LUMEQ_SCAN_COLOR_MODE_BLACKWHITE,
    color = LUMEQ_SCAN_COLOR_MODE_COLOR,
    gray = LUMEQ_SCAN_COLOR_MODE_GRAY,
    halftone = LUMEQ_SCAN_COLOR_MODE_HALFTONE,
};

enum class scan_item : std::int32_t {
    unknown = LUMEQ_SCAN_ITEM_UNKNOWN,
    document = LUMEQ_SCAN_ITEM_DOCUMENT,
    photo = LUMEQ_SCAN_ITEM_PHOTO,
};

enum class scan_mime : std::int32_t {
    unknown = LUMEQ_SCAN_MIME_UNKNOWN,
    application_pdf = LUMEQ_SCAN_MIME_APPLICATION_PDF,
    application_pdfsearchable = LUMEQ_SCAN_MIME_APPLICATION_PDFSEARCHABLE,
    application_rtf = LUMEQ_SCAN_MIME_APPLICATION_RTF,
    image_bmp = LUMEQ_SCAN_MIME_IMAGE_BMP,
    image_jpg = LUMEQ_SCAN_MIME_IMAGE_JPG,
    image_png = LUMEQ_SCAN_MIME_IMAGE_PNG,
    image_tiff = LUMEQ_SCAN_MIME_IMAGE_TIFF,
    text_ansi = LUMEQ_SCAN_MIME_TEXT_ANSI,
    text_unicode = LUMEQ_SCAN_MIME_TEXT_UNICODE,
    text_utf8 = LUMEQ_SCAN_MIME_TEXT_UTF8,
};

enum class scan_page_size : std::int32_t {
    unknown = LUMEQ_SCAN_PAGE_SIZE_UNKNOWN,
    a4 = LUMEQ_SCAN_PAGE_SIZE_A4,
    auto_ = LUMEQ_SCAN_PAGE_SIZE_AUTO,
    custom = LUMEQ_SCAN_PAGE_SIZE_CUSTOM,
    entirearea = LUMEQ_SCAN_PAGE_SIZE_ENTIREAREA,
    extralong = LUMEQ_SCAN_PAGE_SIZE_EXTRALONG,
    legal = LUMEQ_SCAN_PAGE_SIZE_LEGAL,
    letter = LUMEQ_SCAN_PAGE_SIZE_LETTER,
    long_ = LUMEQ_SCAN_PAGE_SIZE_LONG,
    size_4x6 = LUMEQ_SCAN_PAGE_SIZE_SIZE_4X6,
    size_5x7 = LUMEQ_SCAN_PAGE_SIZE_SIZE_5X7,
    size_8x10 = LUMEQ_SCAN_PAGE_SIZE_SIZE_8X10,
    snap = LUMEQ_SCAN_PAGE_SIZE_SNAP,
};

enum class scan_resolution : std::int32_t {
    unknown = LUMEQ_SCAN_RESOLUTION_UNKNOWN,
    dpi_75 = LUMEQ_SCAN_RESOLUTION_DPI_75,
    dpi_100 = LUMEQ_SCAN_RESOLUTION_DPI_100,
    dpi_200 = LUMEQ_SCAN_RESOLUTION_DPI_200,
    dpi_240 = LUMEQ_SCAN_RESOLUTION_DPI_240,
    dpi_300 = LUMEQ_SCAN_RESOLUTION_DPI_300,
    dpi_400 = LUMEQ_SCAN_RESOLUTION_DPI_400,
    dpi_500 = LUMEQ_SCAN_RESOLUTION_DPI_500,
    dpi_600 = LUMEQ_SCAN_RESOLUTION_DPI_600,
    dpi_1200 = LUMEQ_SCAN_RESOLUTION_DPI_1200,
    dpi_2400 = LUMEQ_SCAN_RESOLUTION_DPI_2400,
    dpi_4800 = LUMEQ_SCAN_RESOLUTION_DPI_4800,
};

enum class scan_shortcut : std::int32_t {
    unknown = LUMEQ_SCAN_SHORTCUT_UNKNOWN,
    email_jpg = LUMEQ_SCAN_SHORTCUT_EMAIL_JPG,
    email_pdf = LUMEQ_SCAN_SHORTCUT_EMAIL_PDF,
    every_day_scan = LUMEQ_SCAN_SHORTCUT_EVERY_DAY_SCAN,
    save_jpg = LUMEQ_SCAN_SHORTCUT_SAVE_JPG,
    save_pdf = LUMEQ_SCAN_SHORTCUT_SAVE_PDF,
    save_text = LUMEQ_SCAN_SHORTCUT_SAVE_TEXT,
    send_cloud = LUMEQ_SCAN_SHORTCUT_SEND_CLOUD,
    user = LUMEQ_SCAN_SHORTCUT_USER,
};

enum class scan_shortcut_variance : std::int32_t {
    unknown = LUMEQ_SCAN_SHORTCUT_VARIANCE_UNKNOWN,
    modified = LUMEQ_SCAN_SHORTCUT_VARIANCE_MODIFIED,
    modified_one_off = LUMEQ_SCAN_SHORTCUT_VARIANCE_MODIFIED_ONE_OFF,
    original = LUMEQ_SCAN_SHORTCUT_VARIANCE_ORIGINAL,
    original_one_off = LUMEQ_SCAN_SHORTCUT_VARIANCE_ORIGINAL_ONE_OFF,
    user = LUMEQ_SCAN_SHORTCUT_VARIANCE_USER,
    user_one_off = LUMEQ_SCAN_SHORTCUT_VARIANCE_USER_ONE_OFF,
};

enum class scan_source : std::int32_t {
    unknown = LUMEQ_SCAN_SOURCE_UNKNOWN,
    adf_duplex_book = LUMEQ_SCAN_SOURCE_ADF_DUPLEX_BOOK,
    adf_duplex_tablet = LUMEQ_SCAN_SOURCE_ADF_DUPLEX_TABLET,
    adf_simplex = LUMEQ_SCAN_SOURCE_ADF_SIMPLEX,
    flatbed = LUMEQ_SCAN_SOURCE_FLATBED,
};

enum class print_item : std::int32_t {
    unknown = LUMEQ_PRINT_ITEM_UNKNOWN,
    document = LUMEQ_PRINT_ITEM_DOCUMENT,
    photo_multi = LUMEQ_PRINT_ITEM_PHOTO_MULTI,
    photo_single = LUMEQ_PRINT_ITEM_PHOTO_SINGLE,
};

enum class print_mime : std::int32_t {
    unknown = LUMEQ_PRINT_MIME_UNKNOWN,
    application_pdf = LUMEQ_PRINT_MIME_APPLICATION_PDF,
    image_any = LUMEQ_PRINT_MIME_IMAGE_ANY,
};

enum class print_page_size : std::int32_t {
    unknown = LUMEQ_PRINT_PAGE_SIZE_UNKNOWN,
    full = LUMEQ_PRINT_PAGE_SIZE_FULL,
    size_3p5x5 = LUMEQ_PRINT_PAGE_SIZE_SIZE_3P5X5,
    size_4x6 = LUMEQ_PRINT_PAGE_SIZE_SIZE_4X6,
    size_5x7 = LUMEQ_PRINT_PAGE_SIZE_SIZE_5X7,
    size_8x10 = LUMEQ_PRINT_PAGE_SIZE_SIZE_8X10,
    size_9x13_cm = LUMEQ_PRINT_PAGE_SIZE_SIZE_9X13_CM,
    size_10x15_cm = LUMEQ_PRINT_PAGE_SIZE_SIZE_10X15_CM,
    size_13x18_cm = LUMEQ_PRINT_PAGE_SIZE_SIZE_13X18_CM,
};

enum class print_subsystem : std::int32_t {
    unknown = LUMEQ_PRINT_SUBSYSTEM_UNKNOWN,
    ipp = LUMEQ_PRINT_SUBSYSTEM_IPP,
    native = LUMEQ_PRINT_SUBSYSTEM_NATIVE,
};

enum class choice : std::int32_t {
    unknown = LUMEQ_CHOICE_UNKNOWN,
    unset = LUMEQ_CHOICE_UNSET,
    no = LUMEQ_CHOICE_NO,
    yes = LUMEQ_CHOICE_YES,
};

enum class road : std::int32_t {
    unknown = LUMEQ_ROAD_UNKNOWN,
    managed = LUMEQ_ROAD_MANAGED,
    basic = LUMEQ_ROAD_BASIC,
};

/// Free-form fields of an event, a form or a device: {{L"paper", L"a4"}, {L"copies", L"2"}}.
class fields {
public:
    fields() = default;
    fields(std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> list) {
        for (const auto& [name, value] : list)
            add(name, value);
    }

    fields& add(std::wstring name, std::wstring value) {
        _entries.emplace_back(std::move(name), std::move(value));
        return *this;
    }
    bool empty() const noexcept { return _entries.empty(); }

private:
    friend class borrowed_fields;

    std::vector<std::pair<std::wstring, std::wstring>> _entries;
};

/// Fields as lumeq.h takes them, for the time of a call.
class borrowed_fields {
public:
    explicit borrowed_fields(const fields& from) {
        lumeq_field* list = _few;
        if (from._entries.size() > std::size(_few)) {
            _many.resize(from._entries.size());
            list = _many.data();
        }
        _dictionary = {list, from._entries.size()};
        for (const auto& [name, value] : from._entries)
            *list++ = {name.c_str(), value.c_str()};
    }
    borrowed_fields(const borrowed_fields&) = delete;
    borrowed_fields& operator=(const borrowed_fields&) = delete;

    lumeq_dictionary dictionary() const noexcept { return _dictionary; }
    /// Null for no fields.
    const lumeq_dictionary* local() const noexcept { return _dictionary.count == 0 ? nullptr : &_dictionary; }

private:
    lumeq_field _few[8]; // saves most events an allocation
    std::vector<lumeq_field> _many;
    lumeq_dictionary _dictionary{};
};

/// The device model that an event refers to instead of that of set_model.
struct model {
    explicit model(std::wstring name) : name(std::move(name)) {}

    std::wstring name;
};

/// The flow that a screen is part of.
struct flow {
    explicit flow(std::wstring name) : name(std::move(name)) {}

    std::wstring name;
};

namespace detail {

template <class Enumeration>
constexpr std::int32_t number(Enumeration value) noexcept {
    return static_cast<std::int32_t>(value);
}

inline const wchar_t* text_or_null(const std::optional<std::wstring>& text) noexcept {
    return text ? text->c_str() : nullptr;
}

inline const wchar_t* text_or_null(const std::optional<model>& its_model) noexcept {
    return its_model ? its_model->name.c_str() : nullptr;
}

/// Returns the text that `write` stores. Tries 128 characters first, because each call is logged and today's
/// texts fit.
template <class Write>
std::wstring written(Write write) {
    std::wstring text(128, L'\0');
    std::size_t needed = write(&text[0], text.size());
    if (needed > text.size()) {
        text.resize(needed);
        needed = write(&text[0], text.size());
    }
    text.resize(needed == 0 ? 0 : needed - 1);
    return text;
}

/// Whether an object is still to do something at its end: not if it was moved from.
class ownership {
public:
    ownership() = default;
    ownership(ownership&& other) noexcept : _is_owner(std::exchange(other._is_owner, false)) {}
    ownership& operator=(ownership&&) = delete;

    explicit operator bool() const noexcept { return _is_owner; }
    void drop() noexcept { _is_owner = false; }

private:
    bool _is_owner = true;
};

/// Where the user was.
struct place {
    std::optional<std::wstring> flow;
    std::optional<std::wstring> path;
    std::wstring name;
    std::optional<std::wstring> mode;
    std::optional<lumeq::model> model;
    fields local;

    /// Calls `function` with a lumeq_screen that is valid for the call.
    template <class Function>
    void pass(Function function) const {
        const borrowed_fields its_fields(local);
        lumeq_screen screen = LUMEQ_SCREEN_INIT;
        screen.flow = text_or_null(flow);
        screen.screen_path = text_or_null(path);
        screen.screen_name = name.c_str();
        screen.mode = text_or_null(mode);
        screen.local_context = its_fields.local();
        screen.global_context = text_or_null(model);
        function(&screen);
    }
};

/// What a control of any kind is built with.
template <class Control>
class control {
public:
    control(place where, std::wstring name) : _where(std::move(where)), _name(std::move(name)) {}

    Control& with(std::wstring name, std::wstring value) {
        _where.local.add(std::move(name), std::move(value));
        return static_cast<Control&>(*this);
    }
    Control& of(model its_model) {
        _where.model = std::move(its_model);
        return static_cast<Control&>(*this);
    }

protected:
    place _where;
    std::wstring _name;
};

using click = void(const lumeq_screen*, const wchar_t*);

} // namespace detail

/// A button, a tile or a hyperlink.
class clickable : public detail::control<clickable> {
public:
    clickable(detail::place where, std::wstring name, detail::click* function)
        : control(std::move(where), std::move(name)), _function(function) {}

    void clicked() const {
        _where.pass([this](const lumeq_screen* screen) { _function(screen, _name.c_str()); });
    }

private:
    detail::click* _function;
};

class checkbox : public detail::control<checkbox> {
public:
    using control::control;

    void changed(bool is_checked) const {
        _where.pass([&](const lumeq_screen* screen) {
            detail::calls().checkbox_changed(screen, _name.c_str(), is_checked);
        });
    }
};

class ad : public detail::control<ad> {
public:
    ad(detail::place where, std::wstring name, ad_type type)
        : control(std::move(where), std::move(name)), _type(type) {}

    ad& product(std::wstring text) { return set(_product, std::move(text)); }
    ad& name(std::wstring text) { return set(_ad_name, std::move(text)); }
    ad& variant(std::wstring text) { return set(_variant, std::move(text)); }

    void displayed() const { pass(detail::calls().ad_displayed); }
    void clicked() const { pass(detail::calls().ad_clicked); }
    void closed() const { pass(detail::calls().ad_closed); }

private:
    ad& set(std::wstring& field, std::wstring text) {
        field = std::move(text);
        return *this;
    }

    void pass(void (*function)(const lumeq_screen*, const wchar_t*, const lumeq_ad*)) const {
        lumeq_ad its = LUMEQ_AD_INIT;
        its.product = _product.c_str();
        its.name = _ad_name.c_str();
        its.variant = _variant.c_str();
        its.type = detail::number(_type);
        _where.pass([&](const lumeq_screen* screen) { function(screen, _name.c_str(), &its); });
    }

    ad_type _type;
    std::wstring _product;
    std::wstring _ad_name;
    std::wstring _variant;
};

/// A screen, and what is on it. A control copies the screen as it is when the control is made.
class screen {
public:
    explicit screen(std::wstring name) { _where.name = std::move(name); }
    screen(std::wstring name, flow its_flow) : screen(std::move(name)) {
        _where.flow = std::move(its_flow.name);
    }

    screen& path(std::wstring text) {
        _where.path = std::move(text);
        return *this;
    }
    screen& mode(std::wstring text) {
        _where.mode = std::move(text);
        return *this;
    }
    screen& of(model its_model) {
        _where.model = std::move(its_model);
        return *this;
    }
    screen& with(std::wstring name, std::wstring value) {
        _where.local.add(std::move(name), std::move(value));
        return *this;
    }

    void shown() const { _where.pass(detail::calls().screen_displayed); }

    clickable button(std::wstring name) const {
        return {_where, std::move(name), detail::calls().button_clicked};
    }
    clickable tile(std::wstring name) const {
        return {_where, std::move(name), detail::calls().tile_clicked};
    }
    clickable hyperlink(std::wstring name) const {
        return {_where, std::move(name), detail::calls().hyperlink_clicked};
    }
    lumeq::checkbox checkbox(std::wstring name) const { return {_where, std::move(name)}; }
    lumeq::ad ad(std::wstring control_name, ad_type type) const {
        return {_where, std::move(control_name), type};
    }

private:
    detail::place _where;
};

/// What may be reported at a start.
struct tracking {
    bool system_info = false;
    bool print_queue_info = false;
};

/// A run of the application: begins with the object and ends with it.
class session {
public:
    session(const std::wstring& app_name, why its_why, how its_how, tracking what = {},
            std::int32_t timeout_msec = 10000) noexcept
        : _timeout_msec(timeout_msec) {
        detail::calls().startup(app_name.c_str(), detail::number(its_why), detail::number(its_how),
                                what.system_info, what.print_queue_info);
    }
    session(session&&) noexcept = default;
    session& operator=(session&&) = delete;
    ~session() {
        if (_ownership)
            detail::calls().shutdown(_timeout_msec);
    }

private:
    detail::ownership _ownership;
    std::int32_t _timeout_msec;
};

/// The user is opted out as long as it lives.
class pause {
public:
    pause() noexcept { detail::calls().pause(); }
    pause(pause&&) noexcept = default;
    pause& operator=(pause&&) = delete;
    ~pause() {
        if (_ownership)
            detail::calls().resume();
    }

private:
    detail::ownership _ownership;
};

struct feature {
    std::wstring name;
    bool is_on = false;
};

// What a task is completed with. Each passes itself to the function of lumeq.h that completes its kind.

struct scan_details {
    scan_shortcut shortcut{};
    scan_shortcut_variance shortcut_variance{};
    scan_item item{};
    scan_resolution resolution{};
    scan_color_mode color_mode{};
    scan_page_size page_size{};
    scan_source source{};
    scan_mime mime{};
    std::vector<feature> features;
    std::int32_t pages = 0;

    void complete(lumeq_task task, const wchar_t* result) const {
        std::vector<lumeq_feature> list;
        for (const feature& its : features)
            list.push_back({its.name.c_str(), its.is_on, 0});
        lumeq_scan_acquire details = LUMEQ_SCAN_ACQUIRE_INIT;
        details.features = list.data();
        details.feature_count = list.size();
        details.shortcut = detail::number(shortcut);
        details.shortcut_variance = detail::number(shortcut_variance);
        details.item = detail::number(item);
        details.resolution = detail::number(resolution);
        details.color_mode = detail::number(color_mode);
        details.page_size = detail::number(page_size);
        details.source = detail::number(source);
        details.mime = detail::number(mime);
        details.pages = pages;
        detail::calls().scan_acquire_complete(task, result, &details);
    }
};

struct print_details {
    print_subsystem subsystem{};
    print_item item{};
    print_mime mime{};
    print_page_size page_size{};
    std::wstring paper_size;
    std::int32_t pages = 0;

    void complete(lumeq_task task, const wchar_t* result) const {
        lumeq_print_basic details = LUMEQ_PRINT_BASIC_INIT;
        details.paper_size = paper_size.c_str();
        details.subsystem = detail::number(subsystem);
        details.item = detail::number(item);
        details.mime = detail::number(mime);
        details.page_size = detail::number(page_size);
        details.pages = pages;
        detail::calls().print_basic_complete(task, result, &details);
    }
};

struct send_details {
    file_shortcut shortcut{};
    file_shortcut_variance shortcut_variance{};
    file_mime mime{};
    file_destination destination{};
    std::int32_t pages = 0;

    void complete(lumeq_task task, const wchar_t* result) const {
        lumeq_file_send_to details = LUMEQ_FILE_SEND_TO_INIT;
        details.shortcut = detail::number(shortcut);
        details.shortcut_variance = detail::number(shortcut_variance);
        details.mime = detail::number(mime);
        details.destination = detail::number(destination);
        details.pages = pages;
        detail::calls().file_send_to_complete(task, result, &details);
    }
};

struct connection_details {
    connection_scenario scenario{};
    connection_method method{};

    void complete(lumeq_task task, const wchar_t* result) const {
        lumeq_device_connect details = LUMEQ_DEVICE_CONNECT_INIT;
        details.scenario = detail::number(scenario);
        details.method = detail::number(method);
        detail::calls().device_connect_complete(task, result, &details);
    }
};

struct configuration_details {
    lumeq::setting setting{};

    void complete(lumeq_task task, const wchar_t* result) const {
        lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
        details.setting = detail::number(setting);
        detail::calls().device_config_complete(task, result, &details);
    }
};

struct installation_details {
    lumeq::installer installer{};
    std::wstring name;
    std::wstring version;

    void complete(lumeq_task task, const wchar_t* result) const {
        lumeq_software_install details = LUMEQ_SOFTWARE_INSTALL_INIT;
        details.name = name.c_str();
        details.version = version.c_str();
        details.installer = detail::number(installer);
        detail::calls().software_install_complete(task, result, &details);
    }
};

/// An open task. One that is refused stays open and may be completed again. One that is still open at the end
/// of its scope is completed as "unknown".
template <class Details>
class task {
public:
    static task begin(const fields& local = {}, const std::optional<model>& its_model = {}) {
        return task(begin_number(static_cast<const Details*>(nullptr), borrowed_fields(local),
                                 detail::text_or_null(its_model)));
    }

    task(task&& other) noexcept : _number(std::exchange(other._number, 0)) {}
    task& operator=(task&& other) noexcept {
        if (this != &other) {
            abandon();
            _number = std::exchange(other._number, 0);
        }
        return *this;
    }
    ~task() { abandon(); }

    /// Does nothing for an object that was moved from.
    void complete(const std::wstring& result, const Details& details = {}) const {
        if (_number != 0)
            details.complete(_number, result.c_str());
    }
    /// With the worker thread this waits for its turn.
    bool is_open() const noexcept { return _number != 0 && detail::calls().task_is_open(_number) != 0; }

private:
    explicit task(lumeq_task number) noexcept : _number(number) {}

    void abandon() noexcept {
        if (_number != 0)
            detail::calls().task_abandon(std::exchange(_number, 0));
    }

    static lumeq_task begin_number(const scan_details*, const borrowed_fields& local,
                                   const wchar_t* its_model) {
        return detail::calls().scan_acquire_begin(local.local(), its_model);
    }
    static lumeq_task begin_number(const print_details*, const borrowed_fields& local,
                                   const wchar_t* its_model) {
        return detail::calls().print_basic_begin(local.local(), its_model);
    }
    static lumeq_task begin_number(const send_details*, const borrowed_fields& local,
                                   const wchar_t* its_model) {
        return detail::calls().file_send_to_begin(local.local(), its_model);
    }
    static lumeq_task begin_number(const connection_details*, const borrowed_fields& local,
                                   const wchar_t* its_model) {
        return detail::calls().device_connect_begin(local.local(), its_model);
    }
    static lumeq_task begin_number(const configuration_details*, const borrowed_fields& local,
                                   const wchar_t* its_model) {
        return detail::calls().device_config_begin(local.local(), its_model);
    }
    static lumeq_task begin_number(const installation_details*, const borrowed_fields& local,
                                   const wchar_t* its_model) {
        return detail::calls().software_install_begin(local.local(), its_model);
    }

    lumeq_task _number;
};

using scan_task = task<scan_details>;
using print_task = task<print_details>;
using send_task = task<send_details>;
using connection_task = task<connection_details>;
using configuration_task = task<configuration_details>;
using installation_task = task<installation_details>;

/// A form or a report.
struct form {
    std::wstring org_name;
    std::wstring code_name;
    std::wstring name;
    std::wstring version;
    fields details;
    fields local;
    std::optional<lumeq::model> model;

    void submitted() const { pass(detail::calls().form_submitted); }
    void generated() const { pass(detail::calls().report_generated); }

private:
    void pass(void (*function)(const lumeq_form*)) const {
        const borrowed_fields its_details(details);
        const borrowed_fields its_local(local);
        lumeq_form its = LUMEQ_FORM_INIT;
        its.org_name = org_name.c_str();
        its.code_name = code_name.c_str();
        its.name = name.c_str();
        its.version = version.c_str();
        its.details = its_details.dictionary();
        its.local_context = its_local.local();
        its.global_context = detail::text_or_null(model);
        function(&its);
    }
};

/// As lumeq_configure: before all other calls. False if it comes too late. `queue_capacity` zero: the
/// default.
inline bool use_worker_thread(std::int32_t queue_capacity = 0) noexcept {
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    options.use_worker_thread = 1;
    options.queue_capacity = queue_capacity;
    return detail::calls().configure(&options) != 0;
}

inline std::uint64_t dropped_count() noexcept { return detail::calls().dropped_count(); }
/// lumeq_state.
struct telemetry_state {
    std::uint64_t dropped_count;
    bool is_disabled;
    lumeq::choice choice;
    bool is_paused;
    lumeq::road road;
    bool uses_worker_thread;
    std::int32_t queued_calls;
};
/// As lumeq_get_state; everything unknown or zero without the library.
inline telemetry_state state() noexcept {
    lumeq_state its = LUMEQ_STATE_INIT;
    detail::calls().get_state(&its);
    return {its.dropped_count,  its.is_disabled != 0,        static_cast<choice>(its.choice),
            its.is_paused != 0, static_cast<road>(its.road), its.uses_worker_thread != 0,
            its.queued_calls};
}
inline void flush(std::int32_t timeout_msec) noexcept { detail::calls().flush(timeout_msec); }
inline void set_opt_in(bool user_has_opted_in) noexcept { detail::calls().set_opt_in(user_has_opted_in); }
inline bool opt_in() noexcept { return detail::calls().get_opt_in() != 0; }
inline void set_local_subfolder(const std::wstring& subpath) noexcept {
    detail::calls().set_local_subfolder(subpath.c_str());
}
inline void track_print_queue_info() noexcept { detail::calls().track_print_queue_info(); }
inline void track_system_information() noexcept { detail::calls().track_system_information(); }
inline void set_model(const model& its_model) noexcept {
    detail::calls().set_global_context(its_model.name.c_str());
}

inline void url_launched(const std::wstring& url, const fields& local = {},
                         const std::optional<model>& its_model = {}) {
    detail::calls().url_launched(url.c_str(), borrowed_fields(local).local(),
                                 detail::text_or_null(its_model));
}

inline void track_discovered_printers(const std::vector<fields>& devices) {
    std::vector<borrowed_fields> borrowed(devices.begin(), devices.end());
    std::vector<lumeq_dictionary> list;
    for (const borrowed_fields& device : borrowed)
        list.push_back(device.dictionary());
    detail::calls().track_discovered_printers(list.data(), list.size());
}

/// Empty on failure.
inline std::wstring biid(const std::string& device_uuid) {
    return detail::written([&](wchar_t* buffer, std::size_t size) {
        return detail::calls().get_biid(device_uuid.c_str(), buffer, size);
    });
}

inline std::wstring text_of(connection_method method) {
    return detail::written([&](wchar_t* buffer, std::size_t size) {
        return detail::calls().connection_method_text(detail::number(method), buffer, size);
    });
}

} // namespace lumeq
