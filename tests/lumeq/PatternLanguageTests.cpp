#include "lumeq/PatternLanguage.h"

#include "LumeqApi/Patterns.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Tool {

namespace {

std::optional<std::wstring> OnlyBy(const wchar_t* first, const wchar_t* second) {
    return AcceptedOnlyBy(PatternLanguage(first, false), PatternLanguage(second, false));
}

} // namespace

TEST(PatternLanguage, NamesAShortestTextThatOneAcceptsAlone) {
    EXPECT_EQ(OnlyBy(L"[a-z]+", L"[a-y]+"), L"z");
    EXPECT_EQ(OnlyBy(L"(ab)*", L"(ab)?"), L"abab");
    EXPECT_EQ(OnlyBy(L"a?", L"a"), L"");
    EXPECT_EQ(OnlyBy(L"a", L"a?"), std::nullopt);
}

TEST(PatternLanguage, DistinguishesCharactersBeyondAscii) {
    EXPECT_EQ(OnlyBy(LR"(\w)", L"[a-zA-Z0-9_]"), L"\u00e9");
    EXPECT_EQ(OnlyBy(L".", LR"([^\x0a\x0d])"), std::nullopt);
    EXPECT_EQ(OnlyBy(LR"([^\x0a\x0d])", L"."), L"\u2028");
    EXPECT_EQ(OnlyBy(LR"([^\x00-\x1f])", LR"([^\x00-\x1f\x80-\x9f])"), L"\x80");
}

TEST(PatternLanguage, IgnoresTheCaseOfAsciiAlone) {
    EXPECT_EQ(AcceptedOnlyBy(PatternLanguage(L"[a-z]", true), PatternLanguage(L"[a-zA-Z]", false)),
              std::nullopt);
    EXPECT_EQ(AcceptedOnlyBy(PatternLanguage(L"[a-z]", true), PatternLanguage(L"[a-z]", false)), L"A");
}

TEST(PatternLanguage, ReadsTheTablesOfTheLibrary) {
    EXPECT_EQ(AcceptedOnlyBy(PatternLanguage(API::modePattern), PatternLanguage(L"[a-zA-Z0-9]+", false)),
              L"a_a");
}

TEST(PatternLanguage, RefusesWhatTheLibrarysParserRefuses) {
    EXPECT_THROW(PatternLanguage(L"(a", false), BadExpression);
    EXPECT_THROW(PatternLanguage(L"(?=a)", false), BadExpression);
}

} // namespace Zuvan::Lumeq::Tool
