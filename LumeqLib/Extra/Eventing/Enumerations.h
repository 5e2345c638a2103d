// The enumerated values as the record classes hold them. Their numbers differ from those of the exports; the
// texts are the same.
#pragma once

#include "LumeqLib/Extra/Eventing/EnumerationTables.h"

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

enum class CampaignType : std::int32_t {
    unknown = 0,
    banner = 1,
    hyperlink = 2,
    tile = 3,
    virtualalert = 4,
};

enum class ConfigurationSetting : std::int32_t {
    unknown = 0,
    pbut_consent_enable = 1,
    webservices_registration = 2,
};

enum class ConnectionMethod : std::int32_t {
    unknown = 0,
    usb = 1,
    ethernet = 2,
    already_on_network = 3,
    auto_wireless_connect = 4,
    usb_setup_of_wireless = 5,
    frontpanel_setup_of_wireless = 6,
    wifi_direct = 7,
    usb_plus_wifi = 8,
    usb_to_wifi = 9,
    later = 10,
    press_wireless_button = 11,
};

enum class ConnectionScenario : std::int32_t {
    unknown = 0,
    connect = 1,
    add = 2,
    reconfigure = 3,
    convert = 4,
};

enum class InstallType : std::int32_t {
    unknown = 0,
    msi = 1,
    exe = 2,
};

enum class Destination : std::int32_t {
    unknown = 0,
    folder = 1,
    email_mapi = 2,
    email_smtp = 3,
    cloud_googledrive = 4,
    cloud_dropbox = 5,
    cloud_box = 6,
    cloud_onedrive = 7,
};

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

enum class Shortcut : std::int32_t {
    unknown = 0,
    save_pdf = 1,
    save_jpg = 2,
    save_text = 3,
    email_pdf = 4,
    email_jpg = 5,
    send_cloud = 6,
    every_day_scan = 7,
    user = 8,
};

enum class ShortcutVariance : std::int32_t {
    unknown = 0,
    original = 1,
    original_one_off = 2,
    modified = 3,
    modified_one_off = 4,
    user = 5,
    user_one_off = 6,
};

enum class ColorMode : std::int32_t {
    unknown = 0,
    color = 1,
    gray = 2,
    halftone = 3,
    blackwhite = 4,
    auto_ = 5,
};

enum class ItemType : std::int32_t {
    unknown = 0,
    document = 1,
    photo = 2,
};

enum class PageSize : std::int32_t {
    unknown = 0,
    auto_ = 1,
    snap = 2,
    entirearea = 3,
    letter = 4,
    legal = 5,
    long_ = 6,
    extralong = 7,
    custom = 8,
    a4 = 9,
    size_4x6 = 10,
    size_5x7 = 11,
    size_8x10 = 12,
};

enum class Resolution : std::int32_t {
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

enum class Source : std::int32_t {
    unknown = 0,
    flatbed = 1,
    adf_simplex = 2,
    adf_duplex_book = 3,
    adf_duplex_tablet = 4,
};

enum class SourceItemType : std::int32_t {
    unknown = 0,
    document = 1,
    photo_single = 2,
    photo_multi = 3,
};

enum class SourceMimeType : std::int32_t {
    unknown = 0,
    application_pdf = 1,
    image_any = 2,
};

enum class SourceItemPrintSize : std::int32_t {
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

enum class SubsystemType : std::int32_t {
    unknown = 0,
    native = 1,
    ipp = 2,
};

/// The table that gives a record type its texts. Where two enumerations of the exports share the type, either
/// table serves: they agree on every text.
template <class Record>
inline constexpr const Enumeration* RecordTable = nullptr;

template <>
inline constexpr const Enumeration* RecordTable<CampaignType> = &Tables::AdType;
template <>
inline constexpr const Enumeration* RecordTable<ConfigurationSetting> = &Tables::ConfigurationSettingType;
template <>
inline constexpr const Enumeration* RecordTable<ConnectionMethod> = &Tables::ConnectionMethodType;
template <>
inline constexpr const Enumeration* RecordTable<ConnectionScenario> = &Tables::ConnectionScenarioType;
template <>
inline constexpr const Enumeration* RecordTable<InstallType> = &Tables::InstallType;
template <>
inline constexpr const Enumeration* RecordTable<Destination> = &Tables::FileDestinationType;
template <>
inline constexpr const Enumeration* RecordTable<MimeType> = &Tables::FileMimeType;
template <>
inline constexpr const Enumeration* RecordTable<Shortcut> = &Tables::FileShortcutType;
template <>
inline constexpr const Enumeration* RecordTable<ShortcutVariance> = &Tables::FileShortcutVarianceType;
template <>
inline constexpr const Enumeration* RecordTable<ColorMode> = &Tables::ScanColorModeType;
template <>
inline constexpr const Enumeration* RecordTable<ItemType> = &Tables::ScanItemType;
template <>
inline constexpr const Enumeration* RecordTable<PageSize> = &Tables::ScanPageSizeType;
template <>
inline constexpr const Enumeration* RecordTable<Resolution> = &Tables::ScanResolutionType;
template <>
inline constexpr const Enumeration* RecordTable<Source> = &Tables::ScanSourceType;
template <>
inline constexpr const Enumeration* RecordTable<SourceItemType> = &Tables::PrintItemType;
template <>
inline constexpr const Enumeration* RecordTable<SourceMimeType> = &Tables::PrintMimeType;
template <>
inline constexpr const Enumeration* RecordTable<SourceItemPrintSize> = &Tables::PrintPageSizeType;
template <>
inline constexpr const Enumeration* RecordTable<SubsystemType> = &Tables::PrintSubsystemType;

/// The text of a record value of an enumeration that has them. Never fails: a number outside the table gives
/// the undefined-value text.
std::wstring RecordText(const Enumeration& enumeration, std::int32_t recordValue);

template <class Record>
std::wstring RecordText(Record value) {
    static_assert(RecordTable<Record> != nullptr);
    return RecordText(*RecordTable<Record>, static_cast<std::int32_t>(value));
}

/// The text of an API value. Never fails: a number outside the table gives the undefined-value text.
std::wstring ApiText(const Enumeration& enumeration, std::int32_t apiValue);

/// The record value of an API value. Throws ArgumentOutOfRangeException for a number outside the table.
std::int32_t ToRecordValue(const Enumeration& enumeration, std::int32_t apiValue);

} // namespace Zuvan::Lumeq::Extra::Eventing
