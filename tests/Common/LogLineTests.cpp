#include "Common/LogLine.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Common {

namespace {

// 2023-11-14 22:13:20.000 UTC
constexpr std::int64_t Sample = 1700000000000;

} // namespace

TEST(SeverityText, NamesEachLevel) {
    EXPECT_EQ(SeverityText(SeverityLevel::DATA), L"DATA");
    EXPECT_EQ(SeverityText(SeverityLevel::ERROR), L"ERROR");
    EXPECT_EQ(SeverityText(SeverityLevel::WARNING), L"WARNING");
    EXPECT_EQ(SeverityText(SeverityLevel::TRACE), L"TRACE");
    EXPECT_EQ(SeverityText(SeverityLevel::DEBUG), L"DEBUG");
}

TEST(SeverityText, NamesAnUndefinedLevel) {
    EXPECT_EQ(SeverityText(static_cast<SeverityLevel>(5)), L"[Undefined SeverityLevel value: 5]");
    EXPECT_EQ(SeverityText(static_cast<SeverityLevel>(-1)), L"[Undefined SeverityLevel value: -1]");
}

TEST(LogTimestamp, PrintsTheHourPlusOne) { EXPECT_EQ(LogTimestamp(Sample), L"2023-11-14T23:13:20.000Z"); }

TEST(LogTimestamp, LastHourOfTheDayIsTwentyFour) {
    EXPECT_EQ(LogTimestamp(Sample + 3600000 + 16 * 60000 + 40000), L"2023-11-14T24:30:00.000Z");
}

TEST(LogTimestamp, PadsEveryField) {
    EXPECT_EQ(LogTimestamp(7), L"1970-01-01T01:00:00.007Z");
    EXPECT_EQ(LogTimestamp(86400000LL * 40 + 61042), L"1970-02-10T01:01:01.042Z");
}

TEST(LogLine, PutsThreadZerosToTheRight) {
    EXPECT_EQ(LogLine(Sample, SeverityLevel::ERROR, 0x1A2C, L"A::b", L"text"),
              L"2023-11-14T23:13:20.000Z ERROR   0x1a2c0000 | <A::b> text");
}

TEST(LogLine, WithoutFunctionHasABareBar) {
    EXPECT_EQ(LogLine(Sample, SeverityLevel::DATA, 0x12345678, L"", L"text"),
              L"2023-11-14T23:13:20.000Z DATA    0x12345678 | text");
}

TEST(LogLine, PadsTheSeverityToEight) {
    EXPECT_EQ(LogLine(Sample, SeverityLevel::WARNING, 1, L"", L""),
              L"2023-11-14T23:13:20.000Z WARNING 0x10000000 | ");
}

TEST(LogLine, KeepsLineBreaksInOneLine) {
    EXPECT_EQ(LogLine(Sample, SeverityLevel::DEBUG, 1, L"f\n", L"a\r\nb\n"),
              L"2023-11-14T23:13:20.000Z DEBUG   0x10000000 | <f\\n> a\\r\\nb\\n");
}

} // namespace Zuvan::Lumeq::Common
