#include "LumeqLib/Extra/Eventing/TaskDetails.h"

#include "Common/CompiledPattern.h"
#include "Common/Exceptions.h"
#include "Common/Text.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

Dictionary FeatureFlags(const ScanFeatureMap& features) {
    Dictionary flags;
    for (const auto& [feature, isOn] : features)
        flags[feature] = std::wstring(isOn ? L"true" : L"false");
    return flags;
}

} // namespace

constinit const Common::Pattern recordedVersionPattern =
    Common::CompiledPattern<LR"(^[0-9]+\.[0-9]+\.[0-9]+(\.[0-9]+)?$)">;

DeviceConfigTaskDetails::DeviceConfigTaskDetails(ConfigurationSetting setting) {
    _data[Key::Schema] = _schema;
    _data[L"config_setting"] = RecordText(setting);
}

std::unique_ptr<EventDetails> DeviceConfigTaskDetails::Clone() const {
    return std::make_unique<DeviceConfigTaskDetails>(*this);
}

DeviceConnectTaskDetails::DeviceConnectTaskDetails(ConnectionScenario scenario, ConnectionMethod method) {
    _data[Key::Schema] = _schema;
    _data[L"connect_scenario"] = RecordText(scenario);
    _data[L"connect_method"] = RecordText(method);
}

std::unique_ptr<EventDetails> DeviceConnectTaskDetails::Clone() const {
    return std::make_unique<DeviceConnectTaskDetails>(*this);
}

FileSendToTaskDetails::FileSendToTaskDetails(Shortcut shortcut, ShortcutVariance variance, MimeType mimeType,
                                             Destination destination, std::int32_t pages) {
    _data[Key::Schema] = _schema;
    _data[L"scan_sendto_shortcut"] = RecordText(shortcut);
    _data[L"scan_sendto_shortcut_variance"] = RecordText(variance);
    _data[L"scan_sendto_mimetype"] = RecordText(mimeType);
    _data[L"scan_sendto_destination"] = RecordText(destination);
    _data[L"scan_sendto_pages"] = Common::DecimalText(pages);
}

std::unique_ptr<EventDetails> FileSendToTaskDetails::Clone() const {
    return std::make_unique<FileSendToTaskDetails>(*this);
}

PrintBasicTaskDetails::PrintBasicTaskDetails(SubsystemType subsystem, SourceItemType itemType,
                                             SourceMimeType mimeType, SourceItemPrintSize size,
                                             const std::wstring& paperSize, std::int32_t pages) {
    _data[Key::Schema] = _schema;
    _data[L"print_basic_subsystem"] = RecordText(subsystem);
    _data[L"print_basic_type"] = RecordText(itemType);
    _data[L"print_basic_mimetype"] = RecordText(mimeType);
    _data[L"print_basic_size"] = RecordText(size);
    _data[L"print_basic_papersize"] = paperSize;
    _data[L"print_basic_pages"] = Common::DecimalText(pages);
}

std::unique_ptr<EventDetails> PrintBasicTaskDetails::Clone() const {
    return std::make_unique<PrintBasicTaskDetails>(*this);
}

ScanAcquireTaskDetails::ScanAcquireTaskDetails(Shortcut shortcut, ShortcutVariance variance,
                                               ItemType itemType, Resolution resolution, ColorMode colorMode,
                                               PageSize pageSize, Source source, MimeType mimeType,
                                               ScanFeatureMap features, std::int32_t pages) {
    Dictionary featureFlags = FeatureFlags(features);
    _data[Key::Schema] = _schema;
    _data[L"scan_acquire_shortcut"] = RecordText(shortcut);
    _data[L"scan_acquire_shortcut_variance"] = RecordText(variance);
    _data[L"scan_acquire_itemtype"] = RecordText(itemType);
    _data[L"scan_acquire_resolution"] = RecordText(resolution);
    _data[L"scan_acquire_colormode"] = RecordText(colorMode);
    _data[L"scan_acquire_pagesize"] = RecordText(pageSize);
    _data[L"scan_acquire_source"] = RecordText(source);
    _data[L"scan_acquire_mimetype"] = RecordText(mimeType);
    _data[L"scan_acquire_features"] = std::move(featureFlags);
    _data[L"scan_acquire_pages"] = Common::DecimalText(pages);
}

std::unique_ptr<EventDetails> ScanAcquireTaskDetails::Clone() const {
    return std::make_unique<ScanAcquireTaskDetails>(*this);
}

SwInstallTaskDetails::SwInstallTaskDetails(InstallType installType, const std::wstring& installName,
                                           const std::wstring& installVersion) {
    // Two dots pass too, although the text demands three.
    if (!recordedVersionPattern.Matches(installVersion))
        throw Common::ArgumentException(L"installVersion",
                                        L"Install version is not formatted correctly. Must be of form "
                                        L"version-3dots (MSI version or EXE filever)");
    _data[Key::Schema] = _schema;
    _data[L"install_type"] = RecordText(installType);
    _data[L"install_name"] = installName;
    _data[L"install_version"] = installVersion;
}

std::unique_ptr<EventDetails> SwInstallTaskDetails::Clone() const {
    return std::make_unique<SwInstallTaskDetails>(*this);
}

} // namespace Zuvan::Lumeq::Extra::Eventing
