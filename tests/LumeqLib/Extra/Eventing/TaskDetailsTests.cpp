#include "LumeqLib/Extra/Eventing/TaskDetails.h"

#include "support/SmallStack.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <climits>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

template <class Details>
void ExpectClone(const Details& details) {
    const std::wstring data = Show(details.Data());
    const std::unique_ptr<EventDetails> clone = details.Clone();
    EXPECT_NE(dynamic_cast<const Details*>(clone.get()), nullptr);
    EXPECT_NE(clone.get(), &details);
    EXPECT_EQ(Show(clone->Data()), data);
}

ScanAcquireTaskDetails Scan(ScanFeatureMap features, std::int32_t pages) {
    return {Shortcut{1}, ShortcutVariance{3}, ItemType{2}, Resolution{5},       ColorMode{2},
            PageSize{9}, Source{1},           MimeType{3}, std::move(features), pages};
}

std::wstring ScanRecord(const std::wstring& features, const std::wstring& pages) {
    return L"{scan_acquire_colormode: \"gray\", scan_acquire_features: " + features +
           L", scan_acquire_itemtype: \"photo\", scan_acquire_mimetype: \"image/jpg\", "
           L"scan_acquire_pages: \"" +
           pages +
           L"\", scan_acquire_pagesize: \"a4\", scan_acquire_resolution: \"dpi_300\", "
           L"scan_acquire_shortcut: \"save_pdf\", scan_acquire_shortcut_variance: \"modified\", "
           L"scan_acquire_source: \"flatbed\", schema: \"app_event_task_scan_acquire/1.0.0\"}";
}

constexpr wchar_t VersionRefused[] =
    L"Install version is not formatted correctly. Must be of form "
    L"version-3dots (MSI version or EXE filever)\nParameter name: installVersion";

std::wstring VersionRefusal(const std::wstring& version) {
    return FullMessageOf<Common::ArgumentException>(
        [&] { SwInstallTaskDetails(InstallType{1}, L"name", version); });
}

bool Installs(const std::wstring& version) { return VersionRefusal(version) == L"(nothing was thrown)"; }

} // namespace

TEST(DeviceConfigTaskDetails, HoldsTheSetting) {
    const DeviceConfigTaskDetails details(ConfigurationSetting{2});
    EXPECT_EQ(
        Show(details.Data()),
        L"{config_setting: \"webservices_registration\", schema: \"app_event_task_device_config/1.0.0\"}");
    ExpectClone(details);
}

TEST(DeviceConnectTaskDetails, HoldsScenarioAndMethod) {
    const DeviceConnectTaskDetails details(ConnectionScenario{3}, ConnectionMethod{9});
    EXPECT_EQ(Show(details.Data()), L"{connect_method: \"usb_to_wifi\", connect_scenario: \"reconfigure\", "
                                    L"schema: \"app_event_task_device_connect/1.0.0\"}");
    ExpectClone(details);
}

TEST(FileSendToTaskDetails, HoldsShortcutTypeDestinationAndPages) {
    const FileSendToTaskDetails details(Shortcut{4}, ShortcutVariance{2}, MimeType{1}, Destination{6}, 12);
    EXPECT_EQ(Show(details.Data()),
              L"{scan_sendto_destination: \"cloud_box\", scan_sendto_mimetype: \"application/pdf\", "
              L"scan_sendto_pages: \"12\", scan_sendto_shortcut: \"email_pdf\", "
              L"scan_sendto_shortcut_variance: \"original_one_off\", "
              L"schema: \"app_event_task_file_sendto/1.0.0\"}");
    ExpectClone(details);
}

TEST(PrintBasicTaskDetails, HoldsWhatWasPrinted) {
    const PrintBasicTaskDetails details(SubsystemType{2}, SourceItemType{3}, SourceMimeType{2},
                                        SourceItemPrintSize{2}, L" any paper ", -3);
    EXPECT_EQ(Show(details.Data()),
              L"{print_basic_mimetype: \"image/*\", print_basic_pages: \"-3\", "
              L"print_basic_papersize: \" any paper \", print_basic_size: \"size_3p5x5\", "
              L"print_basic_subsystem: \"ipp\", print_basic_type: \"photo/multi\", "
              L"schema: \"app_event_task_print_basic/1.0.0\"}");
    ExpectClone(details);
}

TEST(ScanAcquireTaskDetails, HoldsWhatWasScanned) {
    const ScanAcquireTaskDetails details = Scan({{L"x", false}, {L"y", true}}, 4);
    EXPECT_EQ(Show(details.Data()), ScanRecord(L"{x: \"false\", y: \"true\"}", L"4"));
    ExpectClone(details);
}

TEST(ScanAcquireTaskDetails, NoFeaturesAreADictionaryAndNotNull) {
    EXPECT_EQ(Show(Scan({}, 0).Data()), ScanRecord(L"{}", L"0"));
}

TEST(TaskDetails, PagesAreSignedDecimals) {
    EXPECT_EQ(Show(Scan({}, INT_MIN).Data()), ScanRecord(L"{}", L"-2147483648"));
    EXPECT_EQ(Show(Scan({}, INT_MAX).Data()), ScanRecord(L"{}", L"2147483647"));
}

TEST(TaskDetails, ValuesOutsideTheirTableAreTold) {
    const ScanAcquireTaskDetails scan(static_cast<Shortcut>(9), static_cast<ShortcutVariance>(-1),
                                      static_cast<ItemType>(3), static_cast<Resolution>(12),
                                      static_cast<ColorMode>(6), static_cast<PageSize>(13),
                                      static_cast<Source>(5), static_cast<MimeType>(11), {}, 1);
    EXPECT_EQ(Show(scan.Data()),
              L"{scan_acquire_colormode: \"[Undefined ColorMode value: 6]\", scan_acquire_features: {}, "
              L"scan_acquire_itemtype: \"[Undefined ItemType value: 3]\", "
              L"scan_acquire_mimetype: \"[Undefined MimeType value: 11]\", scan_acquire_pages: \"1\", "
              L"scan_acquire_pagesize: \"[Undefined PageSize value: 13]\", "
              L"scan_acquire_resolution: \"[Undefined Resolution value: 12]\", "
              L"scan_acquire_shortcut: \"[Undefined Shortcut value: 9]\", "
              L"scan_acquire_shortcut_variance: \"[Undefined ShortcutVariance value: -1]\", "
              L"scan_acquire_source: \"[Undefined Source value: 5]\", "
              L"schema: \"app_event_task_scan_acquire/1.0.0\"}");

    const PrintBasicTaskDetails print(static_cast<SubsystemType>(3), static_cast<SourceItemType>(4),
                                      static_cast<SourceMimeType>(3), static_cast<SourceItemPrintSize>(9),
                                      L"", 1);
    EXPECT_EQ(Show(print.Data()),
              L"{print_basic_mimetype: \"[Undefined SourceMimeType value: 3]\", print_basic_pages: \"1\", "
              L"print_basic_papersize: \"\", print_basic_size: \"[Undefined SourceItemPrintSize value: 9]\", "
              L"print_basic_subsystem: \"[Undefined SubsystemType value: 3]\", "
              L"print_basic_type: \"[Undefined SourceItemType value: 4]\", "
              L"schema: \"app_event_task_print_basic/1.0.0\"}");
}

TEST(SwInstallTaskDetails, HoldsWhatWasInstalled) {
    const SwInstallTaskDetails details(InstallType{2}, L"Some Tool", L"1.2.3.4");
    EXPECT_EQ(Show(details.Data()),
              L"{install_name: \"Some Tool\", install_type: \"exe\", "
              L"install_version: \"1.2.3.4\", schema: \"app_event_task_sw_install/1.0.0\"}");
    ExpectClone(details);
}

TEST(InstallVersion, TakesTwoDotsThoughItsTextSpeaksOfThree) {
    EXPECT_TRUE(Installs(L"1.2.3"));
    EXPECT_TRUE(Installs(L"1.2.3.4"));
    EXPECT_TRUE(Installs(L"0.0.0"));
    EXPECT_TRUE(Installs(L"10.20.30000.4000000000"));
}

TEST(InstallVersion, RefusesEverythingElse) {
    for (const wchar_t* version :
         {L"", L"1", L"1.2", L"1.2.", L"1.2.3.", L"1.2.3.4.5", L"1,2,3", L"1x2x3", L"a.b.c", L" 1.2.3",
          L"1.2.3\n", L"1.2.3.4 ", L"-1.2.3", L"1..2.3", L"\u0661.2.3"})
        EXPECT_EQ(VersionRefusal(version), VersionRefused) << testing::PrintToString(version);
}

TEST(InstallVersion, SurvivesAHundredThousandCharactersOnASmallStack) {
    constexpr std::size_t hundredThousand = 100000;
    bool accepted = false;
    bool refused = true;
    Testing::OnSmallStack([&] {
        accepted = Installs(L"1.2." + std::wstring(hundredThousand, L'3'));
        refused = Installs(std::wstring(hundredThousand, L'1'));
    });
    EXPECT_TRUE(accepted);
    EXPECT_FALSE(refused);
}

TEST(InstallVersion, LongRefusalsTakeNoLongerThanOthers) {
    EXPECT_FALSE(Installs(L"1.2." + std::wstring(10000, L'3') + L'\n'));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
