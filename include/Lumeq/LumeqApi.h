// Lumeq records how desktop applications for printing and scanning are used. A host application calls the 39
// functions below. Each call is checked against the event schema; an accepted event becomes one record.
//
// Where records go. The companion library, LumeqShim.Managed.dll, is a separate DLL that queues records and
// delivers them. Lumeq hands records to it if the .NET Framework 4 runtime ("v4.0.30319") and the library are
// installed. Otherwise Lumeq checks each event and drops it, and StartupEx sends one message about the
// machine, for an opted-in user only (SetUserOptInEx). Lumeq hands records over whatever the user's choice;
// the companion library applies the choice to them.
//
// Order. A host calls StartupEx once, then events, then ShutdownEx before it exits. No order is enforced.
//
// Arguments
// - Required text is a std::wstring. Optional text is a NUL-terminated const wchar_t* that may be null.
// - Texts and dictionaries are copied. Lumeq keeps no reference to an argument after the call.
// - A pattern is an ECMAScript regular expression that must match the whole text. "(any case)" means that the
//   case of ASCII letters is ignored. \w is a letter or digit of any script, or an underscore.
// - Lengths count UTF-16 code units.
//
// Failures
// - A call with a bad argument is logged and dropped. The host is not notified: functions return void, except
//   where a comment says otherwise.
// - Two exceptions can leave a function, both from the lock that serialises calls: std::system_error, and
//   std::bad_alloc if there is no memory to build that. Everything else is caught and logged.
// - While a debugger is attached, each bad argument and each failure breaks into it.
// - If the user's registry disables tracking (TrackingDisabled = 1 under
//   HKCU\Software\Zuvan\NG\Tracking\Lumeq, read once per process), every function returns at once and does
//   nothing. The two _Internal functions then store an empty text.
//
// Threads
// - Any thread may call. Calls are serialised, so one slow call delays all others; StartupEx can take long.
//   Another process can delay any call. Holding the log's mutex costs 1,000 ms for each log line. Keeping an
//   opportunistic lock on a settings file blocks the call until the lock is released.
// - A call made inside another call on the same thread throws std::system_error; the outer call continues. It
//   can happen in window procedures and message hooks, because COM dispatches messages while it waits, and in
//   the companion library. Compare code().value() with std::errc::resource_deadlock_would_occur; comparing
//   code() itself fails, because the DLL has its own copy of the error categories.
// - Do not call from DllMain.
//
// COM
// - Any call may initialise COM on its thread, single-threaded, and undo that before it returns. A thread
//   without COM or in a single-threaded apartment is unaffected.
// - A thread in a multithreaded apartment is taken out of it: each call that uses COM undoes one
//   CoInitializeEx of the host, and the host's next use of COM on that thread may fail. Do not call from such
//   a thread.
//
// Toolchain. Strings and containers cross the DLL boundary, so build the host with the toolchain that built
// Lumeq. LumeqToolchain.h stops a build with any other.
#pragma once

#include <Lumeq/LumeqToolchain.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#if !defined(LUMEQ_API)
#define LUMEQ_API __declspec(dllimport)
#endif

namespace Zuvan::Lumeq::API {

/// Free-form fields of an event: name to value. Neither is checked.
using StringDictionary = std::unordered_map<std::wstring, std::wstring>;

/// Scanner features: name to whether the feature is on, such as {L"crop", true}. Names are not checked.
using ScanFeatureMap = std::unordered_map<std::wstring, bool>;

/// An open task. Opaque.
struct Task;

/// The handle of an open task. An Initiated function returns it. The host owns it until the matching
/// Completed function succeeds and sets the host's variable to null. A copy of the handle is then invalid and
/// must not be passed: Lumeq cannot detect it. A task that is never completed is never freed.
using TaskHandle = Task*;

/// One printer that a host found. Its field `dev_biid` is the device identifier: L"unknown", or the 64 digits
/// that GetBiid computes from the UUID of the device.
struct DiscoveredDevice {
    void* reserved = nullptr;     ///< Never read.
    StringDictionary information; ///< Must hold `dev_biid`. No other field is checked.
};
using DiscoveredDeviceList = std::vector<DiscoveredDevice>;

// The vocabulary. An event with a value outside its enumeration is dropped.

/// adType of AdClicked, AdClosed, AdDisplayed.
enum class AdType : std::int32_t {
    unknown = 0,
    banner = 1,
    hyperlink = 2,
    tile = 3,
    virtualalert = 4,
};

/// settingType of DeviceConfigCompleted.
enum class ConfigurationSettingType : std::int32_t {
    unknown = 0,
    pbut_consent_enable = 1,
    webservices_registration = 2,
};

/// methodType of DeviceConnectCompleted; the argument of ToString.
enum class ConnectionMethodType : std::int32_t {
    unknown = 0,
    already_on_network = 1,
    auto_wireless_connect = 2,
    ethernet = 3,
    frontpanel_setup_of_wireless = 4,
    later = 5,
    press_wireless_button = 6,
    usb = 7,
    usb_plus_wifi = 8,
    usb_setup_of_wireless = 9,
    usb_to_wifi = 10,
    wifi_direct = 11,
};

/// scenarioType of DeviceConnectCompleted.
enum class ConnectionScenarioType : std::int32_t {
    unknown = 0,
    add = 1,
    connect = 2,
    convert = 3,
    reconfigure = 4,
};

/// howType of StartupEx.
enum class HowType : std::int32_t {
    unknown = 0,
    cd_exe = 1,
    desktop_shortcut = 2,
    desktop_toast = 3,
    dxp_link = 4,
    folder_exe = 5,
    pnp_inf = 6,
    smv_link = 7,
    startmenu_shortcut = 8,
    udc_tile = 9,
};

/// installerType of SoftwareInstallCompleted.
enum class InstallType : std::int32_t {
    unknown = 0,
    exe = 1,
    msi = 2,
};

/// whyType of StartupEx.
enum class WhyType : std::int32_t {
    unknown = 0,
    add_device = 1,
    add_software = 2,
    reconfigure_device = 3,
    start_app = 4,
    view_device = 5,
    view_device_error = 6,
    view_device_supplies = 7,
};

namespace File {

/// destinationType of FileSendToCompleted.
enum class DestinationType : std::int32_t {
    unknown = 0,
    cloud_box = 1,
    cloud_dropbox = 2,
    cloud_googledrive = 3,
    cloud_onedrive = 4,
    email_mapi = 5,
    email_smtp = 6,
    folder = 7,
};

/// mimeType of FileSendToCompleted.
enum class MimeType : std::int32_t {
    unknown = 0,
    application_pdf = 1,
    application_pdfsearchable = 2,
    image_jpg = 3,
    image_bmp = 4,
    image_tiff = 5,
    image_png = 6,
    application_rtf = 7,
    text_unicode = 8,
    text_ansi = 9,
    text_utf8 = 10,
};

/// shortcutType of FileSendToCompleted.
enum class ShortcutType : std::int32_t {
    unknown = 0,
    email_jpg = 1,
    email_pdf = 2,
    every_day_scan = 3,
    save_jpg = 4,
    save_pdf = 5,
    save_text = 6,
    send_cloud = 7,
    user = 8,
};

/// shortcutVarianceType of FileSendToCompleted.
enum class ShortcutVarianceType : std::int32_t {
    unknown = 0,
    modified = 1,
    modified_one_off = 2,
    original = 3,
    original_one_off = 4,
    user = 5,
    user_one_off = 6,
};

} // namespace File

namespace Scan {

/// colorModeType of ScanAcquireCompleted.
enum class ColorModeType : std::int32_t {
    unknown = 0,
    auto_ = 1,
    blackwhite = 2,
    color = 3,
    gray = 4,
    halftone = 5,
};

/// itemType of ScanAcquireCompleted.
enum class ItemType : std::int32_t {
    unknown = 0,
    document = 1,
    photo = 2,
};

/// mimeType of ScanAcquireCompleted.
enum class MimeType : std::int32_t {
    unknown = 0,
    application_pdf = 1,
    application_pdfsearchable = 2,
    application_rtf = 3,
    image_bmp = 4,
    image_jpg = 5,
    image_png = 6,
    image_tiff = 7,
    text_ansi = 8,
    text_unicode = 9,
    text_utf8 = 10,
};

/// pageSizeType of ScanAcquireCompleted.
enum class PageSizeType : std::int32_t {
    unknown = 0,
    a4 = 1,
    auto_ = 2,
    custom = 3,
    entirearea = 4,
    extralong = 5,
    legal = 6,
    letter = 7,
    long_ = 8,
    size_4x6 = 9,
    size_5x7 = 10,
    size_8x10 = 11,
    snap = 12,
};

/// resolutionType of ScanAcquireCompleted.
enum class ResolutionType : std::int32_t {
    unknown = 0,
    dpi_75 = 1,
    dpi_100 = 2,
    dpi_200 = 3,
    dpi_240 = 4,
    dpi_300 = 5,
    dpi_400 = 6,
    dpi_500 = 7,
    dpi_600 = 8,
    dpi_1200 = 9,
    dpi_2400 = 10,
    dpi_4800 = 11,
};

/// shortcutType of ScanAcquireCompleted.
enum class ShortcutType : std::int32_t {
    unknown = 0,
    email_jpg = 1,
    email_pdf = 2,
    every_day_scan = 3,
    save_jpg = 4,
    save_pdf = 5,
    save_text = 6,
    send_cloud = 7,
    user = 8,
};

/// shortcutVarianceType of ScanAcquireCompleted.
enum class ShortcutVarianceType : std::int32_t {
    unknown = 0,
    modified = 1,
    modified_one_off = 2,
    original = 3,
    original_one_off = 4,
    user = 5,
    user_one_off = 6,
};

/// sourceType of ScanAcquireCompleted.
enum class SourceType : std::int32_t {
    unknown = 0,
    adf_duplex_book = 1,
    adf_duplex_tablet = 2,
    adf_simplex = 3,
    flatbed = 4,
};

} // namespace Scan

namespace Print {

/// itemType of PrintBasicCompleted.
enum class ItemType : std::int32_t {
    unknown = 0,
    document = 1,
    photo_multi = 2,
    photo_single = 3,
};

/// mimeType of PrintBasicCompleted.
enum class MimeType : std::int32_t {
    unknown = 0,
    application_pdf = 1,
    image_any = 2,
};

/// pageSizeType of PrintBasicCompleted.
enum class PageSizeType : std::int32_t {
    unknown = 0,
    full = 1,
    size_3p5x5 = 2,
    size_4x6 = 3,
    size_5x7 = 4,
    size_8x10 = 5,
    size_9x13_cm = 6,
    size_10x15_cm = 7,
    size_13x18_cm = 8,
};

/// subsystemType of PrintBasicCompleted.
enum class SubsystemType : std::int32_t {
    unknown = 0,
    ipp = 1,
    native = 2,
};

} // namespace Print

extern "C" {

/// Begins a run. If an earlier run ended during a pause, restores the user's choice, even if an argument is
/// refused. Without the companion library, or if it fails, sends the one message of this process about the
/// machine, for an opted-in user.
///
/// Duration: this call can hold its caller, and all other callers, without a limit. The message needs at
/// least seven WMI queries, which have no time limit, and then up to 3,000 ms of posting. With the companion
/// library the duration is that library's.
///
/// COM: this call takes its thread out of a multithreaded apartment, so do not call from one.
/// @param appName              text without control characters and without a space at either end,
///                             `[^\x00-\x20\x80-\x9f]([^\x00-\x1f\x80-\x9f]*[^\x00-\x20\x80-\x9f])?`:
///                             L"Scan Studio"
/// @param whyType              a value of WhyType: WhyType::start_app
/// @param howType              a value of HowType: HowType::desktop_shortcut
/// @param trackSystemInfo      whether the companion library reports the system information; ignored without
///                             it
/// @param trackPrintQueueInfo  whether the companion library reports the print queues; ignored without it
LUMEQ_API void StartupEx(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
                         bool trackPrintQueueInfo);

/// Ends the run, and a pause if there is one. The companion library delivers what is queued; without it
/// nothing is queued and nothing waits.
/// @param timeoutMsec  longest wait for delivery in milliseconds, 0 or more: 10000. A negative value is
///                     logged and replaced by 10000.
LUMEQ_API void ShutdownEx(std::int32_t timeoutMsec);

/// Delivers what is queued and continues the run. The companion library waits; without it nothing is queued.
/// @param timeoutMsec  longest wait for delivery in milliseconds, 0 or more: 10000. A negative value is
///                     logged and replaced by 10000.
LUMEQ_API void FlushEx(std::int32_t timeoutMsec);

/// Opts the user out until Resume and stores the choice that Resume restores. A second Pause before Resume
/// stores "opted out" over it, so the choice is lost. The pause is stored on disk: it ends with Resume or
/// ShutdownEx, or with the next StartupEx if the process ends first.
LUMEQ_API void Pause();

/// Ends a pause and restores the user's choice. Does nothing without a pause.
LUMEQ_API void Resume();

/// Stores the user's choice for all users of the machine. It takes effect at once, also during a pause, and
/// Resume then restores this choice.
/// @param userHasOptedIn  true: events and the message may be sent
LUMEQ_API void SetUserOptInEx(bool userHasOptedIn);

/// Returns whether the user has opted in; false if the choice cannot be read or tracking is disabled. Where
/// the .NET Framework 4 runtime is installed, only the companion library is asked. If it is missing or fails,
/// the result is false, although SetUserOptInEx has stored the choice and StartupEx acts on it.
LUMEQ_API bool GetUserOptInEx();

/// Keeps the local settings in a subfolder of %ProgramData%\Zuvan from now on. A refused value changes
/// nothing. The subfolder is joined as Windows joins paths: a leading backslash starts at the root of the
/// drive, and L".." climbs. Both pass the check, so pass neither, and no text from outside the application.
/// @param subpath  folder names separated by single backslashes, and optionally one at either end; names have
///                 no control characters and none of `"*/:<>?|`: L"Studio" or L"Studio\\Basic". Pattern:
///                 `\\?N(\\N)*\\?` where N is `[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+`
LUMEQ_API void SetLocalSubfolderPathEx(const std::wstring& subpath);

/// Asks the companion library to report the print queues of the machine. Does nothing without it.
LUMEQ_API void TrackPrintQueueInfoEx();

/// Asks the companion library to report the system information of the machine. Does nothing without it.
LUMEQ_API void TrackSystemInformationEx();

/// Sets the device model for later events that pass a null `globalContext`. A refused value keeps the earlier
/// one.
/// @param globalContext  must not be null; 1 to 128 characters, no control characters,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void SetGlobalContextEx(const wchar_t* globalContext);

/// Records that the application displayed a screen.
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9]\w*(/[a-z0-9]\w*)*)?` (any case): L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+(_[a-z0-9]+)*` (any case): L"first_run"; L"" is refused
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void ScreenDisplayed(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                               const wchar_t* mode, const StringDictionary* localContext,
                               const wchar_t* globalContext);

/// Records that the user clicked a button.
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9]\w*(/[a-z0-9]\w*)*)?` (any case): L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+(_[a-z0-9]+)*` (any case): L"first_run"; L"" is refused
/// @param controlName    `[a-z0-9]([-\w]*[a-z0-9])?` (any case): L"ok-button"
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void ButtonClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                             const wchar_t* mode, const std::wstring& controlName,
                             const StringDictionary* localContext, const wchar_t* globalContext);

/// Records that the user clicked a tile.
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9]\w*(/[a-z0-9]\w*)*)?` (any case): L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+(_[a-z0-9]+)*` (any case): L"first_run"; L"" is refused
/// @param controlName    `[a-z0-9]([-\w]*[a-z0-9])?` (any case): L"ok-button"
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void TileClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                           const wchar_t* mode, const std::wstring& controlName,
                           const StringDictionary* localContext, const wchar_t* globalContext);

/// Records that the user clicked a hyperlink. `screenPath` and `mode` are checked more strictly than for
/// other events.
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9](\w*[a-z0-9])?(/[a-z0-9](\w*[a-z0-9])?)*)?` (any case):
///                       L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+` (any case): L"online"; no underscore, unlike other events
/// @param controlName    `[a-z0-9]([-\w]*[a-z0-9])?` (any case): L"ok-button"
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void HyperlinkClicked(const wchar_t* flow, const wchar_t* screenPath,
                                const std::wstring& screenName, const wchar_t* mode,
                                const std::wstring& controlName, const StringDictionary* localContext,
                                const wchar_t* globalContext);

/// Records that the user checked or unchecked a checkbox.
/// @param isChecked      zero for unchecked, any other value for checked
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9]\w*(/[a-z0-9]\w*)*)?` (any case): L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+(_[a-z0-9]+)*` (any case): L"first_run"; L"" is refused
/// @param controlName    `[a-z0-9]([-\w]*[a-z0-9])?` (any case): L"ok-button"
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* screenPath,
                               const std::wstring& screenName, const wchar_t* mode,
                               const std::wstring& controlName, const StringDictionary* localContext,
                               const wchar_t* globalContext);

/// Records that the application displayed an advertisement.
/// @param adType         a value of AdType: AdType::banner
/// @param product        L"", recorded as "unknown", or text without control characters and without a space
///                       at either end,
///                       `[^\x00-\x20\x80-\x9f]([^\x00-\x1f\x80-\x9f]*[^\x00-\x20\x80-\x9f])?`: L"Ink refill"
/// @param name           as product: L"Spring offer"
/// @param variant        as product: L"blue"
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9]\w*(/[a-z0-9]\w*)*)?` (any case): L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+(_[a-z0-9]+)*` (any case): L"first_run"; L"" is refused
/// @param controlName    `[a-z0-9]([-\w]*[a-z0-9])?` (any case): L"ok-button"
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void AdDisplayed(AdType adType, const std::wstring& product, const std::wstring& name,
                           const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                           const std::wstring& screenName, const wchar_t* mode,
                           const std::wstring& controlName, const StringDictionary* localContext,
                           const wchar_t* globalContext);

/// Records that the user clicked an advertisement.
/// @param adType         a value of AdType: AdType::banner
/// @param product        L"", recorded as "unknown", or text without control characters and without a space
///                       at either end,
///                       `[^\x00-\x20\x80-\x9f]([^\x00-\x1f\x80-\x9f]*[^\x00-\x20\x80-\x9f])?`: L"Ink refill"
/// @param name           as product: L"Spring offer"
/// @param variant        as product: L"blue"
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9]\w*(/[a-z0-9]\w*)*)?` (any case): L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+(_[a-z0-9]+)*` (any case): L"first_run"; L"" is refused
/// @param controlName    `[a-z0-9]([-\w]*[a-z0-9])?` (any case): L"ok-button"
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void AdClicked(AdType adType, const std::wstring& product, const std::wstring& name,
                         const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                         const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                         const StringDictionary* localContext, const wchar_t* globalContext);

/// Records that the user closed an advertisement.
/// @param adType         a value of AdType: AdType::banner
/// @param product        L"", recorded as "unknown", or text without control characters and without a space
///                       at either end,
///                       `[^\x00-\x20\x80-\x9f]([^\x00-\x1f\x80-\x9f]*[^\x00-\x20\x80-\x9f])?`: L"Ink refill"
/// @param name           as product: L"Spring offer"
/// @param variant        as product: L"blue"
/// @param flow           null, or `([a-z0-9](\w*[a-z0-9])?)?` (any case): L"setup"
/// @param screenPath     null, or `([a-z0-9]\w*(/[a-z0-9]\w*)*)?` (any case): L"network/wireless"
/// @param screenName     `[a-z0-9](\w*[a-z0-9])?` (any case): L"ChooseNetwork"
/// @param mode           null, or `[a-z0-9]+(_[a-z0-9]+)*` (any case): L"first_run"; L"" is refused
/// @param controlName    `[a-z0-9]([-\w]*[a-z0-9])?` (any case): L"ok-button"
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void AdClosed(AdType adType, const std::wstring& product, const std::wstring& name,
                        const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                        const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                        const StringDictionary* localContext, const wchar_t* globalContext);

/// Records that the application opened a URL. Everything from the first "?" on is removed before the check
/// and is not recorded, but the log shows the whole URL. A user name, a password and a "#" fragment are
/// recorded: pass none.
/// @param url            up to the first "?": `(file|https?)://[^/]+(/\S*)?`, scheme in lower case:
///                       L"https://support.example/printers?serial=1". L"file:///C:/a" is refused: it names
///                       no host.
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void UrlLaunchedEx(const std::wstring& url, const StringDictionary* localContext,
                             const wchar_t* globalContext);

/// Records that the user submitted a form under the name "x-<orgName>_<codeName>_form_<formName>/<version>".
/// @param orgName        `[a-z]+`: L"dvrn"
/// @param codeName       `[a-z]+`: L"tarvik"
/// @param formName       `[a-z]+(_[a-z]+)?`: L"printer_setup"
/// @param version        `[0-9]+\.[0-9]+`: L"1.0"
/// @param details        fields of the host; not checked. Fields named "schema" and "moniker" are replaced.
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void FormSubmitted(const std::wstring& orgName, const std::wstring& codeName,
                             const std::wstring& formName, const std::wstring& version,
                             const StringDictionary& details, const StringDictionary* localContext,
                             const wchar_t* globalContext);

/// Records that the application generated a report under the name
/// "x-<orgName>_<codeName>_report_<reportName>/<version>".
/// @param orgName        `[a-z]+`: L"dvrn"
/// @param codeName       `[a-z]+`: L"tarvik"
/// @param reportName     `[a-z]+(_[a-z]+)?`: L"weekly_usage"
/// @param version        `[0-9]+\.[0-9]+`: L"1.0"
/// @param details        fields of the host; not checked. Fields named "schema" and "moniker" are replaced.
/// @param localContext   null, or fields of the host; not checked: {{L"signal", L"good"}}
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API void ReportGenerated(const std::wstring& orgName, const std::wstring& codeName,
                               const std::wstring& reportName, const std::wstring& version,
                               const StringDictionary& details, const StringDictionary* localContext,
                               const wchar_t* globalContext);

/// Records that a scan begins. Returns the handle for ScanAcquireCompleted, or null on failure or if tracking
/// is disabled. The host owns the handle. Any thread may complete the task.
/// @param localContext   null, or fields of the host for both events; not checked. A field named
///                       "_app_event_task_guid" is replaced by the identifier of the task.
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API TaskHandle ScanAcquireInitiated(const StringDictionary* localContext, const wchar_t* globalContext);

/// Records that a scan ended. Success frees the task and sets `*taskHandle` to null. A refused call (a null
/// `*taskHandle`, a bad argument) changes neither, so the host may correct the arguments and call again.
/// @param taskHandle            address of the variable that holds the handle; must be a valid address
/// @param taskResult            `success|unknown|error(_([0-9]+|[a-zA-Z][a-zA-Z0-9]+))?`: L"error_paperjam"
/// @param shortcutType          a value of Scan::ShortcutType: Scan::ShortcutType::save_pdf
/// @param shortcutVarianceType  a value of Scan::ShortcutVarianceType: Scan::ShortcutVarianceType::original
/// @param itemType              a value of Scan::ItemType: Scan::ItemType::document
/// @param resolutionType        a value of Scan::ResolutionType: Scan::ResolutionType::dpi_300
/// @param colorModeType         a value of Scan::ColorModeType: Scan::ColorModeType::color
/// @param pageSizeType          a value of Scan::PageSizeType: Scan::PageSizeType::a4
/// @param sourceType            a value of Scan::SourceType: Scan::SourceType::flatbed
/// @param mimeType              a value of Scan::MimeType: Scan::MimeType::application_pdf
/// @param features              scanner features; may be empty; not checked: {{L"crop", true}}
/// @param pages                 number of pages, 0 or more: 3
LUMEQ_API void ScanAcquireCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                    Scan::ShortcutType shortcutType,
                                    Scan::ShortcutVarianceType shortcutVarianceType, Scan::ItemType itemType,
                                    Scan::ResolutionType resolutionType, Scan::ColorModeType colorModeType,
                                    Scan::PageSizeType pageSizeType, Scan::SourceType sourceType,
                                    Scan::MimeType mimeType, const ScanFeatureMap& features,
                                    std::int32_t pages);

/// Records that a print job begins. Returns the handle for PrintBasicCompleted, or null on failure or if
/// tracking is disabled. The host owns the handle. Any thread may complete the task.
/// @param localContext   null, or fields of the host for both events; not checked. A field named
///                       "_app_event_task_guid" is replaced by the identifier of the task.
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API TaskHandle PrintBasicInitiated(const StringDictionary* localContext, const wchar_t* globalContext);

/// Records that a print job ended. Success frees the task and sets `*taskHandle` to null. A refused call (a
/// null `*taskHandle`, a bad argument) changes neither, so the host may correct the arguments and call again.
/// @param taskHandle     address of the variable that holds the handle; must be a valid address
/// @param taskResult     `success|unknown|error(_([0-9]+|[a-zA-Z][a-zA-Z0-9]+))?`: L"error_paperjam"
/// @param subsystemType  a value of Print::SubsystemType: Print::SubsystemType::native
/// @param itemType       a value of Print::ItemType: Print::ItemType::document
/// @param mimeType       a value of Print::MimeType: Print::MimeType::application_pdf
/// @param pageSizeType   a value of Print::PageSizeType: Print::PageSizeType::full
/// @param paperSize      text without control characters and without a space at either end,
///                       `[^\x00-\x20\x80-\x9f]([^\x00-\x1f\x80-\x9f]*[^\x00-\x20\x80-\x9f])?`: L"A4"
/// @param pages          number of pages, 0 or more: 3
LUMEQ_API void PrintBasicCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                   Print::SubsystemType subsystemType, Print::ItemType itemType,
                                   Print::MimeType mimeType, Print::PageSizeType pageSizeType,
                                   const std::wstring& paperSize, std::int32_t pages);

/// Records that a file transfer begins. Returns the handle for FileSendToCompleted, or null on failure or if
/// tracking is disabled. The host owns the handle. Any thread may complete the task.
/// @param localContext   null, or fields of the host for both events; not checked. A field named
///                       "_app_event_task_guid" is replaced by the identifier of the task.
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API TaskHandle FileSendToInitiated(const StringDictionary* localContext, const wchar_t* globalContext);

/// Records that a file transfer ended. Success frees the task and sets `*taskHandle` to null. A refused call
/// (a null `*taskHandle`, a bad argument) changes neither, so the host may correct the arguments and call
/// again.
/// @param taskHandle            address of the variable that holds the handle; must be a valid address
/// @param taskResult            `success|unknown|error(_([0-9]+|[a-zA-Z][a-zA-Z0-9]+))?`: L"error_paperjam"
/// @param shortcutType          a value of File::ShortcutType: File::ShortcutType::send_cloud
/// @param shortcutVarianceType  a value of File::ShortcutVarianceType: File::ShortcutVarianceType::original
/// @param mimeType              a value of File::MimeType: File::MimeType::application_pdf
/// @param destinationType       a value of File::DestinationType: File::DestinationType::folder
/// @param pages                 number of pages, 0 or more: 3
LUMEQ_API void FileSendToCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                   File::ShortcutType shortcutType,
                                   File::ShortcutVarianceType shortcutVarianceType, File::MimeType mimeType,
                                   File::DestinationType destinationType, std::int32_t pages);

/// Records that the connection of a device begins. Returns the handle for DeviceConnectCompleted, or null on
/// failure or if tracking is disabled. The host owns the handle. Any thread may complete the task.
/// @param localContext   null, or fields of the host for both events; not checked. A field named
///                       "_app_event_task_guid" is replaced by the identifier of the task.
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API TaskHandle DeviceConnectInitiated(const StringDictionary* localContext,
                                            const wchar_t* globalContext);

/// Records that the connection of a device ended. Success frees the task and sets `*taskHandle` to null. A
/// refused call (a null `*taskHandle`, a bad argument) changes neither, so the host may correct the arguments
/// and call again.
/// @param taskHandle    address of the variable that holds the handle; must be a valid address
/// @param taskResult    `success|unknown|error(_([0-9]+|[a-zA-Z][a-zA-Z0-9]+))?`: L"error_paperjam"
/// @param scenarioType  a value of ConnectionScenarioType: ConnectionScenarioType::add
/// @param methodType    a value of ConnectionMethodType: ConnectionMethodType::usb
LUMEQ_API void DeviceConnectCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                      ConnectionScenarioType scenarioType, ConnectionMethodType methodType);

/// Records that the configuration of a device begins. Returns the handle for DeviceConfigCompleted, or null
/// on failure or if tracking is disabled. The host owns the handle. Any thread may complete the task.
/// @param localContext   null, or fields of the host for both events; not checked. A field named
///                       "_app_event_task_guid" is replaced by the identifier of the task.
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API TaskHandle DeviceConfigInitiated(const StringDictionary* localContext,
                                           const wchar_t* globalContext);

/// Records that the configuration of a device ended. Success frees the task and sets `*taskHandle` to null. A
/// refused call (a null `*taskHandle`, a bad argument) changes neither, so the host may correct the arguments
/// and call again.
/// @param taskHandle   address of the variable that holds the handle; must be a valid address
/// @param taskResult   `success|unknown|error(_([0-9]+|[a-zA-Z][a-zA-Z0-9]+))?`: L"error_paperjam"
/// @param settingType  a value of ConfigurationSettingType: ConfigurationSettingType::pbut_consent_enable
LUMEQ_API void DeviceConfigCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                     ConfigurationSettingType settingType);

/// Records that a software installation begins. Returns the handle for SoftwareInstallCompleted, or null on
/// failure or if tracking is disabled. The host owns the handle. Any thread may complete the task.
/// @param localContext   null, or fields of the host for both events; not checked. A field named
///                       "_app_event_task_guid" is replaced by the identifier of the task.
/// @param globalContext  null for the model of SetGlobalContextEx, or a device model,
///                       `[^\x00-\x1f\x80-\x9f]{1,128}`: L"Tarvik 3000"
LUMEQ_API TaskHandle SoftwareInstallInitiated(const StringDictionary* localContext,
                                              const wchar_t* globalContext);

/// Records that a software installation ended. Success frees the task and sets `*taskHandle` to null. A
/// refused call (a null `*taskHandle`, a bad argument) changes neither, so the host may correct the arguments
/// and call again.
/// @param taskHandle     address of the variable that holds the handle; must be a valid address
/// @param taskResult     `success|unknown|error(_([0-9]+|[a-zA-Z][a-zA-Z0-9]+))?`: L"error_paperjam"
/// @param installerType  a value of InstallType: InstallType::msi
/// @param name           `[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+`: L"Tarvik Driver"
/// @param version        three or four numbers, `[0-9]+\.[0-9]+\.[0-9]+(\.[0-9]+)?`: L"1.2.3"
LUMEQ_API void SoftwareInstallCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                        InstallType installerType, const std::wstring& name,
                                        const std::wstring& version);

/// Hands over each printer of the list as a record of its own.
/// @param discoveredDeviceList  may be empty. In each entry `dev_biid` must match `unknown|[a-f0-9]{64}`;
///                              other fields are not checked: {{nullptr, {{L"dev_biid", L"unknown"}}}}. An
///                              entry without any field or with a malformed `dev_biid` is skipped. An entry
///                              with fields but without `dev_biid` ends the call; the entries before it have
///                              been handed over.
LUMEQ_API void TrackDiscoveredPrintersEx(const DiscoveredDeviceList& discoveredDeviceList);

/// Computes the identifier of a device, called "biid" here and `dev_biid` in records: 64 lower-case
/// hexadecimal digits, a keyed hash (HMAC-SHA-256 with the key of the deployment) of the device's UUID. It
/// lets receivers recognise a device without its UUID.
/// @param deviceUuid  not empty; any text: "3f2504e0-4f89-11d3-9a0c-0305e82c3301". It is hashed as it is
///                    spelled, up to its first zero byte.
/// @param biid        receives the identifier; unchanged on failure, including an empty `deviceUuid`, and if
///                    tracking is disabled
LUMEQ_API void GetBiid(const std::string& deviceUuid, std::wstring& biid);

/// GetBiid into a buffer of the host. Returns 0 on success, or the error of wcscpy_s: EINVAL for a null
/// buffer or size 0, ERANGE for a buffer that is too small, which is then an empty text. If GetBiid fails or
/// tracking is disabled, the buffer is an empty text and the result 0.
/// @param buffer      receives the text and its terminating NUL
/// @param size        of the buffer in characters: 65 or more
/// @param deviceUuid  as for GetBiid; must not be null
LUMEQ_API std::int32_t GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* deviceUuid);

/// Stores the text of a connection method in `textValue`: L"wifi_direct".
/// @param enumValue  a value of ConnectionMethodType. Any other number has a text too, which contains the
///                   number.
/// @param textValue  receives the text; unchanged on failure and if tracking is disabled
LUMEQ_API void ToString(ConnectionMethodType enumValue, std::wstring& textValue);

/// ToString into a buffer of the host. Returns 0 on success, or the error of wcscpy_s: EINVAL for a null
/// buffer or size 0, ERANGE for a buffer that is too small, which is then an empty text. If tracking is
/// disabled, the buffer is an empty text and the result 0.
/// @param buffer     receives the text and its terminating NUL
/// @param size       of the buffer in characters; 64 is enough for every text
/// @param enumValue  as for ToString
LUMEQ_API std::int32_t ToString_Internal(wchar_t* buffer, std::size_t size, ConnectionMethodType enumValue);

} // extern "C"
} // namespace Zuvan::Lumeq::API
