#include "Common/LogPolicy.h"

#include "support/Utf8CodePage.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <locale>
#include <random>
#include <sstream>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr std::int64_t Hour = 3'600'000;
// Midnight UTC.
constexpr std::int64_t July7Of2017 = 1'499'385'600'000;
constexpr std::int64_t March1Of2030 = 1'898'553'600'000;
constexpr std::int64_t July1Of2030 = 1'909'094'400'000;
constexpr std::int64_t LastKnown = 2'147'483'647'000;

class LogDate : public testing::Test {
protected:
    LogDate() { UseZone("UTC0"); }

    static void UseZone(const std::string& zone) {
        _putenv(("TZ=" + zone).c_str());
        _tzset();
    }
};

/// The system narrows full-width digits to those that they look like.
class AsciiAlone : public std::ctype<wchar_t> {
    using std::ctype<wchar_t>::do_narrow;
    char do_narrow(wchar_t unit, char otherwise) const override {
        return unit < 0x80 ? static_cast<char>(unit) : otherwise;
    }
};

/// The reference: the C++ library's own parser.
std::optional<std::tm> StandardDate(const std::wstring& text) {
    static const std::locale locale(std::locale::classic(), new AsciiAlone);
    static std::wistringstream stream;
    stream.imbue(locale);
    stream.clear();
    stream.str(text);
    std::tm date{};
    stream >> std::get_time(&date, L"%Y-%m-%d");
    // A text that ends early is not reported as a failure.
    if (stream.fail() || date.tm_mday == 0)
        return std::nullopt;
    return date;
}

/// "2030-03-01" with up to three characters replaced, inserted or removed.
std::wstring NearlyADate(std::mt19937& random) {
    constexpr wchar_t Units[] = L"0123456789-/ \t\n\xA0\x2003\x3000\xFF11\x661aT+\0";
    std::wstring text = L"2030-03-01";
    for (std::size_t i = random() % 4; i > 0; --i) {
        const wchar_t unit = Units[random() % (std::size(Units) - 1)];
        const std::size_t at = random() % (text.size() + 1);
        text.replace(at, random() % 2, random() % 2, unit);
    }
    return text;
}

using YearMonthDay = std::optional<std::vector<int>>;

YearMonthDay Fields(const std::optional<std::tm>& date) {
    if (!date)
        return std::nullopt;
    return std::vector{date->tm_year, date->tm_mon, date->tm_mday};
}

} // namespace

TEST(ParseLogDate, AgreesWithTheStandardParserOnRandomTexts) {
    std::mt19937 random(1);
    constexpr int Texts = 500'000;
    int refused = 0;
    for (int i = 0; i < Texts; ++i) {
        const std::wstring text = NearlyADate(random);
        const YearMonthDay expected = Fields(StandardDate(text));
        ASSERT_EQ(Fields(ParseLogDate(text)), expected) << testing::PrintToString(text);
        refused += expected ? 0 : 1;
    }
    EXPECT_GT(refused, Texts / 10);
    EXPECT_LT(refused, Texts * 9 / 10);
}

TEST(ParseLogDate, AgreesWithTheStandardParserOnEveryNumber) {
    for (const std::wstring before : {L"", L"2030-", L"2030-03-"})
        for (int number = 0; number <= 11'000; ++number)
            for (const std::wstring after : {L"", L"-1", L"-1-1"}) {
                const std::wstring text = before + std::to_wstring(number) + after;
                ASSERT_EQ(Fields(ParseLogDate(text)), Fields(StandardDate(text))) << text;
            }
}

TEST(ParseLogDate, TakesTheSpacesThatTheStandardParserTakes) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit)
        for (const std::wstring before : {L"", L"2030-", L"2030-03-"}) {
            const std::wstring text =
                before + static_cast<wchar_t>(unit) + std::wstring(L"2030-03-01").substr(before.size());
            ASSERT_EQ(Fields(ParseLogDate(text)), Fields(StandardDate(text))) << unit;
        }
}

TEST(ParseLogDate, PermitsASpaceBeforeTheDay) {
    EXPECT_TRUE(ParseLogDate(L"2030-03- 1"));
    EXPECT_FALSE(ParseLogDate(L"2030-03-  1"));
    EXPECT_FALSE(ParseLogDate(L"2030- 3-01"));
}

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

TEST_F(LogDate, IsMidnightWithoutDaylightSaving) {
    UseZone("CET-1CEST");
    EXPECT_TRUE(IsLogDateOpen(L"2030-03-01", March1Of2030 - Hour));
    EXPECT_FALSE(IsLogDateOpen(L"2030-03-01", March1Of2030 - Hour + 1));
    EXPECT_TRUE(IsLogDateOpen(L"2030-07-01", July1Of2030 - Hour));
    EXPECT_FALSE(IsLogDateOpen(L"2030-07-01", July1Of2030 - Hour + 1));
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
