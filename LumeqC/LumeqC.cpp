#include "LumeqC/Arguments.h"
#include "LumeqC/CallFrame.h"
#include "LumeqC/State.h"
#include "LumeqC/TaskCalls.h"

#include <utility>

namespace Zuvan::Lumeq {

namespace {

using ControlExport = decltype(API::ButtonClicked);
using AdExport = decltype(API::AdClicked);
using FormExport = decltype(API::FormSubmitted);

void SubmitControl(ControlExport& function, const lumeq_screen* screen, const wchar_t* controlName) noexcept {
    SubmitEvent([&] {
        return [&function, copy = Screen(ReadStruct(screen), controlName)] {
            function(copy.flow.Get(), copy.path.Get(), copy.name, copy.mode.Get(), copy.control,
                     copy.context.Local(), copy.context.Global());
        };
    });
}

/// An ad may be without any text, so a missing one makes the control's name empty, which is refused.
void SubmitAd(AdExport& function, const lumeq_screen* screen, const wchar_t* controlName,
              const lumeq_ad* ad) noexcept {
    SubmitEvent([&] {
        const lumeq_ad known = ReadStruct(ad);
        const wchar_t* const name = known.size == 0 ? nullptr : controlName;
        return [&function, screenCopy = Screen(ReadStruct(screen), name), adCopy = Ad(known)] {
            function(adCopy.type, adCopy.product, adCopy.name, adCopy.variant, screenCopy.flow.Get(),
                     screenCopy.path.Get(), screenCopy.name, screenCopy.mode.Get(), screenCopy.control,
                     screenCopy.context.Local(), screenCopy.context.Global());
        };
    });
}

void SubmitForm(FormExport& function, const lumeq_form* form) noexcept {
    SubmitEvent([&] {
        return [&function, copy = Form(ReadStruct(form))] {
            function(copy.org, copy.code, copy.name, copy.version, copy.details, copy.context.Local(),
                     copy.context.Global());
        };
    });
}

/// The flag as it is logged.
unsigned char ByteOf(std::int32_t flag) noexcept {
    return flag >= 0 && flag <= 255 ? static_cast<unsigned char>(flag) : 1;
}

/// A call without arguments.
void SubmitSessionCall(void (&function)()) noexcept {
    SubmitSession([&function] { return [&function] { function(); }; });
}

/// More than any text of the library's has. It writes them into buffers, because a string that it allocates
/// would be of another heap than operator delete here.
constexpr std::size_t LongestText = 256;

/// Returns the characters that `text` needs; zero for an empty one, which stands for a failure.
std::size_t WriteText(const std::wstring& text, wchar_t* buffer, std::size_t size) noexcept {
    const std::size_t needed = text.size() + 1;
    if (buffer != nullptr && size > 0)
        buffer[size < needed ? 0 : text.copy(buffer, text.size())] = L'\0';
    return text.empty() ? 0 : needed;
}

} // namespace

extern "C" {

uint32_t lumeq_version() { return LUMEQ_VERSION_NUMBER; }

uint32_t lumeq_abi() { return LUMEQ_ABI_NUMBER; }

int32_t lumeq_configure(const lumeq_options* options) {
    const lumeq_options known = ReadStruct(options);
    if (known.size == 0)
        return 0;
    if (!ChooseMode(known.use_worker_thread ? CallMode::Worker : CallMode::Direct))
        return 0;
    if (known.queue_capacity > 0)
        CallQueue::SetCapacity(static_cast<std::size_t>(known.queue_capacity));
    return 1;
}

uint64_t lumeq_dropped_count() { return CallQueue::DroppedCount(); }

int32_t lumeq_get_state(lumeq_state* state) { return !IsProcessEnding() && WriteState(state); }

void lumeq_startup(const wchar_t* app_name, int32_t why, int32_t how, int32_t track_system_info,
                   int32_t track_print_queue_info) {
    SubmitSession([&] {
        return [=, name = RequiredText(app_name)] {
            API::StartupEx(name, static_cast<API::WhyType>(why), static_cast<API::HowType>(how),
                           track_system_info != 0, track_print_queue_info != 0);
        };
    });
}

void lumeq_shutdown(int32_t timeout_msec) {
    constexpr std::uint32_t FallbackMilliseconds = 10000; // that of ShutdownEx
    const std::uint64_t number = Submit(QueuedCall::Kind::Session, [timeout_msec] {
        return [timeout_msec] { API::ShutdownEx(timeout_msec); };
    });
    if (UsesWorker() && !IsProcessEnding() && !CallQueue::IsWorker())
        CallQueue::Drain(number,
                         timeout_msec < 0 ? FallbackMilliseconds : static_cast<std::uint32_t>(timeout_msec));
}

void lumeq_flush(int32_t timeout_msec) {
    SubmitSession([timeout_msec] { return [timeout_msec] { API::FlushEx(timeout_msec); }; });
}

void lumeq_pause() { SubmitSessionCall(API::Pause); }

void lumeq_resume() { SubmitSessionCall(API::Resume); }

void lumeq_set_opt_in(int32_t user_has_opted_in) {
    SubmitSession(
        [user_has_opted_in] { return [user_has_opted_in] { API::SetUserOptInEx(user_has_opted_in != 0); }; });
}

int32_t lumeq_get_opt_in() { return Ask(false, API::GetUserOptInEx); }

void lumeq_set_local_subfolder(const wchar_t* subpath) {
    SubmitSession([subpath] {
        return [path = RequiredText(subpath)] {
            API::SetLocalSubfolderPathEx(path);
            RememberSubfolder(path);
        };
    });
}

void lumeq_track_print_queue_info() { SubmitSessionCall(API::TrackPrintQueueInfoEx); }

void lumeq_track_system_information() { SubmitSessionCall(API::TrackSystemInformationEx); }

void lumeq_set_global_context(const wchar_t* global_context) {
    SubmitSession([global_context] {
        return [model = RequiredText(global_context)] { API::SetGlobalContextEx(model.c_str()); };
    });
}

void lumeq_screen_displayed(const lumeq_screen* screen) {
    SubmitEvent([screen] {
        return [copy = Screen(ReadStruct(screen), nullptr)] {
            API::ScreenDisplayed(copy.flow.Get(), copy.path.Get(), copy.name, copy.mode.Get(),
                                 copy.context.Local(), copy.context.Global());
        };
    });
}

void lumeq_button_clicked(const lumeq_screen* screen, const wchar_t* control_name) {
    SubmitControl(API::ButtonClicked, screen, control_name);
}

void lumeq_tile_clicked(const lumeq_screen* screen, const wchar_t* control_name) {
    SubmitControl(API::TileClicked, screen, control_name);
}

void lumeq_hyperlink_clicked(const lumeq_screen* screen, const wchar_t* control_name) {
    SubmitControl(API::HyperlinkClicked, screen, control_name);
}

void lumeq_checkbox_changed(const lumeq_screen* screen, const wchar_t* control_name, int32_t is_checked) {
    SubmitEvent([&] {
        return [isChecked = ByteOf(is_checked), copy = Screen(ReadStruct(screen), control_name)] {
            API::CheckboxChanged(isChecked, copy.flow.Get(), copy.path.Get(), copy.name, copy.mode.Get(),
                                 copy.control, copy.context.Local(), copy.context.Global());
        };
    });
}

void lumeq_ad_displayed(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad) {
    SubmitAd(API::AdDisplayed, screen, control_name, ad);
}

void lumeq_ad_clicked(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad) {
    SubmitAd(API::AdClicked, screen, control_name, ad);
}

void lumeq_ad_closed(const lumeq_screen* screen, const wchar_t* control_name, const lumeq_ad* ad) {
    SubmitAd(API::AdClosed, screen, control_name, ad);
}

void lumeq_url_launched(const wchar_t* url, const lumeq_dictionary* local_context,
                        const wchar_t* global_context) {
    SubmitEvent([&] {
        return [copy = RequiredText(url), context = Context(local_context, global_context)] {
            API::UrlLaunchedEx(copy, context.Local(), context.Global());
        };
    });
}

void lumeq_form_submitted(const lumeq_form* form) { SubmitForm(API::FormSubmitted, form); }

void lumeq_report_generated(const lumeq_form* report) { SubmitForm(API::ReportGenerated, report); }

void lumeq_track_discovered_printers(const lumeq_dictionary* devices, size_t count) {
    SubmitEvent(
        [&] { return [list = ReadDevices(devices, count)] { API::TrackDiscoveredPrintersEx(list); }; });
}

lumeq_task lumeq_scan_acquire_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    return BeginTask(TaskKind::ScanAcquire, API::ScanAcquireInitiated, local_context, global_context);
}
void lumeq_scan_acquire_complete(lumeq_task task, const wchar_t* result, const lumeq_scan_acquire* details) {
    SubmitEvent([&] { return CompleteCall(task, result, ScanAcquireDetails(details)); });
}

lumeq_task lumeq_print_basic_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    return BeginTask(TaskKind::PrintBasic, API::PrintBasicInitiated, local_context, global_context);
}
void lumeq_print_basic_complete(lumeq_task task, const wchar_t* result, const lumeq_print_basic* details) {
    SubmitEvent([&] { return CompleteCall(task, result, PrintBasicDetails(details)); });
}

lumeq_task lumeq_file_send_to_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    return BeginTask(TaskKind::FileSendTo, API::FileSendToInitiated, local_context, global_context);
}
void lumeq_file_send_to_complete(lumeq_task task, const wchar_t* result, const lumeq_file_send_to* details) {
    SubmitEvent([&] { return CompleteCall(task, result, FileSendToDetails(details)); });
}

lumeq_task lumeq_device_connect_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    return BeginTask(TaskKind::DeviceConnect, API::DeviceConnectInitiated, local_context, global_context);
}
void lumeq_device_connect_complete(lumeq_task task, const wchar_t* result,
                                   const lumeq_device_connect* details) {
    SubmitEvent([&] { return CompleteCall(task, result, DeviceConnectDetails(details)); });
}

lumeq_task lumeq_device_config_begin(const lumeq_dictionary* local_context, const wchar_t* global_context) {
    return BeginTask(TaskKind::DeviceConfig, API::DeviceConfigInitiated, local_context, global_context);
}
void lumeq_device_config_complete(lumeq_task task, const wchar_t* result,
                                  const lumeq_device_config* details) {
    SubmitEvent([&] { return CompleteCall(task, result, DeviceConfigDetails(details)); });
}

lumeq_task lumeq_software_install_begin(const lumeq_dictionary* local_context,
                                        const wchar_t* global_context) {
    return BeginTask(TaskKind::SoftwareInstall, API::SoftwareInstallInitiated, local_context, global_context);
}
void lumeq_software_install_complete(lumeq_task task, const wchar_t* result,
                                     const lumeq_software_install* details) {
    SubmitEvent([&] { return CompleteCall(task, result, SoftwareInstallDetails(details)); });
}

void lumeq_task_abandon(lumeq_task task) {
    SubmitSession([task] { return [task] { AbandonTask(task); }; });
}

int32_t lumeq_task_is_open(lumeq_task task) {
    return Ask(false, [task] { return IsTaskOpen(task); });
}

size_t lumeq_get_biid(const char* device_uuid, wchar_t* buffer, size_t size) {
    const std::wstring biid = Ask(std::wstring(), [device_uuid] {
        wchar_t text[LongestText] = L"";
        API::GetBiid_Internal(text, LongestText, device_uuid ? device_uuid : "");
        return std::wstring(text);
    });
    return WriteText(biid, buffer, size);
}

size_t lumeq_connection_method_text(int32_t method, wchar_t* buffer, size_t size) {
    const std::wstring name = Ask(std::wstring(), [method] {
        wchar_t text[LongestText] = L"";
        API::ToString_Internal(text, LongestText, static_cast<API::ConnectionMethodType>(method));
        return std::wstring(text);
    });
    return WriteText(name, buffer, size);
}

} // extern "C"
} // namespace Zuvan::Lumeq
