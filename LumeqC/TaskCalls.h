// The beginning and the end of tasks.
#pragma once

#include "LumeqC/Arguments.h"
#include "LumeqC/CallFrame.h"
#include "LumeqC/OpenTasks.h"

namespace Zuvan::Lumeq {

// What each kind of task is completed with. `isGiven` is false for missing details and for malformed
// features; such a call is made with an empty result, which is refused. The default is what an abandoned task
// is completed with.

struct ScanAcquireDetails {
    ScanAcquireDetails() = default;
    explicit ScanAcquireDetails(const lumeq_scan_acquire* details);
    void Complete(API::TaskHandle* task, const std::wstring& result) const;

    bool isGiven = true;
    lumeq_scan_acquire known{};
    API::ScanFeatureMap features;
};

struct PrintBasicDetails {
    PrintBasicDetails() : paperSize(L"unknown") {}
    explicit PrintBasicDetails(const lumeq_print_basic* details);
    void Complete(API::TaskHandle* task, const std::wstring& result) const;

    bool isGiven = true;
    lumeq_print_basic known{};
    std::wstring paperSize;
};

struct FileSendToDetails {
    FileSendToDetails() = default;
    explicit FileSendToDetails(const lumeq_file_send_to* details);
    void Complete(API::TaskHandle* task, const std::wstring& result) const;

    bool isGiven = true;
    lumeq_file_send_to known{};
};

struct DeviceConnectDetails {
    DeviceConnectDetails() = default;
    explicit DeviceConnectDetails(const lumeq_device_connect* details);
    void Complete(API::TaskHandle* task, const std::wstring& result) const;

    bool isGiven = true;
    lumeq_device_connect known{};
};

struct DeviceConfigDetails {
    DeviceConfigDetails() = default;
    explicit DeviceConfigDetails(const lumeq_device_config* details);
    void Complete(API::TaskHandle* task, const std::wstring& result) const;

    bool isGiven = true;
    lumeq_device_config known{};
};

struct SoftwareInstallDetails {
    SoftwareInstallDetails() : name(L"unknown"), version(L"0.0.0") {}
    explicit SoftwareInstallDetails(const lumeq_software_install* details);
    void Complete(API::TaskHandle* task, const std::wstring& result) const;

    bool isGiven = true;
    lumeq_software_install known{};
    std::wstring name;
    std::wstring version;
};

using InitiatedExport = API::TaskHandle(const API::StringDictionary*, const wchar_t*);

lumeq_task BeginTask(TaskKind kind, InitiatedExport& initiate, const lumeq_dictionary* local,
                     const wchar_t* global) noexcept;

/// The body of a call that completes `task`.
template <class Details>
auto CompleteCall(lumeq_task task, const wchar_t* result, Details details) {
    return [task, text = RequiredText(details.isGiven ? result : nullptr), details = std::move(details)] {
        ClaimedTask claimed(task);
        details.Complete(claimed.Handle(), text);
    };
}

/// Completes the task as unknown if it is open.
void AbandonTask(lumeq_task task);

} // namespace Zuvan::Lumeq
