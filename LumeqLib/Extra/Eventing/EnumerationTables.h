// The vocabulary of the schema: one table for each enumeration of the exported interface, and the odd stems
// of its messages beside it. Data only, so that both the event classes and the exports can include it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace Zuvan::Lumeq::Extra::Eventing {

/// One value: its number at the exports, its text on the wire, its number in the record classes.
struct EnumerationRow {
    std::int32_t apiValue;
    const wchar_t* text;
    std::int32_t recordValue;
};

struct Enumeration {
    std::span<const EnumerationRow> rows; ///< Row i has API value i.
    const wchar_t* paramName;             ///< Of the exception for an undefined value.
    const wchar_t* thrownStem;            ///< Begins the message of that exception.
    const wchar_t* apiTextStem;           ///< Begins the text of an undefined API value.
    const wchar_t* recordTextStem; ///< Begins the text of an undefined record value; null: no record text.
};

namespace Tables {

inline constexpr EnumerationRow AdTypeRows[] = {
    {0, L"unknown", 0}, {1, L"banner", 1}, {2, L"hyperlink", 2}, {3, L"tile", 3}, {4, L"virtualalert", 4},
};
inline constexpr Enumeration AdType{AdTypeRows, L"adType", L"[Undefined AdType: ",
                                    L"[Undefined AdType value: ", L"[Undefined CampaignType value: "};

inline constexpr EnumerationRow ConfigurationSettingTypeRows[] = {
    {0, L"unknown", 0},
    {1, L"pbut_consent_enable", 1},
    {2, L"webservices_registration", 2},
};
inline constexpr Enumeration ConfigurationSettingType{
    ConfigurationSettingTypeRows, L"settingType", L"[Undefined ConfigurationSettingType: ",
    L"[Undefined ConfigurationSettingType value: ", L"[Undefined ConfigurationSetting value: "};

inline constexpr EnumerationRow ConnectionMethodTypeRows[] = {
    {0, L"unknown", 0},
    {1, L"already_on_network", 3},
    {2, L"auto_wireless_connect", 4},
    {3, L"ethernet", 2},
    {4, L"frontpanel_setup_of_wireless", 6},
    {5, L"later", 10},
    {6, L"press_wireless_button", 11},
    {7, L"usb", 1},
    {8, L"usb_plus_wifi", 8},
    {9, L"usb_setup_of_wireless", 5},
    {10, L"usb_to_wifi", 9},
    {11, L"wifi_direct", 7},
};
inline constexpr Enumeration ConnectionMethodType{
    ConnectionMethodTypeRows, L"methodType", L"[Undefined ConnectionMethodType: ",
    L"[Undefined ConnectionMethodType value: ", L"[Undefined ConnectionMethod value: "};

inline constexpr EnumerationRow ConnectionScenarioTypeRows[] = {
    {0, L"unknown", 0}, {1, L"add", 2}, {2, L"connect", 1}, {3, L"convert", 4}, {4, L"reconfigure", 3},
};
inline constexpr Enumeration ConnectionScenarioType{
    ConnectionScenarioTypeRows, L"scenarioType", L"[Undefined ConnectionScenarioType: ",
    L"[Undefined ConnectionScenarioType value: ", L"[Undefined ConnectionScenario value: "};

inline constexpr EnumerationRow HowTypeRows[] = {
    {0, L"unknown", 9},       {1, L"cd_exe", 0},   {2, L"desktop_shortcut", 1},
    {3, L"desktop_toast", 2}, {4, L"dxp_link", 3}, {5, L"folder_exe", 4},
    {6, L"pnp_inf", 5},       {7, L"smv_link", 6}, {8, L"startmenu_shortcut", 7},
    {9, L"udc_tile", 8},
};
inline constexpr Enumeration HowType{HowTypeRows, L"howType", L"[Undefined HowType: ",
                                     L"[Undefined HowType value: ", nullptr};

inline constexpr EnumerationRow InstallTypeRows[] = {
    {0, L"unknown", 0},
    {1, L"exe", 2},
    {2, L"msi", 1},
};
inline constexpr Enumeration InstallType{InstallTypeRows, L"installType", L"[Undefined InstallType: ",
                                         L"[Undefined InstallType value: ",
                                         L"[Undefined InstallType value: "};

inline constexpr EnumerationRow WhyTypeRows[] = {
    {0, L"unknown", 4},           {1, L"add_device", 0},
    {2, L"add_software", 1},      {3, L"reconfigure_device", 2},
    {4, L"start_app", 3},         {5, L"view_device", 5},
    {6, L"view_device_error", 6}, {7, L"view_device_supplies", 7},
};
inline constexpr Enumeration WhyType{WhyTypeRows, L"whyType", L"[Undefined WhyType: ",
                                     L"[Undefined WhyType value: ", nullptr};

inline constexpr EnumerationRow FileDestinationTypeRows[] = {
    {0, L"unknown", 0},        {1, L"cloud_box", 6},  {2, L"cloud_dropbox", 5}, {3, L"cloud_googledrive", 4},
    {4, L"cloud_onedrive", 7}, {5, L"email_mapi", 2}, {6, L"email_smtp", 3},    {7, L"folder", 1},
};
inline constexpr Enumeration FileDestinationType{
    FileDestinationTypeRows, L"destinationType", L"[Undefined File::DestinationType: ",
    L"[Undefined File::DestinationType value: ", L"[Undefined Destination value: "};

inline constexpr EnumerationRow FileMimeTypeRows[] = {
    {0, L"unknown", 0},   {1, L"application/pdf", 1}, {2, L"application/pdfsearchable", 2},
    {3, L"image/jpg", 3}, {4, L"image/bmp", 4},       {5, L"image/tiff", 5},
    {6, L"image/png", 6}, {7, L"application/rtf", 7}, {8, L"text/unicode", 8},
    {9, L"text/ansi", 9}, {10, L"text/utf8", 10},
};
inline constexpr Enumeration FileMimeType{FileMimeTypeRows, L"mimeType", L"[Undefined File::MimeType: ",
                                          L"[Undefined File::MimeType value: ",
                                          L"[Undefined MimeType value: "};

inline constexpr EnumerationRow FileShortcutTypeRows[] = {
    {0, L"unknown", 0},        {1, L"email_jpg", 5},  {2, L"email_pdf", 4},
    {3, L"every_day_scan", 7}, {4, L"save_jpg", 2},   {5, L"save_pdf", 1},
    {6, L"save_text", 3},      {7, L"send_cloud", 6}, {8, L"user", 8},
};
inline constexpr Enumeration FileShortcutType{
    FileShortcutTypeRows, L"shortcutType", L"[Undefined File::ShortcutType: ",
    L"[Undefined File::ShortcutType value: ", L"[Undefined Shortcut value: "};

inline constexpr EnumerationRow FileShortcutVarianceTypeRows[] = {
    {0, L"unknown", 0},          {1, L"modified", 3}, {2, L"modified_one_off", 4}, {3, L"original", 1},
    {4, L"original_one_off", 2}, {5, L"user", 5},     {6, L"user_one_off", 6},
};
inline constexpr Enumeration FileShortcutVarianceType{
    FileShortcutVarianceTypeRows, L"varianceType", L"[Undefined File::ShortcutVarianceType: ",
    L"[Undefined File::ShortcutVarianceType value: ", L"[Undefined ShortcutVariance value: "};

inline constexpr EnumerationRow ScanColorModeTypeRows[] = {
    {0, L"unknown", 0}, {1, L"auto", 5}, {2, L"blackwhite", 4},
    {3, L"color", 1},   {4, L"gray", 2}, {5, L"halftone", 3},
};
inline constexpr Enumeration ScanColorModeType{
    ScanColorModeTypeRows, L"colorModeType", L"[Undefined Scan::ColorModeType: ",
    L"[Undefined ColorModeType value: ", L"[Undefined ColorMode value: "};

inline constexpr EnumerationRow ScanItemTypeRows[] = {
    {0, L"unknown", 0},
    {1, L"document", 1},
    {2, L"photo", 2},
};
inline constexpr Enumeration ScanItemType{ScanItemTypeRows, L"itemType", L"[Undefined Scan::ItemType: ",
                                          L"[Undefined Scan::ItemType value: ",
                                          L"[Undefined ItemType value: "};

inline constexpr EnumerationRow ScanMimeTypeRows[] = {
    {0, L"unknown", 0},         {1, L"application/pdf", 1}, {2, L"application/pdfsearchable", 2},
    {3, L"application/rtf", 7}, {4, L"image/bmp", 4},       {5, L"image/jpg", 3},
    {6, L"image/png", 6},       {7, L"image/tiff", 5},      {8, L"text/ansi", 9},
    {9, L"text/unicode", 8},    {10, L"text/utf8", 10},
};
inline constexpr Enumeration ScanMimeType{ScanMimeTypeRows, L"mimeType", L"[Undefined Scan::MimeType: ",
                                          L"[Undefined Scan::MimeType value: ",
                                          L"[Undefined MimeType value: "};

inline constexpr EnumerationRow ScanPageSizeTypeRows[] = {
    {0, L"unknown", 0},    {1, L"a4", 9},        {2, L"auto", 1},       {3, L"custom", 8},
    {4, L"entirearea", 3}, {5, L"extralong", 7}, {6, L"legal", 5},      {7, L"letter", 4},
    {8, L"long", 6},       {9, L"size_4x6", 10}, {10, L"size_5x7", 11}, {11, L"size_8x10", 12},
    {12, L"snap", 2},
};
inline constexpr Enumeration ScanPageSizeType{
    ScanPageSizeTypeRows, L"pageSizeType", L"[Undefined Scan::PageSizeType: ",
    L"[Undefined Scan::PageSizeType value: ", L"[Undefined PageSize value: "};

inline constexpr EnumerationRow ScanResolutionTypeRows[] = {
    {0, L"unknown", 0}, {1, L"dpi_75", 1},   {2, L"dpi_100", 2},    {3, L"dpi_200", 3},
    {4, L"dpi_240", 4}, {5, L"dpi_300", 5},  {6, L"dpi_400", 6},    {7, L"dpi_500", 7},
    {8, L"dpi_600", 8}, {9, L"dpi_1200", 9}, {10, L"dpi_2400", 10}, {11, L"dpi_4800", 11},
};
inline constexpr Enumeration ScanResolutionType{
    ScanResolutionTypeRows, L"resolutionType", L"[Undefined Scan::ResolutionType: ",
    L"[Undefined Scan::ResolutionType value: ", L"[Undefined Resolution value: "};

inline constexpr EnumerationRow ScanShortcutTypeRows[] = {
    {0, L"unknown", 0},        {1, L"email_jpg", 5},  {2, L"email_pdf", 4},
    {3, L"every_day_scan", 7}, {4, L"save_jpg", 2},   {5, L"save_pdf", 1},
    {6, L"save_text", 3},      {7, L"send_cloud", 6}, {8, L"user", 8},
};
inline constexpr Enumeration ScanShortcutType{
    ScanShortcutTypeRows, L"shortcutType", L"[Undefined Scan::ShortcutType: ",
    L"[Undefined Scan::ShortcutType value: ", L"[Undefined Shortcut value: "};

inline constexpr EnumerationRow ScanShortcutVarianceTypeRows[] = {
    {0, L"unknown", 0},          {1, L"modified", 3}, {2, L"modified_one_off", 4}, {3, L"original", 1},
    {4, L"original_one_off", 2}, {5, L"user", 5},     {6, L"user_one_off", 6},
};
inline constexpr Enumeration ScanShortcutVarianceType{
    ScanShortcutVarianceTypeRows, L"varianceType", L"[Undefined Scan::ShortcutVarianceType: ",
    L"[Undefined Scan::ShortcutVarianceType value: ", L"[Undefined ShortcutVariance value: "};

inline constexpr EnumerationRow ScanSourceTypeRows[] = {
    {0, L"unknown", 0},     {1, L"adf_duplex_book", 3}, {2, L"adf_duplex_tablet", 4},
    {3, L"adf_simplex", 2}, {4, L"flatbed", 1},
};
inline constexpr Enumeration ScanSourceType{
    ScanSourceTypeRows, L"sourceType", L"[Undefined Scan::SourceType: ",
    L"[Undefined Scan::SourceType value: ", L"[Undefined Source value: "};

inline constexpr EnumerationRow PrintItemTypeRows[] = {
    {0, L"unknown", 0},
    {1, L"document", 1},
    {2, L"photo/multi", 3},
    {3, L"photo/single", 2},
};
inline constexpr Enumeration PrintItemType{PrintItemTypeRows, L"itemType", L"[Undefined Print::ItemType: ",
                                           L"[Undefined Print::ItemType value: ",
                                           L"[Undefined SourceItemType value: "};

inline constexpr EnumerationRow PrintMimeTypeRows[] = {
    {0, L"unknown", 0},
    {1, L"application/pdf", 1},
    {2, L"image/*", 2},
};
inline constexpr Enumeration PrintMimeType{PrintMimeTypeRows, L"mimeType", L"[Undefined Print::MimeType: ",
                                           L"[Undefined Print::MimeType value: ",
                                           L"[Undefined SourceMimeType value: "};

inline constexpr EnumerationRow PrintPageSizeTypeRows[] = {
    {0, L"unknown", 0},      {1, L"full", 1},          {2, L"size_3p5x5", 2},
    {3, L"size_4x6", 3},     {4, L"size_5x7", 4},      {5, L"size_8x10", 5},
    {6, L"size_9x13_cm", 6}, {7, L"size_10x15_cm", 7}, {8, L"size_13x18_cm", 8},
};
inline constexpr Enumeration PrintPageSizeType{
    PrintPageSizeTypeRows, L"pageSizeType", L"[Undefined Print::PageSizeType: ",
    L"[Undefined Print::PageSizeType value: ", L"[Undefined SourceItemPrintSize value: "};

inline constexpr EnumerationRow PrintSubsystemTypeRows[] = {
    {0, L"unknown", 0},
    {1, L"ipp", 2},
    {2, L"native", 1},
};
inline constexpr Enumeration PrintSubsystemType{
    PrintSubsystemTypeRows, L"subsystemType", L"[Undefined Print::SubsystemType: ",
    L"[Undefined Print::SubsystemType value: ", L"[Undefined SubsystemType value: "};

} // namespace Tables

namespace TableChecks {

constexpr bool RowsAreNumberedFromZero(const Enumeration& enumeration) {
    for (std::size_t i = 0; i < enumeration.rows.size(); ++i)
        if (enumeration.rows[i].apiValue != static_cast<std::int32_t>(i))
            return false;
    return true;
}

constexpr bool RecordValuesAreUnique(const Enumeration& enumeration) {
    for (const EnumerationRow& row : enumeration.rows)
        for (const EnumerationRow& other : enumeration.rows)
            if (&row != &other && row.recordValue == other.recordValue)
                return false;
    return true;
}

constexpr bool RecordTextsAgree(const Enumeration& left, const Enumeration& right) {
    for (const EnumerationRow& row : left.rows)
        for (const EnumerationRow& other : right.rows)
            if (row.recordValue == other.recordValue && std::wstring_view(row.text) != other.text)
                return false;
    return left.rows.size() == right.rows.size() &&
           std::wstring_view(left.recordTextStem) == right.recordTextStem;
}

constexpr bool IsSound(const Enumeration& enumeration) {
    return RowsAreNumberedFromZero(enumeration) && RecordValuesAreUnique(enumeration);
}

static_assert(IsSound(Tables::AdType));
static_assert(IsSound(Tables::ConfigurationSettingType));
static_assert(IsSound(Tables::ConnectionMethodType));
static_assert(IsSound(Tables::ConnectionScenarioType));
static_assert(IsSound(Tables::HowType));
static_assert(IsSound(Tables::InstallType));
static_assert(IsSound(Tables::WhyType));
static_assert(IsSound(Tables::FileDestinationType));
static_assert(IsSound(Tables::FileMimeType));
static_assert(IsSound(Tables::FileShortcutType));
static_assert(IsSound(Tables::FileShortcutVarianceType));
static_assert(IsSound(Tables::ScanColorModeType));
static_assert(IsSound(Tables::ScanItemType));
static_assert(IsSound(Tables::ScanMimeType));
static_assert(IsSound(Tables::ScanPageSizeType));
static_assert(IsSound(Tables::ScanResolutionType));
static_assert(IsSound(Tables::ScanShortcutType));
static_assert(IsSound(Tables::ScanShortcutVarianceType));
static_assert(IsSound(Tables::ScanSourceType));
static_assert(IsSound(Tables::PrintItemType));
static_assert(IsSound(Tables::PrintMimeType));
static_assert(IsSound(Tables::PrintPageSizeType));
static_assert(IsSound(Tables::PrintSubsystemType));

// Enumerations of the exports that share a record type.
static_assert(RecordTextsAgree(Tables::FileMimeType, Tables::ScanMimeType));
static_assert(RecordTextsAgree(Tables::FileShortcutType, Tables::ScanShortcutType));
static_assert(RecordTextsAgree(Tables::FileShortcutVarianceType, Tables::ScanShortcutVarianceType));

} // namespace TableChecks
} // namespace Zuvan::Lumeq::Extra::Eventing
