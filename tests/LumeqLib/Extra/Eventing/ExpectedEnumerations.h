// What every enumeration must be. A literal copy, so that a slip in the tables cannot pass.
#pragma once

#include "LumeqLib/Extra/Eventing/Enumerations.h"

#include <cstdint>

namespace Zuvan::Lumeq::Expected {

namespace Eventing = Extra::Eventing;

template <class Api, class Record>
struct ExpectedRow {
    Api apiEnumerator;
    std::int32_t apiValue;
    const wchar_t* text;
    std::int32_t recordValue;
};

struct ExpectedTexts {
    const wchar_t* paramName;
    const wchar_t* thrownStem;
    const wchar_t* apiStem;
    const wchar_t* recordStem; ///< Null: the record value leaves the library as a number.
};

inline constexpr ExpectedRow<API::AdType, Eventing::CampaignType> AdTypeRows[] = {
    {API::AdType::unknown, 0, L"unknown", 0},           {API::AdType::banner, 1, L"banner", 1},
    {API::AdType::hyperlink, 2, L"hyperlink", 2},       {API::AdType::tile, 3, L"tile", 3},
    {API::AdType::virtualalert, 4, L"virtualalert", 4},
};
inline constexpr ExpectedTexts AdTypeTexts{L"adType", L"[Undefined AdType: ", L"[Undefined AdType value: ",
                                           L"[Undefined CampaignType value: "};

inline constexpr ExpectedRow<API::ConfigurationSettingType, Eventing::ConfigurationSetting>
    ConfigurationSettingTypeRows[] = {
        {API::ConfigurationSettingType::unknown, 0, L"unknown", 0},
        {API::ConfigurationSettingType::pbut_consent_enable, 1, L"pbut_consent_enable", 1},
        {API::ConfigurationSettingType::webservices_registration, 2, L"webservices_registration", 2},
};
inline constexpr ExpectedTexts ConfigurationSettingTypeTexts{
    L"settingType", L"[Undefined ConfigurationSettingType: ", L"[Undefined ConfigurationSettingType value: ",
    L"[Undefined ConfigurationSetting value: "};

inline constexpr ExpectedRow<API::ConnectionMethodType, Eventing::ConnectionMethod>
    ConnectionMethodTypeRows[] = {
        {API::ConnectionMethodType::unknown, 0, L"unknown", 0},
        {API::ConnectionMethodType::already_on_network, 1, L"already_on_network", 3},
        {API::ConnectionMethodType::auto_wireless_connect, 2, L"auto_wireless_connect", 4},
        {API::ConnectionMethodType::ethernet, 3, L"ethernet", 2},
        {API::ConnectionMethodType::frontpanel_setup_of_wireless, 4, L"frontpanel_setup_of_wireless", 6},
        {API::ConnectionMethodType::later, 5, L"later", 10},
        {API::ConnectionMethodType::press_wireless_button, 6, L"press_wireless_button", 11},
        {API::ConnectionMethodType::usb, 7, L"usb", 1},
        {API::ConnectionMethodType::usb_plus_wifi, 8, L"usb_plus_wifi", 8},
        {API::ConnectionMethodType::usb_setup_of_wireless, 9, L"usb_setup_of_wireless", 5},
        {API::ConnectionMethodType::usb_to_wifi, 10, L"usb_to_wifi", 9},
        {API::ConnectionMethodType::wifi_direct, 11, L"wifi_direct", 7},
};
inline constexpr ExpectedTexts ConnectionMethodTypeTexts{L"methodType", L"[Undefined ConnectionMethodType: ",
                                                         L"[Undefined ConnectionMethodType value: ",
                                                         L"[Undefined ConnectionMethod value: "};

inline constexpr ExpectedRow<API::ConnectionScenarioType, Eventing::ConnectionScenario>
    ConnectionScenarioTypeRows[] = {
        {API::ConnectionScenarioType::unknown, 0, L"unknown", 0},
        {API::ConnectionScenarioType::add, 1, L"add", 2},
        {API::ConnectionScenarioType::connect, 2, L"connect", 1},
        {API::ConnectionScenarioType::convert, 3, L"convert", 4},
        {API::ConnectionScenarioType::reconfigure, 4, L"reconfigure", 3},
};
inline constexpr ExpectedTexts ConnectionScenarioTypeTexts{
    L"scenarioType", L"[Undefined ConnectionScenarioType: ", L"[Undefined ConnectionScenarioType value: ",
    L"[Undefined ConnectionScenario value: "};

inline constexpr ExpectedRow<API::HowType, std::uint32_t> HowTypeRows[] = {
    {API::HowType::unknown, 0, L"unknown", 9},
    {API::HowType::cd_exe, 1, L"cd_exe", 0},
    {API::HowType::desktop_shortcut, 2, L"desktop_shortcut", 1},
    {API::HowType::desktop_toast, 3, L"desktop_toast", 2},
    {API::HowType::dxp_link, 4, L"dxp_link", 3},
    {API::HowType::folder_exe, 5, L"folder_exe", 4},
    {API::HowType::pnp_inf, 6, L"pnp_inf", 5},
    {API::HowType::smv_link, 7, L"smv_link", 6},
    {API::HowType::startmenu_shortcut, 8, L"startmenu_shortcut", 7},
    {API::HowType::udc_tile, 9, L"udc_tile", 8},
};
inline constexpr ExpectedTexts HowTypeTexts{L"howType", L"[Undefined HowType: ",
                                            L"[Undefined HowType value: ", nullptr};

inline constexpr ExpectedRow<API::InstallType, Eventing::InstallType> InstallTypeRows[] = {
    {API::InstallType::unknown, 0, L"unknown", 0},
    {API::InstallType::exe, 1, L"exe", 2},
    {API::InstallType::msi, 2, L"msi", 1},
};
inline constexpr ExpectedTexts InstallTypeTexts{L"installType", L"[Undefined InstallType: ",
                                                L"[Undefined InstallType value: ",
                                                L"[Undefined InstallType value: "};

inline constexpr ExpectedRow<API::WhyType, std::uint32_t> WhyTypeRows[] = {
    {API::WhyType::unknown, 0, L"unknown", 4},
    {API::WhyType::add_device, 1, L"add_device", 0},
    {API::WhyType::add_software, 2, L"add_software", 1},
    {API::WhyType::reconfigure_device, 3, L"reconfigure_device", 2},
    {API::WhyType::start_app, 4, L"start_app", 3},
    {API::WhyType::view_device, 5, L"view_device", 5},
    {API::WhyType::view_device_error, 6, L"view_device_error", 6},
    {API::WhyType::view_device_supplies, 7, L"view_device_supplies", 7},
};
inline constexpr ExpectedTexts WhyTypeTexts{L"whyType", L"[Undefined WhyType: ",
                                            L"[Undefined WhyType value: ", nullptr};

inline constexpr ExpectedRow<API::File::DestinationType, Eventing::Destination> FileDestinationTypeRows[] = {
    {API::File::DestinationType::unknown, 0, L"unknown", 0},
    {API::File::DestinationType::cloud_box, 1, L"cloud_box", 6},
    {API::File::DestinationType::cloud_dropbox, 2, L"cloud_dropbox", 5},
    {API::File::DestinationType::cloud_googledrive, 3, L"cloud_googledrive", 4},
    {API::File::DestinationType::cloud_onedrive, 4, L"cloud_onedrive", 7},
    {API::File::DestinationType::email_mapi, 5, L"email_mapi", 2},
    {API::File::DestinationType::email_smtp, 6, L"email_smtp", 3},
    {API::File::DestinationType::folder, 7, L"folder", 1},
};
inline constexpr ExpectedTexts FileDestinationTypeTexts{
    L"destinationType", L"[Undefined File::DestinationType: ", L"[Undefined File::DestinationType value: ",
    L"[Undefined Destination value: "};

inline constexpr ExpectedRow<API::File::MimeType, Eventing::MimeType> FileMimeTypeRows[] = {
    {API::File::MimeType::unknown, 0, L"unknown", 0},
    {API::File::MimeType::application_pdf, 1, L"application/pdf", 1},
    {API::File::MimeType::application_pdfsearchable, 2, L"application/pdfsearchable", 2},
    {API::File::MimeType::image_jpg, 3, L"image/jpg", 3},
    {API::File::MimeType::image_bmp, 4, L"image/bmp", 4},
    {API::File::MimeType::image_tiff, 5, L"image/tiff", 5},
    {API::File::MimeType::image_png, 6, L"image/png", 6},
    {API::File::MimeType::application_rtf, 7, L"application/rtf", 7},
    {API::File::MimeType::text_unicode, 8, L"text/unicode", 8},
    {API::File::MimeType::text_ansi, 9, L"text/ansi", 9},
    {API::File::MimeType::text_utf8, 10, L"text/utf8", 10},
};
inline constexpr ExpectedTexts FileMimeTypeTexts{L"mimeType", L"[Undefined File::MimeType: ",
                                                 L"[Undefined File::MimeType value: ",
                                                 L"[Undefined MimeType value: "};

inline constexpr ExpectedRow<API::File::ShortcutType, Eventing::Shortcut> FileShortcutTypeRows[] = {
    {API::File::ShortcutType::unknown, 0, L"unknown", 0},
    {API::File::ShortcutType::email_jpg, 1, L"email_jpg", 5},
    {API::File::ShortcutType::email_pdf, 2, L"email_pdf", 4},
    {API::File::ShortcutType::every_day_scan, 3, L"every_day_scan", 7},
    {API::File::ShortcutType::save_jpg, 4, L"save_jpg", 2},
    {API::File::ShortcutType::save_pdf, 5, L"save_pdf", 1},
    {API::File::ShortcutType::save_text, 6, L"save_text", 3},
    {API::File::ShortcutType::send_cloud, 7, L"send_cloud", 6},
    {API::File::ShortcutType::user, 8, L"user", 8},
};
inline constexpr ExpectedTexts FileShortcutTypeTexts{L"shortcutType", L"[Undefined File::ShortcutType: ",
                                                     L"[Undefined File::ShortcutType value: ",
                                                     L"[Undefined Shortcut value: "};

inline constexpr ExpectedRow<API::File::ShortcutVarianceType, Eventing::ShortcutVariance>
    FileShortcutVarianceTypeRows[] = {
        {API::File::ShortcutVarianceType::unknown, 0, L"unknown", 0},
        {API::File::ShortcutVarianceType::modified, 1, L"modified", 3},
        {API::File::ShortcutVarianceType::modified_one_off, 2, L"modified_one_off", 4},
        {API::File::ShortcutVarianceType::original, 3, L"original", 1},
        {API::File::ShortcutVarianceType::original_one_off, 4, L"original_one_off", 2},
        {API::File::ShortcutVarianceType::user, 5, L"user", 5},
        {API::File::ShortcutVarianceType::user_one_off, 6, L"user_one_off", 6},
};
inline constexpr ExpectedTexts FileShortcutVarianceTypeTexts{
    L"varianceType", L"[Undefined File::ShortcutVarianceType: ",
    L"[Undefined File::ShortcutVarianceType value: ", L"[Undefined ShortcutVariance value: "};

inline constexpr ExpectedRow<API::Scan::ColorModeType, Eventing::ColorMode> ScanColorModeTypeRows[] = {
    {API::Scan::ColorModeType::unknown, 0, L"unknown", 0},
    {API::Scan::ColorModeType::auto_, 1, L"auto", 5},
    {API::Scan::ColorModeType::blackwhite, 2, L"blackwhite", 4},
    {API::Scan::ColorModeType::color, 3, L"color", 1},
    {API::Scan::ColorModeType::gray, 4, L"gray", 2},
    {API::Scan::ColorModeType::halftone, 5, L"halftone", 3},
};
inline constexpr ExpectedTexts ScanColorModeTypeTexts{L"colorModeType", L"[Undefined Scan::ColorModeType: ",
                                                      L"[Undefined ColorModeType value: ",
                                                      L"[Undefined ColorMode value: "};

inline constexpr ExpectedRow<API::Scan::ItemType, Eventing::ItemType> ScanItemTypeRows[] = {
    {API::Scan::ItemType::unknown, 0, L"unknown", 0},
    {API::Scan::ItemType::document, 1, L"document", 1},
    {API::Scan::ItemType::photo, 2, L"photo", 2},
};
inline constexpr ExpectedTexts ScanItemTypeTexts{L"itemType", L"[Undefined Scan::ItemType: ",
                                                 L"[Undefined Scan::ItemType value: ",
                                                 L"[Undefined ItemType value: "};

inline constexpr ExpectedRow<API::Scan::MimeType, Eventing::MimeType> ScanMimeTypeRows[] = {
    {API::Scan::MimeType::unknown, 0, L"unknown", 0},
    {API::Scan::MimeType::application_pdf, 1, L"application/pdf", 1},
    {API::Scan::MimeType::application_pdfsearchable, 2, L"application/pdfsearchable", 2},
    {API::Scan::MimeType::application_rtf, 3, L"application/rtf", 7},
    {API::Scan::MimeType::image_bmp, 4, L"image/bmp", 4},
    {API::Scan::MimeType::image_jpg, 5, L"image/jpg", 3},
    {API::Scan::MimeType::image_png, 6, L"image/png", 6},
    {API::Scan::MimeType::image_tiff, 7, L"image/tiff", 5},
    {API::Scan::MimeType::text_ansi, 8, L"text/ansi", 9},
    {API::Scan::MimeType::text_unicode, 9, L"text/unicode", 8},
    {API::Scan::MimeType::text_utf8, 10, L"text/utf8", 10},
};
inline constexpr ExpectedTexts ScanMimeTypeTexts{L"mimeType", L"[Undefined Scan::MimeType: ",
                                                 L"[Undefined Scan::MimeType value: ",
                                                 L"[Undefined MimeType value: "};

inline constexpr ExpectedRow<API::Scan::PageSizeType, Eventing::PageSize> ScanPageSizeTypeRows[] = {
    {API::Scan::PageSizeType::unknown, 0, L"unknown", 0},
    {API::Scan::PageSizeType::a4, 1, L"a4", 9},
    {API::Scan::PageSizeType::auto_, 2, L"auto", 1},
    {API::Scan::PageSizeType::custom, 3, L"custom", 8},
    {API::Scan::PageSizeType::entirearea, 4, L"entirearea", 3},
    {API::Scan::PageSizeType::extralong, 5, L"extralong", 7},
    {API::Scan::PageSizeType::legal, 6, L"legal", 5},
    {API::Scan::PageSizeType::letter, 7, L"letter", 4},
    {API::Scan::PageSizeType::long_, 8, L"long", 6},
    {API::Scan::PageSizeType::size_4x6, 9, L"size_4x6", 10},
    {API::Scan::PageSizeType::size_5x7, 10, L"size_5x7", 11},
    {API::Scan::PageSizeType::size_8x10, 11, L"size_8x10", 12},
    {API::Scan::PageSizeType::snap, 12, L"snap", 2},
};
inline constexpr ExpectedTexts ScanPageSizeTypeTexts{L"pageSizeType", L"[Undefined Scan::PageSizeType: ",
                                                     L"[Undefined Scan::PageSizeType value: ",
                                                     L"[Undefined PageSize value: "};

inline constexpr ExpectedRow<API::Scan::ResolutionType, Eventing::Resolution> ScanResolutionTypeRows[] = {
    {API::Scan::ResolutionType::unknown, 0, L"unknown", 0},
    {API::Scan::ResolutionType::dpi_75, 1, L"dpi_75", 1},
    {API::Scan::ResolutionType::dpi_100, 2, L"dpi_100", 2},
    {API::Scan::ResolutionType::dpi_200, 3, L"dpi_200", 3},
    {API::Scan::ResolutionType::dpi_240, 4, L"dpi_240", 4},
    {API::Scan::ResolutionType::dpi_300, 5, L"dpi_300", 5},
    {API::Scan::ResolutionType::dpi_400, 6, L"dpi_400", 6},
    {API::Scan::ResolutionType::dpi_500, 7, L"dpi_500", 7},
    {API::Scan::ResolutionType::dpi_600, 8, L"dpi_600", 8},
    {API::Scan::ResolutionType::dpi_1200, 9, L"dpi_1200", 9},
    {API::Scan::ResolutionType::dpi_2400, 10, L"dpi_2400", 10},
    {API::Scan::ResolutionType::dpi_4800, 11, L"dpi_4800", 11},
};
inline constexpr ExpectedTexts ScanResolutionTypeTexts{
    L"resolutionType", L"[Undefined Scan::ResolutionType: ", L"[Undefined Scan::ResolutionType value: ",
    L"[Undefined Resolution value: "};

inline constexpr ExpectedRow<API::Scan::ShortcutType, Eventing::Shortcut> ScanShortcutTypeRows[] = {
    {API::Scan::ShortcutType::unknown, 0, L"unknown", 0},
    {API::Scan::ShortcutType::email_jpg, 1, L"email_jpg", 5},
    {API::Scan::ShortcutType::email_pdf, 2, L"email_pdf", 4},
    {API::Scan::ShortcutType::every_day_scan, 3, L"every_day_scan", 7},
    {API::Scan::ShortcutType::save_jpg, 4, L"save_jpg", 2},
    {API::Scan::ShortcutType::save_pdf, 5, L"save_pdf", 1},
    {API::Scan::ShortcutType::save_text, 6, L"save_text", 3},
    {API::Scan::ShortcutType::send_cloud, 7, L"send_cloud", 6},
    {API::Scan::ShortcutType::user, 8, L"user", 8},
};
inline constexpr ExpectedTexts ScanShortcutTypeTexts{L"shortcutType", L"[Undefined Scan::ShortcutType: ",
                                                     L"[Undefined Scan::ShortcutType value: ",
                                                     L"[Undefined Shortcut value: "};

inline constexpr ExpectedRow<API::Scan::ShortcutVarianceType, Eventing::ShortcutVariance>
    ScanShortcutVarianceTypeRows[] = {
        {API::Scan::ShortcutVarianceType::unknown, 0, L"unknown", 0},
        {API::Scan::ShortcutVarianceType::modified, 1, L"modified", 3},
        {API::Scan::ShortcutVarianceType::modified_one_off, 2, L"modified_one_off", 4},
        {API::Scan::ShortcutVarianceType::original, 3, L"original", 1},
        {API::Scan::ShortcutVarianceType::original_one_off, 4, L"original_one_off", 2},
        {API::Scan::ShortcutVarianceType::user, 5, L"user", 5},
        {API::Scan::ShortcutVarianceType::user_one_off, 6, L"user_one_off", 6},
};
inline constexpr ExpectedTexts ScanShortcutVarianceTypeTexts{
    L"varianceType", L"[Undefined Scan::ShortcutVarianceType: ",
    L"[Undefined Scan::ShortcutVarianceType value: ", L"[Undefined ShortcutVariance value: "};

inline constexpr ExpectedRow<API::Scan::SourceType, Eventing::Source> ScanSourceTypeRows[] = {
    {API::Scan::SourceType::unknown, 0, L"unknown", 0},
    {API::Scan::SourceType::adf_duplex_book, 1, L"adf_duplex_book", 3},
    {API::Scan::SourceType::adf_duplex_tablet, 2, L"adf_duplex_tablet", 4},
    {API::Scan::SourceType::adf_simplex, 3, L"adf_simplex", 2},
    {API::Scan::SourceType::flatbed, 4, L"flatbed", 1},
};
inline constexpr ExpectedTexts ScanSourceTypeTexts{L"sourceType", L"[Undefined Scan::SourceType: ",
                                                   L"[Undefined Scan::SourceType value: ",
                                                   L"[Undefined Source value: "};

inline constexpr ExpectedRow<API::Print::ItemType, Eventing::SourceItemType> PrintItemTypeRows[] = {
    {API::Print::ItemType::unknown, 0, L"unknown", 0},
    {API::Print::ItemType::document, 1, L"document", 1},
    {API::Print::ItemType::photo_multi, 2, L"photo/multi", 3},
    {API::Print::ItemType::photo_single, 3, L"photo/single", 2},
};
inline constexpr ExpectedTexts PrintItemTypeTexts{L"itemType", L"[Undefined Print::ItemType: ",
                                                  L"[Undefined Print::ItemType value: ",
                                                  L"[Undefined SourceItemType value: "};

inline constexpr ExpectedRow<API::Print::MimeType, Eventing::SourceMimeType> PrintMimeTypeRows[] = {
    {API::Print::MimeType::unknown, 0, L"unknown", 0},
    {API::Print::MimeType::application_pdf, 1, L"application/pdf", 1},
    {API::Print::MimeType::image_any, 2, L"image/*", 2},
};
inline constexpr ExpectedTexts PrintMimeTypeTexts{L"mimeType", L"[Undefined Print::MimeType: ",
                                                  L"[Undefined Print::MimeType value: ",
                                                  L"[Undefined SourceMimeType value: "};

inline constexpr ExpectedRow<API::Print::PageSizeType, Eventing::SourceItemPrintSize>
    PrintPageSizeTypeRows[] = {
        {API::Print::PageSizeType::unknown, 0, L"unknown", 0},
        {API::Print::PageSizeType::full, 1, L"full", 1},
        {API::Print::PageSizeType::size_3p5x5, 2, L"size_3p5x5", 2},
        {API::Print::PageSizeType::size_4x6, 3, L"size_4x6", 3},
        {API::Print::PageSizeType::size_5x7, 4, L"size_5x7", 4},
        {API::Print::PageSizeType::size_8x10, 5, L"size_8x10", 5},
        {API::Print::PageSizeType::size_9x13_cm, 6, L"size_9x13_cm", 6},
        {API::Print::PageSizeType::size_10x15_cm, 7, L"size_10x15_cm", 7},
        {API::Print::PageSizeType::size_13x18_cm, 8, L"size_13x18_cm", 8},
};
inline constexpr ExpectedTexts PrintPageSizeTypeTexts{L"pageSizeType", L"[Undefined Print::PageSizeType: ",
                                                      L"[Undefined Print::PageSizeType value: ",
                                                      L"[Undefined SourceItemPrintSize value: "};

inline constexpr ExpectedRow<API::Print::SubsystemType, Eventing::SubsystemType> PrintSubsystemTypeRows[] = {
    {API::Print::SubsystemType::unknown, 0, L"unknown", 0},
    {API::Print::SubsystemType::ipp, 1, L"ipp", 2},
    {API::Print::SubsystemType::native, 2, L"native", 1},
};
inline constexpr ExpectedTexts PrintSubsystemTypeTexts{L"subsystemType", L"[Undefined Print::SubsystemType: ",
                                                       L"[Undefined Print::SubsystemType value: ",
                                                       L"[Undefined SubsystemType value: "};

/// Calls `visit(name, rows, texts)` for each of the 23 enumerations.
template <class Visit>
void ForEachEnumeration(Visit visit) {
    visit("AdType", AdTypeRows, AdTypeTexts);
    visit("ConfigurationSettingType", ConfigurationSettingTypeRows, ConfigurationSettingTypeTexts);
    visit("ConnectionMethodType", ConnectionMethodTypeRows, ConnectionMethodTypeTexts);
    visit("ConnectionScenarioType", ConnectionScenarioTypeRows, ConnectionScenarioTypeTexts);
    visit("HowType", HowTypeRows, HowTypeTexts);
    visit("InstallType", InstallTypeRows, InstallTypeTexts);
    visit("WhyType", WhyTypeRows, WhyTypeTexts);
    visit("File::DestinationType", FileDestinationTypeRows, FileDestinationTypeTexts);
    visit("File::MimeType", FileMimeTypeRows, FileMimeTypeTexts);
    visit("File::ShortcutType", FileShortcutTypeRows, FileShortcutTypeTexts);
    visit("File::ShortcutVarianceType", FileShortcutVarianceTypeRows, FileShortcutVarianceTypeTexts);
    visit("Scan::ColorModeType", ScanColorModeTypeRows, ScanColorModeTypeTexts);
    visit("Scan::ItemType", ScanItemTypeRows, ScanItemTypeTexts);
    visit("Scan::MimeType", ScanMimeTypeRows, ScanMimeTypeTexts);
    visit("Scan::PageSizeType", ScanPageSizeTypeRows, ScanPageSizeTypeTexts);
    visit("Scan::ResolutionType", ScanResolutionTypeRows, ScanResolutionTypeTexts);
    visit("Scan::ShortcutType", ScanShortcutTypeRows, ScanShortcutTypeTexts);
    visit("Scan::ShortcutVarianceType", ScanShortcutVarianceTypeRows, ScanShortcutVarianceTypeTexts);
    visit("Scan::SourceType", ScanSourceTypeRows, ScanSourceTypeTexts);
    visit("Print::ItemType", PrintItemTypeRows, PrintItemTypeTexts);
    visit("Print::MimeType", PrintMimeTypeRows, PrintMimeTypeTexts);
    visit("Print::PageSizeType", PrintPageSizeTypeRows, PrintPageSizeTypeTexts);
    visit("Print::SubsystemType", PrintSubsystemTypeRows, PrintSubsystemTypeTexts);
}

} // namespace Zuvan::Lumeq::Expected
