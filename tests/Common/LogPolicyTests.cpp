#include "Common/LogPolicy.h"

#include "support/Utf8CodePage.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr std::int64_t Hour = 3'600'000;
// Midnight UTC.
constexpr std::int64_t July7Of2017 = 1'499'385'600'000;
constexpr std::int64_t March1Of2030 = 1'898'553'600'000;
constexpr std::int64_t LastKnown = 2'147'483'647'000;

class LogDate : public testing::Test {
protected:
    LogDate() { UseZone("UTC0"); }

    static void UseZone(const std::string& zone) {
        _putenv(("TZ=" + zone).c_str());
        _tzset();
    }
};

} // namespace

TEST(LogLevel, FourWordsAreValid) {
    EXPECT_EQ(ParseLogLevel(L"error"), SeverityLevel::ERROR);
    EXPECT_EQ(ParseLogLevel(L"warning"), SeverityLevel::WARNING);
    EXPECT_EQ(ParseLogLevel(L"trace"), SeverityLevel::TRACE);
    EXPECT_EQ(ParseLogLevel(L"debug"), SeverityLevel::DEBUG);
}

TEST(LogLevel, AnythingElseIsInvalid) {
    for (const wchar_t* text : {L"", L"data", L"Error", L"TRACE", L" error", L"errors", L"4"})
        EXPECT_EQ(ParseLogLevel(text), std::nullopt) << text;
}

TEST_F(LogDate, IsTheLastMomentOfLogging) {
    EXPECT_TRUE(IsLogDateOpen(L"2030-03-01", March1Of2030 - 1));
    EXPECT_TRUE(IsLogDateOpen(L"2030-03-01", March1Of2030));
    EXPECT_FALSE(IsLogDateOpen(L"2030-03-01", March1Of2030 + 1));
}

TEST_F(LogDate, IsMidnightInLocalTime) {
    UseZone("CET-1");
    EXPECT_TRUE(IsLogDateOpen(L"2030-03-01", March1Of2030 - Hour));
    EXPECT_FALSE(IsLogDateOpen(L"2030-03-01", March1Of2030 - Hour + 1));
}

TEST_F(LogDate, EmptyOneIsTheDefaultDate) {
    EXPECT_TRUE(IsLogDateOpen(L"", July7Of2017));
    EXPECT_FALSE(IsLogDateOpen(L"", July7Of2017 + 1));
}

TEST_F(LogDate, OneThatDoesNotParseIsTheDefaultDate) {
    for (const wchar_t* text :
         {L"tomorrow", L"2030", L"2030-03", L"2030-13-01", L"2030/03/01", L"01.03.2030", L"2030-03-"}) {
        EXPECT_TRUE(IsLogDateOpen(text, July7Of2017)) << text;
        EXPECT_FALSE(IsLogDateOpen(text, July7Of2017 + 1)) << text;
    }
}

TEST_F(LogDate, OneThatCannotBeRepresentedLeavesLoggingOn) {
    EXPECT_TRUE(IsLogDateOpen(L"2038-01-20", March1Of2030));
    EXPECT_TRUE(IsLogDateOpen(L"2038-01-20", LastKnown));
    EXPECT_TRUE(IsLogDateOpen(L"1969-12-31", March1Of2030));
    EXPECT_TRUE(IsLogDateOpen(L"9999-01-01", March1Of2030));
}

TEST_F(LogDate, LastRepresentableDayStillCounts) { EXPECT_FALSE(IsLogDateOpen(L"2038-01-19", LastKnown)); }

TEST_F(LogDate, TimeThatCannotBeRepresentedLeavesLoggingOn) {
    EXPECT_FALSE(IsLogDateOpen(L"2017-07-07", LastKnown));
    EXPECT_TRUE(IsLogDateOpen(L"2017-07-07", LastKnown + 1));
}

TEST_F(LogDate, IsParsedWhereTheCodePageIsUtf8) {
    const Testing::Utf8CodePage codePage;
    EXPECT_TRUE(IsLogDateOpen(L"2030-03-01", March1Of2030));
    EXPECT_FALSE(IsLogDateOpen(L"2030-03-01", March1Of2030 + 1));
    for (const wchar_t* text : {L"", L"tomorrow"}) {
        EXPECT_TRUE(IsLogDateOpen(text, July7Of2017)) << text;
        EXPECT_FALSE(IsLogDateOpen(text, July7Of2017 + 1)) << text;
    }
}

TEST_F(LogDate, HasDigitsOfAsciiAlone) {
    // The system could narrow these to the digits that they look like.
    constexpr wchar_t wideDigits[] = L"\uff12\uff10\uff13\uff10-03-01";
    EXPECT_TRUE(IsLogDateOpen(wideDigits, July7Of2017));
    EXPECT_FALSE(IsLogDateOpen(wideDigits, July7Of2017 + 1));
}

} // namespace Zuvan::Lumeq::Common
