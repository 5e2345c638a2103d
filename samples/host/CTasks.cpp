#include "samples/host/CAdapters.h"

namespace SampleHost {

namespace {

// The host's handle variables hold the number of the task.
API::TaskHandle HandleOf(lumeq_task task) { return reinterpret_cast<API::TaskHandle>(task); }
lumeq_task TaskOf(API::TaskHandle handle) { return reinterpret_cast<lumeq_task>(handle); }

bool IsOpen(lumeq_task task) { return C<decltype(lumeq_task_is_open)>("lumeq_task_is_open")(task) != 0; }

template <const char* Function>
API::TaskHandle Begin(const API::StringDictionary* local, const wchar_t* global) {
    const lumeq_task task = C<decltype(lumeq_scan_acquire_begin)>(Function)(Fields(local).Get(), global);
    // With the worker thread, a number is returned before it is known whether the task begins.
    return HandleOf(IsOpen(task) ? task : 0);
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
    if (!IsOpen(task))
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

} // namespace

const Adapters& TaskAdapters() {
    // Not destroyed, because another thread may be calling while the process exits.
    static const Adapters& adapters = *new Adapters{
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
    };
    return adapters;
}

} // namespace SampleHost
