#include "LumeqC/TaskCalls.h"

namespace Zuvan::Lumeq {

ScanAcquireDetails::ScanAcquireDetails(const lumeq_scan_acquire* details) : known(ReadStruct(details)) {
    auto map = ReadFeatures(known.features, known.feature_count);
    isGiven = known.size != 0 && map;
    if (map)
        features = std::move(*map);
}

void ScanAcquireDetails::Complete(API::TaskHandle* task, const std::wstring& result) const {
    namespace Scan = API::Scan;
    API::ScanAcquireCompleted(
        task, result, static_cast<Scan::ShortcutType>(known.shortcut),
        static_cast<Scan::ShortcutVarianceType>(known.shortcut_variance),
        static_cast<Scan::ItemType>(known.item), static_cast<Scan::ResolutionType>(known.resolution),
        static_cast<Scan::ColorModeType>(known.color_mode), static_cast<Scan::PageSizeType>(known.page_size),
        static_cast<Scan::SourceType>(known.source), static_cast<Scan::MimeType>(known.mime), features,
        known.pages);
}

PrintBasicDetails::PrintBasicDetails(const lumeq_print_basic* details)
    : known(ReadStruct(details)), paperSize(RequiredText(known.paper_size)) {
    isGiven = known.size != 0;
}

void PrintBasicDetails::Complete(API::TaskHandle* task, const std::wstring& result) const {
    namespace Print = API::Print;
    API::PrintBasicCompleted(task, result, static_cast<Print::SubsystemType>(known.subsystem),
                             static_cast<Print::ItemType>(known.item),
                             static_cast<Print::MimeType>(known.mime),
                             static_cast<Print::PageSizeType>(known.page_size), paperSize, known.pages);
}

FileSendToDetails::FileSendToDetails(const lumeq_file_send_to* details) : known(ReadStruct(details)) {
    isGiven = known.size != 0;
}

void FileSendToDetails::Complete(API::TaskHandle* task, const std::wstring& result) const {
    namespace File = API::File;
    API::FileSendToCompleted(task, result, static_cast<File::ShortcutType>(known.shortcut),
                             static_cast<File::ShortcutVarianceType>(known.shortcut_variance),
                             static_cast<File::MimeType>(known.mime),
                             static_cast<File::DestinationType>(known.destination), known.pages);
}

DeviceConnectDetails::DeviceConnectDetails(const lumeq_device_connect* details) : known(ReadStruct(details)) {
    isGiven = known.size != 0;
}

void DeviceConnectDetails::Complete(API::TaskHandle* task, const std::wstring& result) const {
    API::DeviceConnectCompleted(task, result, static_cast<API::ConnectionScenarioType>(known.scenario),
                                static_cast<API::ConnectionMethodType>(known.method));
}

DeviceConfigDetails::DeviceConfigDetails(const lumeq_device_config* details) : known(ReadStruct(details)) {
    isGiven = known.size != 0;
}

void DeviceConfigDetails::Complete(API::TaskHandle* task, const std::wstring& result) const {
    API::DeviceConfigCompleted(task, result, static_cast<API::ConfigurationSettingType>(known.setting));
}

SoftwareInstallDetails::SoftwareInstallDetails(const lumeq_software_install* details)
    : known(ReadStruct(details)), name(RequiredText(known.name)), version(RequiredText(known.version)) {
    isGiven = known.size != 0;
}

void SoftwareInstallDetails::Complete(API::TaskHandle* task, const std::wstring& result) const {
    API::SoftwareInstallCompleted(task, result, static_cast<API::InstallType>(known.installer), name,
                                  version);
}

lumeq_task BeginTask(TaskKind kind, InitiatedExport& initiate, const lumeq_dictionary* local,
                     const wchar_t* global) noexcept {
    lumeq_task number = 0;
    const std::uint64_t queued = Submit(QueuedCall::Kind::Event, [&] {
        NewTask task(kind);
        number = task.Number();
        return [&initiate, task = std::move(task), context = Context(local, global)]() mutable {
            task.Opened(initiate(context.Local(), context.Global()));
        };
    });
    // Made already, or dropped: only a task that is open now counts. Without a number nothing was done, and
    // the lock of the tasks may be a dead thread's.
    return number != 0 && (queued != 0 || IsTaskOpen(number)) ? number : 0;
}

void AbandonTask(lumeq_task task) {
    const std::wstring unknown(L"unknown");
    ClaimedTask claimed(task);
    if (!claimed.IsOpen())
        return;
    switch (claimed.Kind()) {
    case TaskKind::ScanAcquire:
        return ScanAcquireDetails().Complete(claimed.Handle(), unknown);
    case TaskKind::PrintBasic:
        return PrintBasicDetails().Complete(claimed.Handle(), unknown);
    case TaskKind::FileSendTo:
        return FileSendToDetails().Complete(claimed.Handle(), unknown);
    case TaskKind::DeviceConnect:
        return DeviceConnectDetails().Complete(claimed.Handle(), unknown);
    case TaskKind::DeviceConfig:
        return DeviceConfigDetails().Complete(claimed.Handle(), unknown);
    case TaskKind::SoftwareInstall:
        return SoftwareInstallDetails().Complete(claimed.Handle(), unknown);
    }
}

} // namespace Zuvan::Lumeq
