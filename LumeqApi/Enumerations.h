// Ties the enumerations of the exported interface to their tables and record types.
#pragma once

#include "LumeqLib/Extra/Eventing/Enumerations.h"

#include <Lumeq/LumeqApi.h>

#include <string>

namespace Zuvan::Lumeq::API {

/// `Record`: what the event classes take for a value of `Api`; `table`: numbers, texts and messages.
template <class Api>
struct EnumerationTraits;

template <>
struct EnumerationTraits<AdType> {
    using Record = Extra::Eventing::CampaignType;
    static constexpr const auto& table = Extra::Eventing::Tables::AdType;
};
template <>
struct EnumerationTraits<ConfigurationSettingType> {
    using Record = Extra::Eventing::ConfigurationSetting;
    static constexpr const auto& table = Extra::Eventing::Tables::ConfigurationSettingType;
};
template <>
struct EnumerationTraits<ConnectionMethodType> {
    using Record = Extra::Eventing::ConnectionMethod;
    static constexpr const auto& table = Extra::Eventing::Tables::ConnectionMethodType;
};
template <>
struct EnumerationTraits<ConnectionScenarioType> {
    using Record = Extra::Eventing::ConnectionScenario;
    static constexpr const auto& table = Extra::Eventing::Tables::ConnectionScenarioType;
};
template <>
struct EnumerationTraits<HowType> {
    using Record = std::uint32_t;
    static constexpr const auto& table = Extra::Eventing::Tables::HowType;
};
template <>
struct EnumerationTraits<InstallType> {
    using Record = Extra::Eventing::InstallType;
    static constexpr const auto& table = Extra::Eventing::Tables::InstallType;
};
template <>
struct EnumerationTraits<WhyType> {
    using Record = std::uint32_t;
    static constexpr const auto& table = Extra::Eventing::Tables::WhyType;
};
template <>
struct EnumerationTraits<File::DestinationType> {
    using Record = Extra::Eventing::Destination;
    static constexpr const auto& table = Extra::Eventing::Tables::FileDestinationType;
};
template <>
struct EnumerationTraits<File::MimeType> {
    using Record = Extra::Eventing::MimeType;
    static constexpr const auto& table = Extra::Eventing::Tables::FileMimeType;
};
template <>
struct EnumerationTraits<File::ShortcutType> {
    using Record = Extra::Eventing::Shortcut;
    static constexpr const auto& table = Extra::Eventing::Tables::FileShortcutType;
};
template <>
struct EnumerationTraits<File::ShortcutVarianceType> {
    using Record = Extra::Eventing::ShortcutVariance;
    static constexpr const auto& table = Extra::Eventing::Tables::FileShortcutVarianceType;
};
template <>
struct EnumerationTraits<Scan::ColorModeType> {
    using Record = Extra::Eventing::ColorMode;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanColorModeType;
};
template <>
struct EnumerationTraits<Scan::ItemType> {
    using Record = Extra::Eventing::ItemType;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanItemType;
};
template <>
struct EnumerationTraits<Scan::MimeType> {
    using Record = Extra::Eventing::MimeType;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanMimeType;
};
template <>
struct EnumerationTraits<Scan::PageSizeType> {
    using Record = Extra::Eventing::PageSize;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanPageSizeType;
};
template <>
struct EnumerationTraits<Scan::ResolutionType> {
    using Record = Extra::Eventing::Resolution;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanResolutionType;
};
template <>
struct EnumerationTraits<Scan::ShortcutType> {
    using Record = Extra::Eventing::Shortcut;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanShortcutType;
};
template <>
struct EnumerationTraits<Scan::ShortcutVarianceType> {
    using Record = Extra::Eventing::ShortcutVariance;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanShortcutVarianceType;
};
template <>
struct EnumerationTraits<Scan::SourceType> {
    using Record = Extra::Eventing::Source;
    static constexpr const auto& table = Extra::Eventing::Tables::ScanSourceType;
};
template <>
struct EnumerationTraits<Print::ItemType> {
    using Record = Extra::Eventing::SourceItemType;
    static constexpr const auto& table = Extra::Eventing::Tables::PrintItemType;
};
template <>
struct EnumerationTraits<Print::MimeType> {
    using Record = Extra::Eventing::SourceMimeType;
    static constexpr const auto& table = Extra::Eventing::Tables::PrintMimeType;
};
template <>
struct EnumerationTraits<Print::PageSizeType> {
    using Record = Extra::Eventing::SourceItemPrintSize;
    static constexpr const auto& table = Extra::Eventing::Tables::PrintPageSizeType;
};
template <>
struct EnumerationTraits<Print::SubsystemType> {
    using Record = Extra::Eventing::SubsystemType;
    static constexpr const auto& table = Extra::Eventing::Tables::PrintSubsystemType;
};

/// Throws ArgumentOutOfRangeException for a value outside the enumeration.
template <class Api>
typename EnumerationTraits<Api>::Record ToRecord(Api value) {
    using Traits = EnumerationTraits<Api>;
    return static_cast<typename Traits::Record>(
        Extra::Eventing::ToRecordValue(Traits::table, static_cast<std::int32_t>(value)));
}

/// Never fails: a value outside the enumeration gives the undefined-value text.
template <class Api>
std::wstring ApiText(Api value) {
    return Extra::Eventing::ApiText(EnumerationTraits<Api>::table, static_cast<std::int32_t>(value));
}

} // namespace Zuvan::Lumeq::API
