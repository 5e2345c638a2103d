// Lumeq: tells a usage-telemetry service what users and applications did.
//
// Conventions of all functions below:
// - Required text is a std::wstring, optional text a NUL-terminated const wchar_t* that may be null. Texts
//   and dictionaries are copied; nothing is kept of an argument after the call.
// - Any thread may call. Calls are serialised, so a slow call delays the others. Do not call from DllMain,
//   nor from inside the companion library, nor from a window procedure or message hook that runs while the
//   same thread is in a call (COM's waits dispatch messages).
// - Nothing is reported to the host: no function throws, and only those that say so give anything back. A
//   call with a bad argument is logged and dropped. Only the failure of the lock that serialises calls leaves
//   a function, as std::system_error, or std::bad_alloc where there is no memory for that. A call made from
//   inside another one on the same thread fails in this way instead of waiting for itself, and the outer call
//   goes on: code().value() is then that of std::errc::resource_deadlock_would_occur (the value alone, since
//   this library's categories are its own).
// - Any call may use COM, single-threaded. A thread without COM, or in a single-threaded apartment, is left
//   as it was. A thread in a multithreaded apartment is not: one initialisation of the host's own is undone
//   each time, and the host's next use of COM there may fail. Call from a thread of another kind.
// - In a debugger every refused argument and every failure stops the host where it happens.
// - No order is enforced. A host calls StartupEx once, then events, and ShutdownEx at its end.
// - Where the user's registry disables tracking, every function returns at once and does nothing, except
//   that the two _Internal functions give an empty text.
// - A control character is one below U+0020 or from U+0080 to U+009F.
// - The host is built with the toolchain that this library was built with; LumeqToolchain.h checks it.
#pragma once

#include <Lumeq/LumeqToolchain.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#if defined(LUMEQ_STATIC)
#define LUMEQ_API
#else
#define LUMEQ_API __declspec(dllimport)
#endif

namespace Zuvan::Lumeq::API {

/// Free-form fields: name to value.
using StringDictionary = std::unordered_map<std::wstring, std::wstring>;

/// Scanner features in use: name to on or off.
using ScanFeatureMap = std::unordered_map<std::wstring, bool>;

/// An open task. Opaque; owned by the host from Initiated until the Completed that ends it sets it to null.
struct Task;
using TaskHandle = Task*;

/// One printer that a host found.
struct DiscoveredDevice {
    void* reserved = nullptr;     ///< Never read.
    StringDictionary information; ///< Must hold `dev_biid`: "unknown" or what GetBiid gives.
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

/// Begins a run. `appName`: not empty, no control characters, no space at either end. Where the
/// managed runtime or the companion library is missing or fails, an opted-in user's machine sends the one
/// message of this process now. Delivery can take 3,000 ms of the caller's time; before it come seven or more
/// questions to WMI, which have no time limit of their own, so a machine whose WMI hangs holds up this call,
/// and every other behind it, for as long. Ends a pause that an earlier run died in, whatever the arguments.
LUMEQ_API void StartupEx(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
                         bool trackPrintQueueInfo);

/// Ends the run and any pause. `timeoutMsec`: how long to wait for delivery, in milliseconds; a negative
/// value is reported and taken as 10000.
LUMEQ_API void ShutdownEx(std::int32_t timeoutMsec);

/// Delivers what is queued. `timeoutMsec` as for ShutdownEx.
LUMEQ_API void FlushEx(std::int32_t timeoutMsec);

/// Opts the user out until Resume, and remembers the choice; a second Pause forgets it.
LUMEQ_API void Pause();

/// Ends a pause and restores the user's choice. Harmless without a pause.
LUMEQ_API void Resume();

/// Stores the user's choice. It takes effect at once, during a pause too.
LUMEQ_API void SetUserOptInEx(bool userHasOptedIn);

/// Tells the user's choice; false where it cannot be read or tracking is disabled. With the managed runtime
/// only the companion library is asked: where that is missing or fails the answer is false, although
/// SetUserOptInEx has then stored the choice and StartupEx acts on it.
LUMEQ_API bool GetUserOptInEx();

/// Keeps the local settings in a subfolder from now on. `subpath`: folder names separated by single
/// backslashes, one more allowed at either end, without characters that Windows forbids in names. It is
/// joined as Windows joins paths: with a backslash in front it starts at the root of the drive, and ".."
/// climbs. Neither is refused; pass neither.
LUMEQ_API void SetLocalSubfolderPathEx(const std::wstring& subpath);

/// Asks for the machine's print queues to be reported. Needs the managed runtime.
LUMEQ_API void TrackPrintQueueInfoEx();

/// Asks for the machine's system information to be reported. Needs the managed runtime.
LUMEQ_API void TrackSystemInformationEx();

/// Sets the device model that events without a `globalContext` of their own refer to: 1 to 128 characters, no
/// control characters. Must not be null.
LUMEQ_API void SetGlobalContextEx(const wchar_t* globalContext);

// Screens and controls. `flow`, `screenPath` ("a/b"), `screenName` and `mode` say where the user was, in
// letters, digits and underscores between them (in `mode` one at a time; a part of `screenPath` may also end
// in one); `controlName` says which control, with inner hyphens too. `flow` and `screenPath` may be null or
// empty, `mode` null only. `localContext` may be null. `globalContext`, the device model, is 1 to 128
// characters without control characters, or null for that of SetGlobalContextEx.

LUMEQ_API void ScreenDisplayed(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                               const wchar_t* mode, const StringDictionary* localContext,
                               const wchar_t* globalContext);

LUMEQ_API void ButtonClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                             const wchar_t* mode, const std::wstring& controlName,
                             const StringDictionary* localContext, const wchar_t* globalContext);

LUMEQ_API void TileClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                           const wchar_t* mode, const std::wstring& controlName,
                           const StringDictionary* localContext, const wchar_t* globalContext);

/// Refuses a `mode` with an underscore, and a part of `screenPath` that ends in one.
LUMEQ_API void HyperlinkClicked(const wchar_t* flow, const wchar_t* screenPath,
                                const std::wstring& screenName, const wchar_t* mode,
                                const std::wstring& controlName, const StringDictionary* localContext,
                                const wchar_t* globalContext);

/// `isChecked`: any value but zero means checked.
LUMEQ_API void CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* screenPath,
                               const std::wstring& screenName, const wchar_t* mode,
                               const std::wstring& controlName, const StringDictionary* localContext,
                               const wchar_t* globalContext);

/// `product`, `name` and `variant` may be empty, which is recorded as "unknown"; no control characters, no
/// space at either end.
LUMEQ_API void AdDisplayed(AdType adType, const std::wstring& product, const std::wstring& name,
                           const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                           const std::wstring& screenName, const wchar_t* mode,
                           const std::wstring& controlName, const StringDictionary* localContext,
                           const wchar_t* globalContext);

/// As AdDisplayed.
LUMEQ_API void AdClicked(AdType adType, const std::wstring& product, const std::wstring& name,
                         const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                         const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                         const StringDictionary* localContext, const wchar_t* globalContext);

/// As AdDisplayed.
LUMEQ_API void AdClosed(AdType adType, const std::wstring& product, const std::wstring& name,
                        const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                        const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                        const StringDictionary* localContext, const wchar_t* globalContext);

/// `url`: "file", "http" or "https" in lower case, "://", anything up to the next slash, and a path without
/// white space. What follows the first "?" is cut off before the record is built; the log shows all of it. A
/// user's name and password in front of the server and a "#" with what follows are recorded: pass neither.
LUMEQ_API void UrlLaunchedEx(const std::wstring& url, const StringDictionary* localContext,
                             const wchar_t* globalContext);

/// `orgName` and `codeName`: lower-case letters; `formName`: the same with at most one inner underscore;
/// `version`: two numbers with a dot between them. A field of `details` named `schema` or `moniker` is
/// replaced.
LUMEQ_API void FormSubmitted(const std::wstring& orgName, const std::wstring& codeName,
                             const std::wstring& formName, const std::wstring& version,
                             const StringDictionary& details, const StringDictionary* localContext,
                             const wchar_t* globalContext);

/// As FormSubmitted, with `reportName` in the place of `formName`.
LUMEQ_API void ReportGenerated(const std::wstring& orgName, const std::wstring& codeName,
                               const std::wstring& reportName, const std::wstring& version,
                               const StringDictionary& details, const StringDictionary* localContext,
                               const wchar_t* globalContext);

// Tasks. Initiated opens a task and gives its handle, or null on any failure. Completed takes the address of
// the host's handle variable, which must be valid; when it succeeds it frees the task and sets the variable
// to null, else handle and task stay as they were and the call may be made again. The two may come from
// different threads. A task that is never completed is never freed. `taskResult`: "success", "unknown",
// "error", "error_" and digits, or "error_" and a name of at least two letters or digits that begins with a
// letter. `pages`: zero or more.

LUMEQ_API TaskHandle ScanAcquireInitiated(const StringDictionary* localContext, const wchar_t* globalContext);
LUMEQ_API void ScanAcquireCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                    Scan::ShortcutType shortcutType,
                                    Scan::ShortcutVarianceType shortcutVarianceType, Scan::ItemType itemType,
                                    Scan::ResolutionType resolutionType, Scan::ColorModeType colorModeType,
                                    Scan::PageSizeType pageSizeType, Scan::SourceType sourceType,
                                    Scan::MimeType mimeType, const ScanFeatureMap& features,
                                    std::int32_t pages);

LUMEQ_API TaskHandle PrintBasicInitiated(const StringDictionary* localContext, const wchar_t* globalContext);
/// `paperSize`: not empty, no control characters, no space at either end.
LUMEQ_API void PrintBasicCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                   Print::SubsystemType subsystemType, Print::ItemType itemType,
                                   Print::MimeType mimeType, Print::PageSizeType pageSizeType,
                                   const std::wstring& paperSize, std::int32_t pages);

LUMEQ_API TaskHandle FileSendToInitiated(const StringDictionary* localContext, const wchar_t* globalContext);
LUMEQ_API void FileSendToCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                   File::ShortcutType shortcutType,
                                   File::ShortcutVarianceType shortcutVarianceType, File::MimeType mimeType,
                                   File::DestinationType destinationType, std::int32_t pages);

LUMEQ_API TaskHandle DeviceConnectInitiated(const StringDictionary* localContext,
                                            const wchar_t* globalContext);
LUMEQ_API void DeviceConnectCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                      ConnectionScenarioType scenarioType, ConnectionMethodType methodType);

LUMEQ_API TaskHandle DeviceConfigInitiated(const StringDictionary* localContext,
                                           const wchar_t* globalContext);
LUMEQ_API void DeviceConfigCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                     ConfigurationSettingType settingType);

LUMEQ_API TaskHandle SoftwareInstallInitiated(const StringDictionary* localContext,
                                              const wchar_t* globalContext);
/// `name`: not empty, without control characters and "*/:<>?\|, U+007F neither; `version`: three or four
/// numbers with dots between them.
LUMEQ_API void SoftwareInstallCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                                        InstallType installerType, const std::wstring& name,
                                        const std::wstring& version);

/// Reports each printer by itself. One without information or with a malformed `dev_biid` is skipped; one
/// that lacks `dev_biid` ends the call, with those before it sent.
LUMEQ_API void TrackDiscoveredPrintersEx(const DiscoveredDeviceList& discoveredDeviceList);

/// Turns a device's UUID, as it is spelled and up to its first zero byte, into its identifier of 64
/// lower-case hexadecimal digits. `biid` is left as it was on any failure, an empty `deviceUuid` included.
LUMEQ_API void GetBiid(const std::string& deviceUuid, std::wstring& biid);

/// GetBiid into a buffer of `size` characters; gives wcscpy_s's result, 0 on success. A failure of GetBiid
/// gives an empty text and 0. `deviceUuid` must not be null.
LUMEQ_API std::int32_t GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* deviceUuid);

/// The text of a ConnectionMethodType; a value outside it has one too. `textValue` is left as it was where
/// tracking is disabled.
LUMEQ_API void ToString(ConnectionMethodType enumValue, std::wstring& textValue);

/// ToString into a buffer of `size` characters; gives wcscpy_s's result, 0 on success.
LUMEQ_API std::int32_t ToString_Internal(wchar_t* buffer, std::size_t size, ConnectionMethodType enumValue);

} // extern "C"
} // namespace Zuvan::Lumeq::API
