#include "LumeqApi/Patterns.h"

#include "support/RuntimeLocale.h"
#include "support/SmallStack.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace Zuvan::Lumeq::API {

namespace {

using Common::Pattern;

std::wstring Repeat(const wchar_t* text, std::size_t times) {
    std::wstring result;
    while (times-- > 0)
        result += text;
    return result;
}

struct PatternCase {
    const char* name;
    const Pattern& pattern;
    std::vector<std::wstring> accepted;
    std::vector<std::wstring> refused;
    std::wstring longAccepted; ///< Repeated, it is accepted at any length; empty: there is no such text.
    /// Repeated and followed by `trapEnd`, it takes an engine with backtracking exponential time to refuse,
    /// or the stack to accept.
    std::wstring trap;
    std::wstring trapEnd;
};

void PrintTo(const PatternCase& pattern, std::ostream* out) { *out << pattern.name; }

const std::vector<std::wstring> NamesWithInnerSpaces = {L"a",
                                                        L"ab",
                                                        L"Lumeq Scan 2",
                                                        L"a  b",
                                                        L"\u00e9t\u00e9",
                                                        L"\u00a0",
                                                        L"\u6f22\u5b57",
                                                        L"\xD83D\xDE00",
                                                        L"!",
                                                        L"a\x7f"
                                                        L"b"};
const std::vector<std::wstring> NotNames = {L" ",
                                            L" a",
                                            L"a ",
                                            L"a\n",
                                            L"\na",
                                            L"a\tb",
                                            L"a\nb",
                                            L"\x01",
                                            L"a\x80"
                                            L"b",
                                            L"a\x9f",
                                            std::wstring(1, L'\0')};

std::vector<std::wstring> With(std::vector<std::wstring> texts, const std::vector<std::wstring>& more) {
    texts.insert(texts.end(), more.begin(), more.end());
    return texts;
}

const std::vector<PatternCase>& Cases() {
    static const std::vector<std::wstring> words = {L"a", L"abc", L"z"};
    static const std::vector<std::wstring> notWords = {L"",    L"A",   L"aB", L"a1",
                                                       L"a_b", L"a b", L" a", L"a\n"};
    static const std::vector<std::wstring> wordPairs = {L"a", L"abc", L"abc_def"};
    static const std::vector<std::wstring> notWordPairs = {L"",      L"A",    L"Abc", L"_a", L"a_",
                                                           L"a_b_c", L"a__b", L"a-b", L"a1", L"a b"};
    static const std::wstring digits64 = Repeat(L"0123456789abcdef", 4);
    static const std::vector<PatternCase> cases = {
        {"appName", appNamePattern, NamesWithInnerSpaces, With(NotNames, {L""}), L"ab", L"a", L"\n"},
        {"biid",
         biidPattern,
         {L"unknown", digits64, Repeat(L"f", 64)},
         {L"", L"Unknown", L"unknown ", Repeat(L"f", 63), Repeat(L"f", 65), Repeat(L"f", 63) + L"F",
          Repeat(L"f", 63) + L"g"},
         L"",
         L"f",
         L""},
        {"adName", adNamePattern, With(NamesWithInnerSpaces, {L""}), NotNames, L"ab", L"a", L"\n"},
        {"adProduct", adProductPattern, With(NamesWithInnerSpaces, {L""}), NotNames, L"ab", L"a", L"\n"},
        {"adVariant", adVariantPattern, With(NamesWithInnerSpaces, {L""}), NotNames, L"ab", L"a", L"\n"},
        {"codeName", codeNamePattern, words, notWords, L"a", L"a", L"\n"},
        {"controlName",
         controlNamePattern,
         {L"a", L"OK", L"ok-button", L"a_b", L"a--b", L"1", L"a-_-1"},
         {L"", L"-a", L"a-", L"_a", L"a_", L"a b", L"a.b", L".", L"a.", L"a#b", L"a/b", L"a\n"},
         L"ab",
         L"a-",
         L"\n"},
        {"context",
         contextPattern,
         {L"x", L" ", L"Tarvik 3000", Repeat(L"x", 128), L"\u00e9", L"\x7f"},
         {L"", Repeat(L"x", 129), L"a\nb", L"\n", L"a\x1f", L"a\x80", L"\x9f"},
         L"",
         L"x",
         L""},
        {"flow",
         flowPattern,
         {L"", L"setup", L"Setup_2", L"a", L"a__b"},
         {L"_a", L"a_", L"a b", L"a-b", L"a/b", L"a\n"},
         L"ab",
         L"a_",
         L"\n"},
        {"formName", formNamePattern, wordPairs, notWordPairs, L"a", L"a", L"\n"},
        {"installName",
         installNamePattern,
         {L"Setup 1.2", L"a", L" ", L"\u00e9", L"\u6f22"},
         {L"", L"a\"b", L"a*b", L"a/b", L"a:b", L"a<b", L"a>b", L"a?b", L"a\\b", L"a|b", L"a\n", L"\x7f",
          L"\x9f"},
         L"ab",
         L"a",
         L"\n"},
        {"installVersion",
         installVersionPattern,
         {L"1.2.3", L"1.2.3.4", L"10.200.3000"},
         {L"", L"1.2", L"1.2.3.4.5", L"1.2.3.", L"1.2.x", L"v1.2.3", L"1.2.3 ", L"1a2.3"},
         L"",
         L"1",
         L"."},
        {"subpath",
         subpathPattern,
         {L"a", L"a\\b", L"\\a", L"a\\", L"\\a\\b\\", L"a b\\c", L"\u00e9"},
         {L"", L"\\", L"a\\\\b", L"\\\\a", L"a/b", L"a:b", L"a\nb", L"a?", L"a\x7f"},
         L"a\\b",
         L"a\\",
         L"\n"},
        {"mode",
         modePattern,
         {L"a", L"edit", L"Edit_2", L"a_b_c", L"1"},
         {L"", L"_a", L"a_", L"a__b", L"a-b", L"a b", L"a\n"},
         L"ab",
         L"a",
         L"\n"},
        {"orgName", orgNamePattern, words, notWords, L"a", L"a", L"\n"},
        {"paperSize", paperSizePattern, NamesWithInnerSpaces, With(NotNames, {L""}), L"ab", L"a", L"\n"},
        {"reportName", reportNamePattern, wordPairs, notWordPairs, L"a", L"a", L"\n"},
        {"screenName",
         screenNamePattern,
         {L"a", L"Home", L"scan_Result2", L"1"},
         {L"", L"_a", L"a_", L"a-b", L"a b", L"a/b", L"a\n"},
         L"ab",
         L"a_",
         L"\n"},
        {"screenPath",
         screenPathPattern,
         {L"", L"a", L"a/b", L"A_/b_1/c"},
         {L"/", L"/a", L"a/", L"a//b", L"_a", L"a/_b", L"a-b", L"a b"},
         L"a/",
         L"a/",
         L"\n"},
        {"taskResult",
         taskResultPattern,
         {L"success", L"unknown", L"error", L"error_1", L"error_123", L"error_a", L"error_ab", L"error_a1"},
         {L"", L"SUCCESS", L"Success", L"error_", L"error_1a", L"error_a_b", L"errors", L"success ",
          L"error-1"},
         L"",
         L"error_a",
         L""},
        {"url",
         urlPattern,
         {L"http://a", L"https://a/", L"HTTPS://a/b#c", L"file://server/x", L"http://user@a/b",
          L"http://a b"},
         {L"", L"http://", L"http:///a", L"ftp://a", L"http:/a", L"http://a/b c", L"http://a/b?c", L"//a"},
         L"",
         L"/",
         L" "},
        {"schemaVersion",
         schemaVersionPattern,
         {L"1.0", L"12.345"},
         {L"", L"1", L"1.", L".1", L"1.0.0", L"1x0", L"a.b", L"1.0 "},
         L"",
         L"1",
         L"."},
    };
    return cases;
}

class PatternTest : public testing::TestWithParam<PatternCase> {};

void ExpectAccepted(const PatternCase& pattern) {
    for (const std::wstring& text : pattern.accepted)
        EXPECT_TRUE(pattern.pattern.Matches(text)) << testing::PrintToString(text);
}

void ExpectRefused(const PatternCase& pattern) {
    for (const std::wstring& text : pattern.refused)
        EXPECT_FALSE(pattern.pattern.Matches(text)) << testing::PrintToString(text);
}

std::string CaseName(const testing::TestParamInfo<PatternCase>& info) { return info.param.name; }

} // namespace

TEST_P(PatternTest, AcceptsWhatItShould) { ExpectAccepted(GetParam()); }

TEST_P(PatternTest, RefusesWhatItShould) { ExpectRefused(GetParam()); }

TEST_P(PatternTest, DoesNotFollowTheHostsLocale) {
    for (const char* name : Testing::HostLocales) {
        SCOPED_TRACE(name);
        const Testing::RuntimeLocale locale(name);
        ExpectAccepted(GetParam());
        ExpectRefused(GetParam());
    }
}

TEST_P(PatternTest, MillionCharactersFitASmallStack) {
    const PatternCase& pattern = GetParam();
    const std::wstring unit = pattern.longAccepted.empty() ? pattern.trap : pattern.longAccepted;
    std::wstring text = Repeat(unit.c_str(), 1'000'000 / unit.size());
    if (pattern.name == std::string("screenPath") || pattern.name == std::string("subpath"))
        text += L"a";
    bool accepted = false;
    Testing::OnSmallStack([&] { accepted = pattern.pattern.Matches(text); });
    EXPECT_EQ(accepted, !pattern.longAccepted.empty());
}

TEST_P(PatternTest, NestedQuantifiersAreNoTrap) {
    const PatternCase& pattern = GetParam();
    const std::wstring text = Repeat(pattern.trap.c_str(), 10'000 / pattern.trap.size()) + pattern.trapEnd;
    bool accepted = true;
    Testing::OnSmallStack([&] { accepted = pattern.pattern.Matches(text); });
    EXPECT_FALSE(accepted);
}

INSTANTIATE_TEST_SUITE_P(Patterns, PatternTest, testing::ValuesIn(Cases()), CaseName);

TEST(Patterns, ThereIsACaseForEach) { EXPECT_EQ(Cases().size(), 22U); }

TEST(Patterns, FourteenIgnoreCaseAndEightDoNot) {
    const Pattern* const ignoring[] = {&adNamePattern, &controlNamePattern, &flowPattern,
                                       &modePattern,   &screenNamePattern,  &screenPathPattern};
    for (const Pattern* pattern : ignoring)
        EXPECT_TRUE(pattern->Matches(L"HOME"));
    EXPECT_TRUE(urlPattern.Matches(L"FILE://A"));
    const Pattern* const minding[] = {&codeNamePattern, &orgNamePattern, &formNamePattern,
                                      &reportNamePattern};
    for (const Pattern* pattern : minding)
        EXPECT_FALSE(pattern->Matches(L"HOME"));
    EXPECT_FALSE(taskResultPattern.Matches(L"UNKNOWN"));
    EXPECT_FALSE(biidPattern.Matches(L"UNKNOWN"));
}

} // namespace Zuvan::Lumeq::API
