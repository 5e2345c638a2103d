// Details of a completed task, one class for each kind of task. Enumerated values are record values. The host
// counts the pages; here they may be negative.
#pragma once

#include "Common/Pattern.h"
#include "LumeqLib/Extra/Eventing/Enumerations.h"
#include "LumeqLib/Extra/Eventing/EventDetails.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace Zuvan::Lumeq::Extra::Eventing {

/// Features of a scan and whether they were on.
using ScanFeatureMap = std::unordered_map<std::wstring, bool>;

class DeviceConfigTaskDetails : public EventDetails {
public:
    explicit DeviceConfigTaskDetails(ConfigurationSetting setting);

    std::unique_ptr<EventDetails> Clone() const override;

private:
    const std::wstring _schema = L"app_event_task_device_config/1.0.0";
};

class DeviceConnectTaskDetails : public EventDetails {
public:
    DeviceConnectTaskDetails(ConnectionScenario scenario, ConnectionMethod method);

    std::unique_ptr<EventDetails> Clone() const override;

private:
    const std::wstring _schema = L"app_event_task_device_connect/1.0.0";
};

class FileSendToTaskDetails : public EventDetails {
public:
    FileSendToTaskDetails(Shortcut shortcut, ShortcutVariance variance, MimeType mimeType,
                          Destination destination, std::int32_t pages);

    std::unique_ptr<EventDetails> Clone() const override;

private:
    const std::wstring _schema = L"app_event_task_file_sendto/1.0.0";
};

class PrintBasicTaskDetails : public EventDetails {
public:
    PrintBasicTaskDetails(SubsystemType subsystem, SourceItemType itemType, SourceMimeType mimeType,
                          SourceItemPrintSize size, const std::wstring& paperSize, std::int32_t pages);

    std::unique_ptr<EventDetails> Clone() const override;

private:
    const std::wstring _schema = L"app_event_task_print_basic/1.0.0";
};

class ScanAcquireTaskDetails : public EventDetails {
public:
    ScanAcquireTaskDetails(Shortcut shortcut, ShortcutVariance variance, ItemType itemType,
                           Resolution resolution, ColorMode colorMode, PageSize pageSize, Source source,
                           MimeType mimeType, ScanFeatureMap features, std::int32_t pages);

    std::unique_ptr<EventDetails> Clone() const override;

private:
    const std::wstring _schema = L"app_event_task_scan_acquire/1.0.0";
};

/// The versions that SwInstallTaskDetails accepts.
extern const Common::Pattern recordedVersionPattern;

class SwInstallTaskDetails : public EventDetails {
public:
    /// Throws ArgumentException for a malformed version.
    SwInstallTaskDetails(InstallType installType, const std::wstring& installName,
                         const std::wstring& installVersion);

    std::unique_ptr<EventDetails> Clone() const override;

private:
    const std::wstring _schema = L"app_event_task_sw_install/1.0.0";
};

} // namespace Zuvan::Lumeq::Extra::Eventing
