// The constants of lumeq.h are the values of LumeqApi.h: the exports cast one to the other.
#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.h>

#include <cstdint>

namespace Zuvan::Lumeq {

namespace {

template <class Enumeration>
consteval std::int32_t Number(Enumeration value) {
    return static_cast<std::int32_t>(value);
}

static_assert(LUMEQ_AD_UNKNOWN == Number(API::AdType::unknown));
static_assert(LUMEQ_AD_BANNER == Number(API::AdType::banner));
static_assert(LUMEQ_AD_HYPERLINK == Number(API::AdType::hyperlink));
static_assert(LUMEQ_AD_TILE == Number(API::AdType::tile));
static_assert(LUMEQ_AD_VIRTUALALERT == Number(API::AdType::virtualalert));

static_assert(LUMEQ_SETTING_UNKNOWN == Number(API::ConfigurationSettingType::unknown));
static_assert(LUMEQ_SETTING_PBUT_CONSENT_ENABLE ==
              Number(API::ConfigurationSettingType::pbut_consent_enable));
static_assert(LUMEQ_SETTING_WEBSERVICES_REGISTRATION ==
              Number(API::ConfigurationSettingType::webservices_registration));

static_assert(LUMEQ_CONNECTION_METHOD_UNKNOWN == Number(API::ConnectionMethodType::unknown));
static_assert(LUMEQ_CONNECTION_METHOD_ALREADY_ON_NETWORK ==
              Number(API::ConnectionMethodType::already_on_network));
static_assert(LUMEQ_CONNECTION_METHOD_AUTO_WIRELESS_CONNECT ==
              Number(API::ConnectionMethodType::auto_wireless_connect));
static_assert(LUMEQ_CONNECTION_METHOD_ETHERNET == Number(API::ConnectionMethodType::ethernet));
static_assert(LUMEQ_CONNECTION_METHOD_FRONTPANEL_SETUP_OF_WIRELESS ==
              Number(API::ConnectionMethodType::frontpanel_setup_of_wireless));
static_assert(LUMEQ_CONNECTION_METHOD_LATER == Number(API::ConnectionMethodType::later));
static_assert(LUMEQ_CONNECTION_METHOD_PRESS_WIRELESS_BUTTON ==
              Number(API::ConnectionMethodType::press_wireless_button));
static_assert(LUMEQ_CONNECTION_METHOD_USB == Number(API::ConnectionMethodType::usb));
static_assert(LUMEQ_CONNECTION_METHOD_USB_PLUS_WIFI == Number(API::ConnectionMethodType::usb_plus_wifi));
static_assert(LUMEQ_CONNECTION_METHOD_USB_SETUP_OF_WIRELESS ==
              Number(API::ConnectionMethodType::usb_setup_of_wireless));
static_assert(LUMEQ_CONNECTION_METHOD_USB_TO_WIFI == Number(API::ConnectionMethodType::usb_to_wifi));
static_assert(LUMEQ_CONNECTION_METHOD_WIFI_DIRECT == Number(API::ConnectionMethodType::wifi_direct));

static_assert(LUMEQ_CONNECTION_SCENARIO_UNKNOWN == Number(API::ConnectionScenarioType::unknown));
static_assert(LUMEQ_CONNECTION_SCENARIO_ADD == Number(API::ConnectionScenarioType::add));
static_assert(LUMEQ_CONNECTION_SCENARIO_CONNECT == Number(API::ConnectionScenarioType::connect));
static_assert(LUMEQ_CONNECTION_SCENARIO_CONVERT == Number(API::ConnectionScenarioType::convert));
static_assert(LUMEQ_CONNECTION_SCENARIO_RECONFIGURE == Number(API::ConnectionScenarioType::reconfigure));

static_assert(LUMEQ_HOW_UNKNOWN == Number(API::HowType::unknown));
static_assert(LUMEQ_HOW_CD_EXE == Number(API::HowType::cd_exe));
static_assert(LUMEQ_HOW_DESKTOP_SHORTCUT == Number(API::HowType::desktop_shortcut));
static_assert(LUMEQ_HOW_DESKTOP_TOAST == Number(API::HowType::desktop_toast));
static_assert(LUMEQ_HOW_DXP_LINK == Number(API::HowType::dxp_link));
static_assert(LUMEQ_HOW_FOLDER_EXE == Number(API::HowType::folder_exe));
static_assert(LUMEQ_HOW_PNP_INF == Number(API::HowType::pnp_inf));
static_assert(LUMEQ_HOW_SMV_LINK == Number(API::HowType::smv_link));
static_assert(LUMEQ_HOW_STARTMENU_SHORTCUT == Number(API::HowType::startmenu_shortcut));
static_assert(LUMEQ_HOW_UDC_TILE == Number(API::HowType::udc_tile));

static_assert(LUMEQ_INSTALLER_UNKNOWN == Number(API::InstallType::unknown));
static_assert(LUMEQ_INSTALLER_EXE == Number(API::InstallType::exe));
static_assert(LUMEQ_INSTALLER_MSI == Number(API::InstallType::msi));

static_assert(LUMEQ_WHY_UNKNOWN == Number(API::WhyType::unknown));
static_assert(LUMEQ_WHY_ADD_DEVICE == Number(API::WhyType::add_device));
static_assert(LUMEQ_WHY_ADD_SOFTWARE == Number(API::WhyType::add_software));
static_assert(LUMEQ_WHY_RECONFIGURE_DEVICE == Number(API::WhyType::reconfigure_device));
static_assert(LUMEQ_WHY_START_APP == Number(API::WhyType::start_app));
static_assert(LUMEQ_WHY_VIEW_DEVICE == Number(API::WhyType::view_device));
static_assert(LUMEQ_WHY_VIEW_DEVICE_ERROR == Number(API::WhyType::view_device_error));
static_assert(LUMEQ_WHY_VIEW_DEVICE_SUPPLIES == Number(API::WhyType::view_device_supplies));

static_assert(LUMEQ_FILE_DESTINATION_UNKNOWN == Number(API::File::DestinationType::unknown));
static_assert(LUMEQ_FILE_DESTINATION_CLOUD_BOX == Number(API::File::DestinationType::cloud_box));
static_assert(LUMEQ_FILE_DESTINATION_CLOUD_DROPBOX == Number(API::File::DestinationType::cloud_dropbox));
static_assert(LUMEQ_FILE_DESTINATION_CLOUD_GOOGLEDRIVE ==
              Number(API::File::DestinationType::cloud_googledrive));
static_assert(LUMEQ_FILE_DESTINATION_CLOUD_ONEDRIVE == Number(API::File::DestinationType::cloud_onedrive));
static_assert(LUMEQ_FILE_DESTINATION_EMAIL_MAPI == Number(API::File::DestinationType::email_mapi));
static_assert(LUMEQ_FILE_DESTINATION_EMAIL_SMTP == Number(API::File::DestinationType::email_smtp));
static_assert(LUMEQ_FILE_DESTINATION_FOLDER == Number(API::File::DestinationType::folder));

static_assert(LUMEQ_FILE_MIME_UNKNOWN == Number(API::File::MimeType::unknown));
static_assert(LUMEQ_FILE_MIME_APPLICATION_PDF == Number(API::File::MimeType::application_pdf));
static_assert(LUMEQ_FILE_MIME_APPLICATION_PDFSEARCHABLE ==
              Number(API::File::MimeType::application_pdfsearchable));
static_assert(LUMEQ_FILE_MIME_IMAGE_JPG == Number(API::File::MimeType::image_jpg));
static_assert(LUMEQ_FILE_MIME_IMAGE_BMP == Number(API::File::MimeType::image_bmp));
static_assert(LUMEQ_FILE_MIME_IMAGE_TIFF == Number(API::File::MimeType::image_tiff));
static_assert(LUMEQ_FILE_MIME_IMAGE_PNG == Number(API::File::MimeType::image_png));
static_assert(LUMEQ_FILE_MIME_APPLICATION_RTF == Number(API::File::MimeType::application_rtf));
static_assert(LUMEQ_FILE_MIME_TEXT_UNICODE == Number(API::File::MimeType::text_unicode));
static_assert(LUMEQ_FILE_MIME_TEXT_ANSI == Number(API::File::MimeType::text_ansi));
static_assert(LUMEQ_FILE_MIME_TEXT_UTF8 == Number(API::File::MimeType::text_utf8));

static_assert(LUMEQ_FILE_SHORTCUT_UNKNOWN == Number(API::File::ShortcutType::unknown));
static_assert(LUMEQ_FILE_SHORTCUT_EMAIL_JPG == Number(API::File::ShortcutType::email_jpg));
static_assert(LUMEQ_FILE_SHORTCUT_EMAIL_PDF == Number(API::File::ShortcutType::email_pdf));
static_assert(LUMEQ_FILE_SHORTCUT_EVERY_DAY_SCAN == Number(API::File::ShortcutType::every_day_scan));
static_assert(LUMEQ_FILE_SHORTCUT_SAVE_JPG == Number(API::File::ShortcutType::save_jpg));
static_assert(LUMEQ_FILE_SHORTCUT_SAVE_PDF == Number(API::File::ShortcutType::save_pdf));
static_assert(LUMEQ_FILE_SHORTCUT_SAVE_TEXT == Number(API::File::ShortcutType::save_text));
static_assert(LUMEQ_FILE_SHORTCUT_SEND_CLOUD == Number(API::File::ShortcutType::send_cloud));
static_assert(LUMEQ_FILE_SHORTCUT_USER == Number(API::File::ShortcutType::user));

static_assert(LUMEQ_FILE_SHORTCUT_VARIANCE_UNKNOWN == Number(API::File::ShortcutVarianceType::unknown));
static_assert(LUMEQ_FILE_SHORTCUT_VARIANCE_MODIFIED == Number(API::File::ShortcutVarianceType::modified));
static_assert(LUMEQ_FILE_SHORTCUT_VARIANCE_MODIFIED_ONE_OFF ==
              Number(API::File::ShortcutVarianceType::modified_one_off));
static_assert(LUMEQ_FILE_SHORTCUT_VARIANCE_ORIGINAL == Number(API::File::ShortcutVarianceType::original));
static_assert(LUMEQ_FILE_SHORTCUT_VARIANCE_ORIGINAL_ONE_OFF ==
              Number(API::File::ShortcutVarianceType::original_one_off));
static_assert(LUMEQ_FILE_SHORTCUT_VARIANCE_USER == Number(API::File::ShortcutVarianceType::user));
static_assert(LUMEQ_FILE_SHORTCUT_VARIANCE_USER_ONE_OFF ==
              Number(API::File::ShortcutVarianceType::user_one_off));

static_assert(LUMEQ_SCAN_COLOR_MODE_UNKNOWN == Number(API::Scan::ColorModeType::unknown));
static_assert(LUMEQ_SCAN_COLOR_MODE_AUTO == Number(API::Scan::ColorModeType::auto_));
static_assert(LUMEQ_SCAN_COLOR_MODE_BLACKWHITE == Number(API::Scan::ColorModeType::blackwhite));
static_assert(LUMEQ_SCAN_COLOR_MODE_COLOR == Number(API::Scan::ColorModeType::color));
static_assert(LUMEQ_SCAN_COLOR_MODE_GRAY == Number(API::Scan::ColorModeType::gray));
static_assert(LUMEQ_SCAN_COLOR_MODE_HALFTONE == Number(API::Scan::ColorModeType::halftone));

static_assert(LUMEQ_SCAN_ITEM_UNKNOWN == Number(API::Scan::ItemType::unknown));
static_assert(LUMEQ_SCAN_ITEM_DOCUMENT == Number(API::Scan::ItemType::document));
static_assert(LUMEQ_SCAN_ITEM_PHOTO == Number(API::Scan::ItemType::photo));

static_assert(LUMEQ_SCAN_MIME_UNKNOWN == Number(API::Scan::MimeType::unknown));
static_assert(LUMEQ_SCAN_MIME_APPLICATION_PDF == Number(API::Scan::MimeType::application_pdf));
static_assert(LUMEQ_SCAN_MIME_APPLICATION_PDFSEARCHABLE ==
              Number(API::Scan::MimeType::application_pdfsearchable));
static_assert(LUMEQ_SCAN_MIME_APPLICATION_RTF == Number(API::Scan::MimeType::application_rtf));
static_assert(LUMEQ_SCAN_MIME_IMAGE_BMP == Number(API::Scan::MimeType::image_bmp));
static_assert(LUMEQ_SCAN_MIME_IMAGE_JPG == Number(API::Scan::MimeType::image_jpg));
static_assert(LUMEQ_SCAN_MIME_IMAGE_PNG == Number(API::Scan::MimeType::image_png));
static_assert(LUMEQ_SCAN_MIME_IMAGE_TIFF == Number(API::Scan::MimeType::image_tiff));
static_assert(LUMEQ_SCAN_MIME_TEXT_ANSI == Number(API::Scan::MimeType::text_ansi));
static_assert(LUMEQ_SCAN_MIME_TEXT_UNICODE == Number(API::Scan::MimeType::text_unicode));
static_assert(LUMEQ_SCAN_MIME_TEXT_UTF8 == Number(API::Scan::MimeType::text_utf8));

static_assert(LUMEQ_SCAN_PAGE_SIZE_UNKNOWN == Number(API::Scan::PageSizeType::unknown));
static_assert(LUMEQ_SCAN_PAGE_SIZE_A4 == Number(API::Scan::PageSizeType::a4));
static_assert(LUMEQ_SCAN_PAGE_SIZE_AUTO == Number(API::Scan::PageSizeType::auto_));
static_assert(LUMEQ_SCAN_PAGE_SIZE_CUSTOM == Number(API::Scan::PageSizeType::custom));
static_assert(LUMEQ_SCAN_PAGE_SIZE_ENTIREAREA == Number(API::Scan::PageSizeType::entirearea));
static_assert(LUMEQ_SCAN_PAGE_SIZE_EXTRALONG == Number(API::Scan::PageSizeType::extralong));
static_assert(LUMEQ_SCAN_PAGE_SIZE_LEGAL == Number(API::Scan::PageSizeType::legal));
static_assert(LUMEQ_SCAN_PAGE_SIZE_LETTER == Number(API::Scan::PageSizeType::letter));
static_assert(LUMEQ_SCAN_PAGE_SIZE_LONG == Number(API::Scan::PageSizeType::long_));
static_assert(LUMEQ_SCAN_PAGE_SIZE_SIZE_4X6 == Number(API::Scan::PageSizeType::size_4x6));
static_assert(LUMEQ_SCAN_PAGE_SIZE_SIZE_5X7 == Number(API::Scan::PageSizeType::size_5x7));
static_assert(LUMEQ_SCAN_PAGE_SIZE_SIZE_8X10 == Number(API::Scan::PageSizeType::size_8x10));
static_assert(LUMEQ_SCAN_PAGE_SIZE_SNAP == Number(API::Scan::PageSizeType::snap));

static_assert(LUMEQ_SCAN_RESOLUTION_UNKNOWN == Number(API::Scan::ResolutionType::unknown));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_75 == Number(API::Scan::ResolutionType::dpi_75));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_100 == Number(API::Scan::ResolutionType::dpi_100));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_200 == Number(API::Scan::ResolutionType::dpi_200));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_240 == Number(API::Scan::ResolutionType::dpi_240));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_300 == Number(API::Scan::ResolutionType::dpi_300));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_400 == Number(API::Scan::ResolutionType::dpi_400));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_500 == Number(API::Scan::ResolutionType::dpi_500));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_600 == Number(API::Scan::ResolutionType::dpi_600));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_1200 == Number(API::Scan::ResolutionType::dpi_1200));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_2400 == Number(API::Scan::ResolutionType::dpi_2400));
static_assert(LUMEQ_SCAN_RESOLUTION_DPI_4800 == Number(API::Scan::ResolutionType::dpi_4800));

static_assert(LUMEQ_SCAN_SHORTCUT_UNKNOWN == Number(API::Scan::ShortcutType::unknown));
static_assert(LUMEQ_SCAN_SHORTCUT_EMAIL_JPG == Number(API::Scan::ShortcutType::email_jpg));
static_assert(LUMEQ_SCAN_SHORTCUT_EMAIL_PDF == Number(API::Scan::ShortcutType::email_pdf));
static_assert(LUMEQ_SCAN_SHORTCUT_EVERY_DAY_SCAN == Number(API::Scan::ShortcutType::every_day_scan));
static_assert(LUMEQ_SCAN_SHORTCUT_SAVE_JPG == Number(API::Scan::ShortcutType::save_jpg));
static_assert(LUMEQ_SCAN_SHORTCUT_SAVE_PDF == Number(API::Scan::ShortcutType::save_pdf));
static_assert(LUMEQ_SCAN_SHORTCUT_SAVE_TEXT == Number(API::Scan::ShortcutType::save_text));
static_assert(LUMEQ_SCAN_SHORTCUT_SEND_CLOUD == Number(API::Scan::ShortcutType::send_cloud));
static_assert(LUMEQ_SCAN_SHORTCUT_USER == Number(API::Scan::ShortcutType::user));

static_assert(LUMEQ_SCAN_SHORTCUT_VARIANCE_UNKNOWN == Number(API::Scan::ShortcutVarianceType::unknown));
static_assert(LUMEQ_SCAN_SHORTCUT_VARIANCE_MODIFIED == Number(API::Scan::ShortcutVarianceType::modified));
static_assert(LUMEQ_SCAN_SHORTCUT_VARIANCE_MODIFIED_ONE_OFF ==
              Number(API::Scan::ShortcutVarianceType::modified_one_off));
static_assert(LUMEQ_SCAN_SHORTCUT_VARIANCE_ORIGINAL == Number(API::Scan::ShortcutVarianceType::original));
static_assert(LUMEQ_SCAN_SHORTCUT_VARIANCE_ORIGINAL_ONE_OFF ==
              Number(API::Scan::ShortcutVarianceType::original_one_off));
static_assert(LUMEQ_SCAN_SHORTCUT_VARIANCE_USER == Number(API::Scan::ShortcutVarianceType::user));
static_assert(LUMEQ_SCAN_SHORTCUT_VARIANCE_USER_ONE_OFF ==
              Number(API::Scan::ShortcutVarianceType::user_one_off));

static_assert(LUMEQ_SCAN_SOURCE_UNKNOWN == Number(API::Scan::SourceType::unknown));
static_assert(LUMEQ_SCAN_SOURCE_ADF_DUPLEX_BOOK == Number(API::Scan::SourceType::adf_duplex_book));
static_assert(LUMEQ_SCAN_SOURCE_ADF_DUPLEX_TABLET == Number(API::Scan::SourceType::adf_duplex_tablet));
static_assert(LUMEQ_SCAN_SOURCE_ADF_SIMPLEX == Number(API::Scan::SourceType::adf_simplex));
static_assert(LUMEQ_SCAN_SOURCE_FLATBED == Number(API::Scan::SourceType::flatbed));

static_assert(LUMEQ_PRINT_ITEM_UNKNOWN == Number(API::Print::ItemType::unknown));
static_assert(LUMEQ_PRINT_ITEM_DOCUMENT == Number(API::Print::ItemType::document));
static_assert(LUMEQ_PRINT_ITEM_PHOTO_MULTI == Number(API::Print::ItemType::photo_multi));
static_assert(LUMEQ_PRINT_ITEM_PHOTO_SINGLE == Number(API::Print::ItemType::photo_single));

static_assert(LUMEQ_PRINT_MIME_UNKNOWN == Number(API::Print::MimeType::unknown));
static_assert(LUMEQ_PRINT_MIME_APPLICATION_PDF == Number(API::Print::MimeType::application_pdf));
static_assert(LUMEQ_PRINT_MIME_IMAGE_ANY == Number(API::Print::MimeType::image_any));

static_assert(LUMEQ_PRINT_PAGE_SIZE_UNKNOWN == Number(API::Print::PageSizeType::unknown));
static_assert(LUMEQ_PRINT_PAGE_SIZE_FULL == Number(API::Print::PageSizeType::full));
static_assert(LUMEQ_PRINT_PAGE_SIZE_SIZE_3P5X5 == Number(API::Print::PageSizeType::size_3p5x5));
static_assert(LUMEQ_PRINT_PAGE_SIZE_SIZE_4X6 == Number(API::Print::PageSizeType::size_4x6));
static_assert(LUMEQ_PRINT_PAGE_SIZE_SIZE_5X7 == Number(API::Print::PageSizeType::size_5x7));
static_assert(LUMEQ_PRINT_PAGE_SIZE_SIZE_8X10 == Number(API::Print::PageSizeType::size_8x10));
static_assert(LUMEQ_PRINT_PAGE_SIZE_SIZE_9X13_CM == Number(API::Print::PageSizeType::size_9x13_cm));
static_assert(LUMEQ_PRINT_PAGE_SIZE_SIZE_10X15_CM == Number(API::Print::PageSizeType::size_10x15_cm));
static_assert(LUMEQ_PRINT_PAGE_SIZE_SIZE_13X18_CM == Number(API::Print::PageSizeType::size_13x18_cm));

static_assert(LUMEQ_PRINT_SUBSYSTEM_UNKNOWN == Number(API::Print::SubsystemType::unknown));
static_assert(LUMEQ_PRINT_SUBSYSTEM_IPP == Number(API::Print::SubsystemType::ipp));
static_assert(LUMEQ_PRINT_SUBSYSTEM_NATIVE == Number(API::Print::SubsystemType::native));

} // namespace

} // namespace Zuvan::Lumeq
