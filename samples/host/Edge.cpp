#include "samples/host/Edge.h"

#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.h>

#include <windows.h>

#include <cerrno>
#include <cwchar>
#include <iterator>
#include <list>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace SampleHost {

namespace {

namespace API = Zuvan::Lumeq::API;

HMODULE library = nullptr;

template <class Function>
Function* C(const char* name) {
    auto* const address = GetProcAddress(library, name);
    if (address == nullptr)
        throw std::runtime_error(std::string("LumeqC.dll does not export ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

/// A dictionary as lumeq.h takes it; points into the map.
class Fields {
public:
    explicit Fields(const API::StringDictionary* map) : _isGiven(map != nullptr) {
        if (map == nullptr)
            return;
        for (const auto& [name, value] : *map)
            _fields.push_back({name.c_str(), value.c_str()});
        _dictionary = {_fields.data(), _fields.size()};
    }
    Fields(const Fields&) = delete;
    Fields& operator=(const Fields&) = delete;

    const lumeq_dictionary* Get() const { return _isGiven ? &_dictionary : nullptr; }

private:
    bool _isGiven;
    std::vector<lumeq_field> _fields;
    lumeq_dictionary _dictionary{};
};

template <class Enumeration>
std::int32_t Number(Enumeration value) {
    return static_cast<std::int32_t>(value);
}

void StartupEx(const std::wstring& appName, API::WhyType why, API::HowType how, bool systemInfo,
               bool queueInfo) {
    C<decltype(lumeq_startup)>("lumeq_startup")(appName.c_str(), Number(why), Number(how), systemInfo,
                                                queueInfo);
}
void ShutdownEx(std::int32_t timeout) { C<decltype(lumeq_shutdown)>("lumeq_shutdown")(timeout); }
void FlushEx(std::int32_t timeout) { C<decltype(lumeq_flush)>("lumeq_flush")(timeout); }
void Pause() { C<decltype(lumeq_pause)>("lumeq_pause")(); }
void Resume() { C<decltype(lumeq_resume)>("lumeq_resume")(); }
void SetUserOptInEx(bool optIn) { C<decltype(lumeq_set_opt_in)>("lumeq_set_opt_in")(optIn); }
bool GetUserOptInEx() { return C<decltype(lumeq_get_opt_in)>("lumeq_get_opt_in")() != 0; }
void SetLocalSubfolderPathEx(const std::wstring& subpath) {
    C<decltype(lumeq_set_local_subfolder)>("lumeq_set_local_subfolder")(subpath.c_str());
}
void TrackPrintQueueInfoEx() { C<decltype(lumeq_track_print_queue_info)>("lumeq_track_print_queue_info")(); }
void TrackSystemInformationEx() {
    C<decltype(lumeq_track_system_information)>("lumeq_track_system_information")();
}
void SetGlobalContextEx(const wchar_t* model) {
    C<decltype(lumeq_set_global_context)>("lumeq_set_global_context")(model);
}

void ScreenDisplayed(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                     const API::StringDictionary* local, const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    C<decltype(lumeq_screen_displayed)>("lumeq_screen_displayed")(&screen);
}

void Click(const char* function, const wchar_t* flow, const wchar_t* path, const std::wstring& name,
           const wchar_t* mode, const std::wstring& control, const API::StringDictionary* local,
           const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    C<decltype(lumeq_button_clicked)>(function)(&screen, control.c_str());
}
void ButtonClicked(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                   const std::wstring& control, const API::StringDictionary* local, const wchar_t* global) {
    Click("lumeq_button_clicked", flow, path, name, mode, control, local, global);
}
void TileClicked(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                 const std::wstring& control, const API::StringDictionary* local, const wchar_t* global) {
    Click("lumeq_tile_clicked", flow, path, name, mode, control, local, global);
}
void HyperlinkClicked(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                      const std::wstring& control, const API::StringDictionary* local,
                      const wchar_t* global) {
    Click("lumeq_hyperlink_clicked", flow, path, name, mode, control, local, global);
}
void CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* path,
                     const std::wstring& name, const wchar_t* mode, const std::wstring& control,
                     const API::StringDictionary* local, const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    C<decltype(lumeq_checkbox_changed)>("lumeq_checkbox_changed")(&screen, control.c_str(), isChecked);
}

using AdExport = decltype(API::AdClicked);
template <const char* Function>
void Ad(API::AdType type, const std::wstring& product, const std::wstring& adName,
        const std::wstring& variant, const wchar_t* flow, const wchar_t* path, const std::wstring& name,
        const wchar_t* mode, const std::wstring& control, const API::StringDictionary* local,
        const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    const lumeq_ad ad = {sizeof ad, product.c_str(), adName.c_str(), variant.c_str(), Number(type), 0};
    C<decltype(lumeq_ad_clicked)>(Function)(&screen, control.c_str(), &ad);
}
constexpr char AdDisplayedName[] = "lumeq_ad_displayed";
constexpr char AdClickedName[] = "lumeq_ad_clicked";
constexpr char AdClosedName[] = "lumeq_ad_closed";

void UrlLaunchedEx(const std::wstring& url, const API::StringDictionary* local, const wchar_t* global) {
    C<decltype(lumeq_url_launched)>("lumeq_url_launched")(url.c_str(), Fields(local).Get(), global);
}

template <const char* Function>
void SubmitForm(const std::wstring& org, const std::wstring& code, const std::wstring& name,
                const std::wstring& version, const API::StringDictionary& details,
                const API::StringDictionary* local, const wchar_t* global) {
    const Fields fields(local);
    const Fields detailFields(&details);
    const lumeq_form form = {sizeof form,     org.c_str(),         code.c_str(), name.c_str(),
                             version.c_str(), *detailFields.Get(), fields.Get(), global};
    C<decltype(lumeq_form_submitted)>(Function)(&form);
}
constexpr char FormSubmittedName[] = "lumeq_form_submitted";
constexpr char ReportGeneratedName[] = "lumeq_report_generated";

// The host's handle variables hold the number of the task.
API::TaskHandle HandleOf(lumeq_task task) { return reinterpret_cast<API::TaskHandle>(task); }
lumeq_task TaskOf(API::TaskHandle handle) { return reinterpret_cast<lumeq_task>(handle); }

template <const char* Function>
API::TaskHandle Begin(const API::StringDictionary* local, const wchar_t* global) {
    return HandleOf(C<decltype(lumeq_scan_acquire_begin)>(Function)(Fields(local).Get(), global));
}
constexpr char ScanAcquireName[] = "lumeq_scan_acquire_begin";
constexpr char PrintBasicName[] = "lumeq_print_basic_begin";
constexpr char FileSendToName[] = "lumeq_file_send_to_begin";
constexpr char DeviceConnectName[] = "lumeq_device_connect_begin";
constexpr char DeviceConfigName[] = "lumeq_device_config_begin";
constexpr char SoftwareInstallName[] = "lumeq_software_install_begin";

template <class Details>
void Complete(const char* function, API::TaskHandle* handle, const std::wstring& result,
              const Details& details) {
    const lumeq_task task = TaskOf(*handle);
    C<void(lumeq_task, const wchar_t*, const Details*)>(function)(task, result.c_str(), &details);
    if (!C<decltype(lumeq_task_is_open)>("lumeq_task_is_open")(task))
        *handle = nullptr;
}

void ScanAcquireCompleted(API::TaskHandle* handle, const std::wstring& result,
                          API::Scan::ShortcutType shortcut, API::Scan::ShortcutVarianceType variance,
                          API::Scan::ItemType item, API::Scan::ResolutionType resolution,
                          API::Scan::ColorModeType colorMode, API::Scan::PageSizeType pageSize,
                          API::Scan::SourceType source, API::Scan::MimeType mime,
                          const API::ScanFeatureMap& features, std::int32_t pages) {
    std::vector<lumeq_feature> list;
    for (const auto& [name, isOn] : features)
        list.push_back({name.c_str(), isOn, 0});
    const lumeq_scan_acquire details = {sizeof details,
                                        list.data(),
                                        list.size(),
                                        Number(shortcut),
                                        Number(variance),
                                        Number(item),
                                        Number(resolution),
                                        Number(colorMode),
                                        Number(pageSize),
                                        Number(source),
                                        Number(mime),
                                        pages,
                                        0};
    Complete("lumeq_scan_acquire_complete", handle, result, details);
}
void PrintBasicCompleted(API::TaskHandle* handle, const std::wstring& result,
                         API::Print::SubsystemType subsystem, API::Print::ItemType item,
                         API::Print::MimeType mime, API::Print::PageSizeType pageSize,
                         const std::wstring& paperSize, std::int32_t pages) {
    const lumeq_print_basic details = {sizeof details,
                                       paperSize.c_str(),
                                       Number(subsystem),
                                       Number(item),
                                       Number(mime),
                                       Number(pageSize),
                                       pages,
                                       0};
    Complete("lumeq_print_basic_complete", handle, result, details);
}
void FileSendToCompleted(API::TaskHandle* handle, const std::wstring& result,
                         API::File::ShortcutType shortcut, API::File::ShortcutVarianceType variance,
                         API::File::MimeType mime, API::File::DestinationType destination,
                         std::int32_t pages) {
    const lumeq_file_send_to details = {
        sizeof details, Number(shortcut), Number(variance), Number(mime), Number(destination), pages, 0};
    Complete("lumeq_file_send_to_complete", handle, result, details);
}
void DeviceConnectCompleted(API::TaskHandle* handle, const std::wstring& result,
                            API::ConnectionScenarioType scenario, API::ConnectionMethodType method) {
    const lumeq_device_connect details = {sizeof details, Number(scenario), Number(method)};
    Complete("lumeq_device_connect_complete", handle, result, details);
}
void DeviceConfigCompleted(API::TaskHandle* handle, const std::wstring& result,
                           API::ConfigurationSettingType setting) {
    const lumeq_device_config details = {sizeof details, Number(setting), 0};
    Complete("lumeq_device_config_complete", handle, result, details);
}
void SoftwareInstallCompleted(API::TaskHandle* handle, const std::wstring& result, API::InstallType installer,
                              const std::wstring& name, const std::wstring& version) {
    const lumeq_software_install details = {sizeof details, name.c_str(), version.c_str(), Number(installer),
                                            0};
    Complete("lumeq_software_install_complete", handle, result, details);
}

void TrackDiscoveredPrintersEx(const API::DiscoveredDeviceList& devices) {
    std::list<Fields> owned;
    std::vector<lumeq_dictionary> list;
    for (const API::DiscoveredDevice& device : devices) {
        list.push_back(*owned.emplace_back(&device.information).Get());
    }
    C<decltype(lumeq_track_discovered_printers)>("lumeq_track_discovered_printers")(list.data(), list.size());
}

/// What wcscpy_s returns for such a buffer and a text that needs so much.
std::int32_t CopyResult(const wchar_t* buffer, std::size_t size, std::size_t needed) {
    if (buffer == nullptr || size == 0)
        return EINVAL;
    return needed > size ? ERANGE : 0;
}

constexpr std::size_t LongestText = 256;

std::int32_t GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* uuid) {
    return CopyResult(buffer, size, C<decltype(lumeq_get_biid)>("lumeq_get_biid")(uuid, buffer, size));
}
void GetBiid(const std::string& uuid, std::wstring& biid) {
    wchar_t buffer[LongestText];
    if (C<decltype(lumeq_get_biid)>("lumeq_get_biid")(uuid.c_str(), buffer, LongestText) != 0)
        biid = buffer;
}
std::int32_t ToString_Internal(wchar_t* buffer, std::size_t size, API::ConnectionMethodType method) {
    return CopyResult(buffer, size,
                      C<decltype(lumeq_connection_method_text)>("lumeq_connection_method_text")(
                          Number(method), buffer, size));
}
void ToString(API::ConnectionMethodType method, std::wstring& text) {
    wchar_t buffer[LongestText];
    if (C<decltype(lumeq_connection_method_text)>("lumeq_connection_method_text")(Number(method), buffer,
                                                                                  LongestText) != 0)
        text = buffer;
}

/// An adapter with the type of the export that it stands for.
template <class Export>
void* Like(Export* adapter) {
    return reinterpret_cast<void*>(adapter);
}

const std::map<std::string, void*>& Adapters() {
    static const std::map<std::string, void*> adapters{
        {"StartupEx", Like<decltype(API::StartupEx)>(StartupEx)},
        {"ShutdownEx", Like<decltype(API::ShutdownEx)>(ShutdownEx)},
        {"FlushEx", Like<decltype(API::FlushEx)>(FlushEx)},
        {"Pause", Like<decltype(API::Pause)>(Pause)},
        {"Resume", Like<decltype(API::Resume)>(Resume)},
        {"SetUserOptInEx", Like<decltype(API::SetUserOptInEx)>(SetUserOptInEx)},
        {"GetUserOptInEx", Like<decltype(API::GetUserOptInEx)>(GetUserOptInEx)},
        {"SetLocalSubfolderPathEx", Like<decltype(API::SetLocalSubfolderPathEx)>(SetLocalSubfolderPathEx)},
        {"TrackPrintQueueInfoEx", Like<decltype(API::TrackPrintQueueInfoEx)>(TrackPrintQueueInfoEx)},
        {"TrackSystemInformationEx", Like<decltype(API::TrackSystemInformationEx)>(TrackSystemInformationEx)},
        {"SetGlobalContextEx", Like<decltype(API::SetGlobalContextEx)>(SetGlobalContextEx)},
        {"ScreenDisplayed", Like<decltype(API::ScreenDisplayed)>(ScreenDisplayed)},
        {"ButtonClicked", Like<decltype(API::ButtonClicked)>(ButtonClicked)},
        {"TileClicked", Like<decltype(API::TileClicked)>(TileClicked)},
        {"HyperlinkClicked", Like<decltype(API::HyperlinkClicked)>(HyperlinkClicked)},
        {"CheckboxChanged", Like<decltype(API::CheckboxChanged)>(CheckboxChanged)},
        {"AdDisplayed", Like<decltype(API::AdDisplayed)>(Ad<AdDisplayedName>)},
        {"AdClicked", Like<decltype(API::AdClicked)>(Ad<AdClickedName>)},
        {"AdClosed", Like<decltype(API::AdClosed)>(Ad<AdClosedName>)},
        {"UrlLaunchedEx", Like<decltype(API::UrlLaunchedEx)>(UrlLaunchedEx)},
        {"FormSubmitted", Like<decltype(API::FormSubmitted)>(SubmitForm<FormSubmittedName>)},
        {"ReportGenerated", Like<decltype(API::ReportGenerated)>(SubmitForm<ReportGeneratedName>)},
        {"ScanAcquireInitiated", Like<decltype(API::ScanAcquireInitiated)>(Begin<ScanAcquireName>)},
        {"ScanAcquireCompleted", Like<decltype(API::ScanAcquireCompleted)>(ScanAcquireCompleted)},
        {"PrintBasicInitiated", Like<decltype(API::PrintBasicInitiated)>(Begin<PrintBasicName>)},
        {"PrintBasicCompleted", Like<decltype(API::PrintBasicCompleted)>(PrintBasicCompleted)},
        {"FileSendToInitiated", Like<decltype(API::FileSendToInitiated)>(Begin<FileSendToName>)},
        {"FileSendToCompleted", Like<decltype(API::FileSendToCompleted)>(FileSendToCompleted)},
        {"DeviceConnectInitiated", Like<decltype(API::DeviceConnectInitiated)>(Begin<DeviceConnectName>)},
        {"DeviceConnectCompleted", Like<decltype(API::DeviceConnectCompleted)>(DeviceConnectCompleted)},
        {"DeviceConfigInitiated", Like<decltype(API::DeviceConfigInitiated)>(Begin<DeviceConfigName>)},
        {"DeviceConfigCompleted", Like<decltype(API::DeviceConfigCompleted)>(DeviceConfigCompleted)},
        {"SoftwareInstallInitiated",
         Like<decltype(API::SoftwareInstallInitiated)>(Begin<SoftwareInstallName>)},
        {"SoftwareInstallCompleted", Like<decltype(API::SoftwareInstallCompleted)>(SoftwareInstallCompleted)},
        {"TrackDiscoveredPrintersEx",
         Like<decltype(API::TrackDiscoveredPrintersEx)>(TrackDiscoveredPrintersEx)},
        {"GetBiid", Like<decltype(API::GetBiid)>(GetBiid)},
        {"GetBiid_Internal", Like<decltype(API::GetBiid_Internal)>(GetBiid_Internal)},
        {"ToString", Like<decltype(API::ToString)>(ToString)},
        {"ToString_Internal", Like<decltype(API::ToString_Internal)>(ToString_Internal)},
    };
    return adapters;
}

} // namespace

Edge ChosenEdge() {
    wchar_t name[16] = L"";
    const DWORD size = GetEnvironmentVariableW(L"LUMEQ_HOST_EDGE", name, static_cast<DWORD>(std::size(name)));
    if (size == 0 || std::wcscmp(name, L"cpp") == 0)
        return Edge::Cpp;
    if (std::wcscmp(name, L"c") == 0)
        return Edge::C;
    if (std::wcscmp(name, L"c-queued") == 0)
        return Edge::CQueued;
    throw std::runtime_error("LUMEQ_HOST_EDGE: no such edge");
}

const wchar_t* LibraryOf(Edge edge) noexcept { return edge == Edge::Cpp ? L"Lumeq.dll" : L"LumeqC.dll"; }

void Prepare(Edge edge, void* module) {
    library = static_cast<HMODULE>(module);
    if (edge != Edge::CQueued)
        return;
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    options.use_worker_thread = 1;
    // It is chosen already where the worker has kept the library since this host freed it.
    C<decltype(lumeq_configure)>("lumeq_configure")(&options);
}

void Finish(Edge edge) noexcept {
    // A call that returns something waits for those before it.
    if (edge == Edge::CQueued)
        C<decltype(lumeq_task_is_open)>("lumeq_task_is_open")(0);
}

void* FindExport(Edge edge, void* module, const char* name) noexcept {
    if (edge == Edge::Cpp)
        return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
    const auto found = Adapters().find(name);
    return found == Adapters().end() ? nullptr : found->second;
}

} // namespace SampleHost
