// The vocabulary of the schema. Each enumeration has two numberings, one at the exports and one in the
// records, and one text for each value. Hosts and receivers depend on all three.
#pragma once

#include "LumeqLib/Extra/Eventing/EnumerationTable.h"

#include <Lumeq/LumeqApi.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace Zuvan::Lumeq::Extra::Eventing {

// The values in the records. Their numbers are the last column of the rows below. They have no enumerators,
// because no code names one: each is converted from a value of the exports.
enum class CampaignType : std::int32_t {};
enum class ConfigurationSetting : std::int32_t {};
enum class ConnectionMethod : std::int32_t {};
enum class ConnectionScenario : std::int32_t {};
enum class InstallType : std::int32_t {};
enum class Destination : std::int32_t {};
enum class MimeType : std::int32_t {};
enum class Shortcut : std::int32_t {};
enum class ShortcutVariance : std::int32_t {};
enum class ColorMode : std::int32_t {};
enum class ItemType : std::int32_t {};
enum class PageSize : std::int32_t {};
enum class Resolution : std::int32_t {};
enum class Source : std::int32_t {};
enum class SourceItemType : std::int32_t {};
enum class SourceMimeType : std::int32_t {};
enum class SourceItemPrintSize : std::int32_t {};
enum class SubsystemType : std::int32_t {};

// The formatter would indent the rows by the length of the type.
// clang-format off

/// One definition for each enumeration of the exports: its type there and in the records, its names in messages,
/// and its rows of API value, text and record value.
inline constexpr auto Enumerations = EnumerationList(
    Enumeration<API::AdType, CampaignType>(
        {L"adType", L"AdType", L"CampaignType"},
        {{0, L"unknown", 0}, {1, L"banner", 1}, {2, L"hyperlink", 2}, {3, L"tile", 3},
         {4, L"virtualalert", 4}}),
    Enumeration<API::ConfigurationSettingType, ConfigurationSetting>(
        {L"settingType", L"ConfigurationSettingType", L"ConfigurationSetting"},
        {{0, L"unknown", 0}, {1, L"pbut_consent_enable", 1}, {2, L"webservices_registration", 2}}),
    Enumeration<API::ConnectionMethodType, ConnectionMethod>(
        {L"methodType", L"ConnectionMethodType", L"ConnectionMethod"},
        {{0, L"unknown", 0}, {1, L"already_on_network", 3}, {2, L"auto_wireless_connect", 4},
         {3, L"ethernet", 2}, {4, L"frontpanel_setup_of_wireless", 6}, {5, L"later", 10},
         {6, L"press_wireless_button", 11}, {7, L"usb", 1}, {8, L"usb_plus_wifi", 8},
         {9, L"usb_setup_of_wireless", 5}, {10, L"usb_to_wifi", 9}, {11, L"wifi_direct", 7}}),
    Enumeration<API::ConnectionScenarioType, ConnectionScenario>(
        {L"scenarioType", L"ConnectionScenarioType", L"ConnectionScenario"},
        {{0, L"unknown", 0}, {1, L"add", 2}, {2, L"connect", 1}, {3, L"convert", 4},
         {4, L"reconfigure", 3}}),
    // Leaves the library as a number, so its record values have no texts. The same holds for WhyType.
    Enumeration<API::HowType, std::uint32_t>(
        {L"howType", L"HowType"},
        {{0, L"unknown", 9}, {1, L"cd_exe", 0}, {2, L"desktop_shortcut", 1}, {3, L"desktop_toast", 2},
         {4, L"dxp_link", 3}, {5, L"folder_exe", 4}, {6, L"pnp_inf", 5}, {7, L"smv_link", 6},
         {8, L"startmenu_shortcut", 7}, {9, L"udc_tile", 8}}),
    Enumeration<API::InstallType, InstallType>(
        {L"installType", L"InstallType", L"InstallType"},
        {{0, L"unknown", 0}, {1, L"exe", 2}, {2, L"msi", 1}}),
    Enumeration<API::WhyType, std::uint32_t>(
        {L"whyType", L"WhyType"},
        {{0, L"unknown", 4}, {1, L"add_device", 0}, {2, L"add_software", 1}, {3, L"reconfigure_device", 2},
         {4, L"start_app", 3}, {5, L"view_device", 5}, {6, L"view_device_error", 6},
         {7, L"view_device_supplies", 7}}),
    Enumeration<API::File::DestinationType, Destination>(
        {L"destinationType", L"File::DestinationType", L"Destination"},
        {{0, L"unknown", 0}, {1, L"cloud_box", 6}, {2, L"cloud_dropbox", 5}, {3, L"cloud_googledrive", 4},
         {4, L"cloud_onedrive", 7}, {5, L"email_mapi", 2}, {6, L"email_smtp", 3}, {7, L"folder", 1}}),
    Enumeration<API::File::MimeType, MimeType>(
        {L"mimeType", L"File::MimeType", L"MimeType"},
        {{0, L"unknown", 0}, {1, L"application/pdf", 1}, {2, L"application/pdfsearchable", 2},
         {3, L"image/jpg", 3}, {4, L"image/bmp", 4}, {5, L"image/tiff", 5}, {6, L"image/png", 6},
         {7, L"application/rtf", 7}, {8, L"text/unicode", 8}, {9, L"text/ansi", 9}, {10, L"text/utf8", 10}}),
    Enumeration<API::File::ShortcutType, Shortcut>(
        {L"shortcutType", L"File::ShortcutType", L"Shortcut"},
        {{0, L"unknown", 0}, {1, L"email_jpg", 5}, {2, L"email_pdf", 4}, {3, L"every_day_scan", 7},
         {4, L"save_jpg", 2}, {5, L"save_pdf", 1}, {6, L"save_text", 3}, {7, L"send_cloud", 6},
         {8, L"user", 8}}),
    Enumeration<API::File::ShortcutVarianceType, ShortcutVariance>(
        {L"varianceType", L"File::ShortcutVarianceType", L"ShortcutVariance"},
        {{0, L"unknown", 0}, {1, L"modified", 3}, {2, L"modified_one_off", 4}, {3, L"original", 1},
         {4, L"original_one_off", 2}, {5, L"user", 5}, {6, L"user_one_off", 6}}),
    // Its API text lacks the scope "Scan::". Readers of the log expect that.
    Enumeration<API::Scan::ColorModeType, ColorMode>(
        {L"colorModeType", L"Scan::ColorModeType", L"ColorMode", L"ColorModeType"},
        {{0, L"unknown", 0}, {1, L"auto", 5}, {2, L"blackwhite", 4}, {3, L"color", 1}, {4, L"gray", 2},
         {5, L"halftone", 3}}),
    Enumeration<API::Scan::ItemType, ItemType>(
        {L"itemType", L"Scan::ItemType", L"ItemType"},
        {{0, L"unknown", 0}, {1, L"document", 1}, {2, L"photo", 2}}),
    Enumeration<API::Scan::MimeType, MimeType>(
        {L"mimeType", L"Scan::MimeType", L"MimeType"},
        {{0, L"unknown", 0}, {1, L"application/pdf", 1}, {2, L"application/pdfsearchable", 2},
         {3, L"application/rtf", 7}, {4, L"image/bmp", 4}, {5, L"image/jpg", 3}, {6, L"image/png", 6},
         {7, L"image/tiff", 5}, {8, L"text/ansi", 9}, {9, L"text/unicode", 8}, {10, L"text/utf8", 10}}),
    Enumeration<API::Scan::PageSizeType, PageSize>(
        {L"pageSizeType", L"Scan::PageSizeType", L"PageSize"},
        {{0, L"unknown", 0}, {1, L"a4", 9}, {2, L"auto", 1}, {3, L"custom", 8}, {4, L"entirearea", 3},
         {5, L"extralong", 7}, {6, L"legal", 5}, {7, L"letter", 4}, {8, L"long", 6}, {9, L"size_4x6", 10},
         {10, L"size_5x7", 11}, {11, L"size_8x10", 12}, {12, L"snap", 2}}),
    Enumeration<API::Scan::ResolutionType, Resolution>(
        {L"resolutionType", L"Scan::ResolutionType", L"Resolution"},
        {{0, L"unknown", 0}, {1, L"dpi_75", 1}, {2, L"dpi_100", 2}, {3, L"dpi_200", 3}, {4, L"dpi_240", 4},
         {5, L"dpi_300", 5}, {6, L"dpi_400", 6}, {7, L"dpi_500", 7}, {8, L"dpi_600", 8},
         {9, L"dpi_1200", 9}, {10, L"dpi_2400", 10}, {11, L"dpi_4800", 11}}),
    Enumeration<API::Scan::ShortcutType, Shortcut>(
        {L"shortcutType", L"Scan::ShortcutType", L"Shortcut"},
        {{0, L"unknown", 0}, {1, L"email_jpg", 5}, {2, L"email_pdf", 4}, {3, L"every_day_scan", 7},
         {4, L"save_jpg", 2}, {5, L"save_pdf", 1}, {6, L"save_text", 3}, {7, L"send_cloud", 6},
         {8, L"user", 8}}),
    Enumeration<API::Scan::ShortcutVarianceType, ShortcutVariance>(
        {L"varianceType", L"Scan::ShortcutVarianceType", L"ShortcutVariance"},
        {{0, L"unknown", 0}, {1, L"modified", 3}, {2, L"modified_one_off", 4}, {3, L"original", 1},
         {4, L"original_one_off", 2}, {5, L"user", 5}, {6, L"user_one_off", 6}}),
    Enumeration<API::Scan::SourceType, Source>(
        {L"sourceType", L"Scan::SourceType", L"Source"},
        {{0, L"unknown", 0}, {1, L"adf_duplex_book", 3}, {2, L"adf_duplex_tablet", 4},
         {3, L"adf_simplex", 2}, {4, L"flatbed", 1}}),
    Enumeration<API::Print::ItemType, SourceItemType>(
        {L"itemType", L"Print::ItemType", L"SourceItemType"},
        {{0, L"unknown", 0}, {1, L"document", 1}, {2, L"photo/multi", 3}, {3, L"photo/single", 2}}),
    Enumeration<API::Print::MimeType, SourceMimeType>(
        {L"mimeType", L"Print::MimeType", L"SourceMimeType"},
        {{0, L"unknown", 0}, {1, L"application/pdf", 1}, {2, L"image/*", 2}}),
    Enumeration<API::Print::PageSizeType, SourceItemPrintSize>(
        {L"pageSizeType", L"Print::PageSizeType", L"SourceItemPrintSize"},
        {{0, L"unknown", 0}, {1, L"full", 1}, {2, L"size_3p5x5", 2}, {3, L"size_4x6", 3},
         {4, L"size_5x7", 4}, {5, L"size_8x10", 5}, {6, L"size_9x13_cm", 6}, {7, L"size_10x15_cm", 7},
         {8, L"size_13x18_cm", 8}}),
    Enumeration<API::Print::SubsystemType, SubsystemType>(
        {L"subsystemType", L"Print::SubsystemType", L"SubsystemType"},
        {{0, L"unknown", 0}, {1, L"ipp", 2}, {2, L"native", 1}}));

// clang-format on

// These three take an enumeration's position in the list. No template reads the list itself, because each
// file that does gets a copy of all its texts.

/// The text of a record value. Never fails: a number outside the rows has a text that says so.
std::wstring RecordText(std::size_t position, std::int32_t recordValue);

/// The text of an API value. Never fails: a number outside the rows has a text that says so.
std::wstring ApiText(std::size_t position, std::int32_t apiValue);

/// The record value of an API value. Throws ArgumentOutOfRangeException for a number outside the rows.
std::int32_t ToRecordValue(std::size_t position, std::int32_t apiValue);

template <class Record>
requires std::is_enum_v<Record> std::wstring RecordText(Record value) {
    return RecordText(decltype(Enumerations)::PositionOfRecord<Record>(), static_cast<std::int32_t>(value));
}

template <class Api>
std::wstring ApiText(Api value) {
    return ApiText(decltype(Enumerations)::PositionOfApi<Api>(), static_cast<std::int32_t>(value));
}

template <class Api>
auto ToRecord(Api value) {
    using Record = decltype(Enumerations)::RecordOf<Api>;
    return static_cast<Record>(
        ToRecordValue(decltype(Enumerations)::PositionOfApi<Api>(), static_cast<std::int32_t>(value)));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
