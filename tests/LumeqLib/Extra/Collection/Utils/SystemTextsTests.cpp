#include "LumeqLib/Extra/Collection/Utils/SystemTexts.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

TEST(BatteryText, OnBatteryThereIsOne) {
    for (int flag = 0; flag <= 255; ++flag)
        EXPECT_EQ(BatteryText(0, static_cast<std::uint8_t>(flag)), L"true") << flag;
}

TEST(BatteryText, DesktopOnMainsHasNone) { EXPECT_EQ(BatteryText(1, 128), L"false"); }

TEST(BatteryText, MainsWithUnknownBatteryIsUnknown) { EXPECT_EQ(BatteryText(1, 255), L"unknown"); }

TEST(BatteryText, LaptopOnMainsHasOne) {
    for (int flag = 0; flag <= 254; ++flag)
        if (flag != 128) {
            EXPECT_EQ(BatteryText(1, static_cast<std::uint8_t>(flag)), L"true") << flag;
        }
}

TEST(BatteryText, UnknownLineIsUnknown) {
    for (int flag = 0; flag <= 255; ++flag)
        EXPECT_EQ(BatteryText(255, static_cast<std::uint8_t>(flag)), L"unknown") << flag;
}

TEST(BatteryText, OtherLineHasNoneUnlessTheBatteryIsUnknown) {
    for (int line = 2; line <= 254; ++line) {
        EXPECT_EQ(BatteryText(static_cast<std::uint8_t>(line), 255), L"unknown") << line;
        for (int flag = 0; flag <= 254; ++flag)
            EXPECT_EQ(BatteryText(static_cast<std::uint8_t>(line), static_cast<std::uint8_t>(flag)), L"false")
                << line << " " << flag;
    }
}

TEST(TouchText, OneTouchIsEnough) {
    EXPECT_EQ(TouchText(-1), L"false");
    EXPECT_EQ(TouchText(0), L"false");
    EXPECT_EQ(TouchText(1), L"true");
    EXPECT_EQ(TouchText(10), L"true");
}

TEST(CanReportTouches, FromWindows7On) {
    EXPECT_FALSE(CanReportTouches(0));
    EXPECT_FALSE(CanReportTouches(501));
    EXPECT_FALSE(CanReportTouches(600));
    EXPECT_TRUE(CanReportTouches(601));
    EXPECT_TRUE(CanReportTouches(602));
    EXPECT_TRUE(CanReportTouches(1000));
}

TEST(IsWindowsXp, TakesPlatformAndNumberTogether) {
    EXPECT_TRUE(IsWindowsXp({2, 501}));
    EXPECT_FALSE(IsWindowsXp({2, 500}));
    EXPECT_FALSE(IsWindowsXp({2, 502}));
    EXPECT_FALSE(IsWindowsXp({1, 501}));
    EXPECT_FALSE(IsWindowsXp({3, 501}));
    EXPECT_FALSE(IsWindowsXp({0, 0}));
}

TEST(OsNameText, DropsTrademarkSignAndTrailingSpace) {
    EXPECT_EQ(OsNameText(L"Microsoft\u00ae Windows Vista\u2122 Business "),
              L"Microsoft Windows Vista Business");
}

TEST(OsNameText, DropsEveryCharacterAbove127) {
    EXPECT_EQ(OsNameText(L"\u0080a\u007f\u00ffb\uffffc"), L"a\u007fbc");
}

TEST(OsNameText, TrimsWhiteSpaceAtBothEndsOnly) {
    EXPECT_EQ(OsNameText(L" \t\n\v\f\rWindows  10 \t\n\v\f\r"), L"Windows  10");
    EXPECT_EQ(OsNameText(L"\u00ae Windows \u00ae"), L"Windows");
}

TEST(OsNameText, NothingButWhiteSpaceIsEmpty) {
    EXPECT_EQ(OsNameText(L" \t "), L"");
    EXPECT_EQ(OsNameText(L"\u00ae"), L"");
    EXPECT_EQ(OsNameText(L""), L"");
}

TEST(OsVersionText, TakesTheLastPartOfTheKernelVersion) {
    EXPECT_EQ(OsVersionText(L"10.0.17763", L"10.0.17763.253"), L"10.0.17763.253");
    EXPECT_EQ(OsVersionText(L"6.1.7601", L"0.0.0.0"), L"6.1.7601.0");
    EXPECT_EQ(OsVersionText(L"", L"1."), L".");
}

TEST(OsVersionText, UnknownKernelVersionAddsNothing) {
    EXPECT_EQ(OsVersionText(L"10.0.17763", L"unknown"), L"10.0.17763");
    EXPECT_EQ(OsVersionText(L"10.0.17763", L""), L"10.0.17763");
}

TEST(ResolutionText, IsWidthXHeight) { EXPECT_EQ(ResolutionText(1920, 1080), L"1920x1080"); }

TEST(ChassisText, EveryRow) {
    struct Row {
        std::uint16_t type;
        const wchar_t* text;
    };
    const Row rows[] = {
        {3, L"Computer.Desktop"},
        {4, L"Computer.Desktop.LowProfile"},
        {5, L"Computer.Desktop.Pizzabox"},
        {6, L"Computer.Tower.Mini"},
        {7, L"Computer.Tower"},
        {8, L"Computer.Portable"},
        {9, L"Computer.Laptop"},
        {10, L"Computer.Notebook"},
        {11, L"Computer.Handheld"},
        {12, L"Computer.DockingStation"},
        {13, L"Computer.AllInOne"},
        {14, L"Computer.Notebook.Sub"},
        {15, L"Computer.SpaceSaving"},
        {16, L"Computer.Lunchbox"},
        {17, L"Computer.MainSystem"},
        {18, L"Computer.Expansion"},
        {19, L"Computer.SubChassis"},
        {20, L"Computer.BusExpansion"},
        {21, L"Computer.Peripheral"},
        {22, L"Computer.Storage"},
        {23, L"Computer.Rackmount"},
        {24, L"Computer.Sealed"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ChassisText(row.type), row.text) << row.type;
}

TEST(ChassisText, AnythingElseIsAComputer) {
    for (const std::uint16_t type : {0, 1, 2, 25, 26, 30, 36, 255, 256, 32767, 65535})
        EXPECT_EQ(ChassisText(type), L"Computer") << type;
}

TEST(IsMissingUuid, HoldsForThreeTextsExactly) {
    EXPECT_TRUE(IsMissingUuid(L"unknown"));
    EXPECT_TRUE(IsMissingUuid(L"00000000-0000-0000-0000-000000000000"));
    EXPECT_TRUE(IsMissingUuid(L"FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF"));

    EXPECT_FALSE(IsMissingUuid(L""));
    EXPECT_FALSE(IsMissingUuid(L"UNKNOWN"));
    EXPECT_FALSE(IsMissingUuid(L"00000000-0000-0000-0000-000000000001"));
    EXPECT_FALSE(IsMissingUuid(L"{00000000-0000-0000-0000-000000000000}"));
    EXPECT_FALSE(IsMissingUuid(L"ffffffff-ffff-ffff-ffff-ffffffffffff"));
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
