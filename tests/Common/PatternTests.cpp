#include "Common/CompiledPattern.h"

#include "support/RuntimeLocale.h"
#include "support/SmallStack.h"

#include <gtest/gtest.h>
#include <locale>
#include <string>
#include <type_traits>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr auto Ignored = LetterCase::Ignored;

/// Whether the text is a pattern; otherwise it does not compile.
template <PatternText Text>
concept IsPattern = requires {
    typename std::bool_constant<(PatternParser(Text.View(), Ignored), true)>;
};

constexpr std::size_t StatesOf(const Pattern& pattern) {
    return pattern.Rows().size / pattern.Rows().classes;
}

void ExpectAsciiCase(const char* locale, const Pattern& range) {
    EXPECT_TRUE(range.Matches(L"azAZ")) << locale;
    for (const wchar_t* other : {L"\u00e9", L"\u0130", L"\u0131", L"\u017f", L"\u212a", L"[", L"`", L"@"})
        EXPECT_FALSE(range.Matches(other)) << locale << ": " << testing::PrintToString(other);
}

/// The characters that the two know differently.
std::wstring Disagreement(const Pattern& pattern, std::ctype_base::mask mask) {
    const auto& standard = std::use_facet<std::ctype<wchar_t>>(std::locale::classic());
    std::wstring different;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit)
        if (const auto character = static_cast<wchar_t>(unit);
            pattern.Matches({&character, 1}) != standard.is(mask, character))
            different += character;
    return different;
}

void ExpectMatches(const Pattern& pattern, std::initializer_list<std::wstring> accepted,
                   std::initializer_list<std::wstring> refused) {
    for (const std::wstring& text : accepted)
        EXPECT_TRUE(pattern.Matches(text)) << testing::PrintToString(text);
    for (const std::wstring& text : refused)
        EXPECT_FALSE(pattern.Matches(text)) << testing::PrintToString(text);
}

} // namespace

TEST(Pattern, WhatIsNotUnderstoodDoesNotCompile) {
    static_assert(IsPattern<L"^(a|[b-d]\\.\\x20)+[^\\x80-\\x9f]{2}[-\\w]{1,3}$">);
    static_assert(!IsPattern<L"(a">);
    static_assert(!IsPattern<L"a)">);
    static_assert(!IsPattern<L"[a">);
    static_assert(!IsPattern<L"(?:a)">);
    static_assert(!IsPattern<L"a{2,}">);
    static_assert(!IsPattern<L"a{0,2}">);
    static_assert(!IsPattern<L"a{3,2}">);
    static_assert(!IsPattern<L"a*?">);
    static_assert(!IsPattern<L"a**">);
    static_assert(!IsPattern<L"*a">);
    static_assert(!IsPattern<L"(a)\\1">);
    static_assert(!IsPattern<L"\\ba">);
    static_assert(!IsPattern<L"\\W">);
    static_assert(!IsPattern<L"\\u0041">);
    static_assert(!IsPattern<L"\\xG0">);
    static_assert(!IsPattern<L"a^b">);
    static_assert(!IsPattern<L"a$b">);
    static_assert(!IsPattern<L"a]">);
    static_assert(!IsPattern<L"[[:alpha:]]">);
    static_assert(!IsPattern<L"[b-a]">);
    static_assert(!IsPattern<L"[a-\\w]">);
    static_assert(!IsPattern<L"\u00e9">);
    static_assert(!IsPattern<L"[\\x80-\\x90]">);
    static_assert(!IsPattern<L"[\\x90-\\x9f]">);
    static_assert(!IsPattern<L"a{193}">);
    static_assert(!IsPattern<L"a\\">);
}

TEST(Pattern, HasNoMoreStatesThanNeeded) {
    static_assert(StatesOf(CompiledPattern<L"a|a">) == 3);
    static_assert(StatesOf(CompiledPattern<L"ab|cb|db">) == 4);
    static_assert(StatesOf(CompiledPattern<L"(a*)*">) == 2);
    static_assert(StatesOf(CompiledPattern<L"[ab]|[^ab]">) == 3);
    static_assert(StatesOf(CompiledPattern<L"a{1,128}">) == 130);
}

TEST(Pattern, UnderstandsItsSyntax) {
    ExpectMatches(CompiledPattern<L"">, {L""}, {L"a"});
    ExpectMatches(CompiledPattern<L"^a|bc$">, {L"a", L"bc"}, {L"", L"ac", L"ab", L"b"});
    ExpectMatches(CompiledPattern<L"(ab){2}">, {L"abab"}, {L"", L"ab", L"ababab"});
    ExpectMatches(CompiledPattern<L"a{2,4}b">, {L"aab", L"aaab", L"aaaab"}, {L"ab", L"aaaaab", L"aaa"});
    ExpectMatches(CompiledPattern<L"(a?){2}">, {L"", L"a", L"aa"}, {L"aaa"});
    ExpectMatches(CompiledPattern<L"[-+*.^$|]">, {L"-", L"+", L"*", L".", L"^", L"$", L"|"},
                  {L"", L",", L"\\"});
    ExpectMatches(CompiledPattern<L"[a-]">, {L"a", L"-"}, {L"b"});
    ExpectMatches(CompiledPattern<L"[^\\s\\d]">, {L"a", L"\u6f22"}, {L"1", L" ", L"\u2003", L""});
    ExpectMatches(CompiledPattern<L"\\\\\\$">, {L"\\$"}, {L"\\", L"$"});
    ExpectMatches(CompiledPattern<L"[\\x41-\\x43]", Ignored>, {L"A", L"c"}, {L"d"});
    ExpectMatches(CompiledPattern<L"[^b]", Ignored>, {L"a"}, {L"b", L"B"});
}

TEST(Pattern, DotIsAnyCharacterThatEndsNoLine) {
    const Pattern& dot = CompiledPattern<L".">;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const auto character = static_cast<wchar_t>(unit);
        const bool endsLine = unit == '\n' || unit == '\r' || unit == 0x2028 || unit == 0x2029;
        ASSERT_EQ(dot.Matches({&character, 1}), !endsLine) << unit;
    }
}

TEST(Pattern, ZeroIsACharacter) {
    EXPECT_TRUE(CompiledPattern<L"a[^b]">.Matches({L"a\0", 2}));
    EXPECT_FALSE(CompiledPattern<L"a">.Matches({L"a\0", 2}));
}

TEST(Pattern, KnowsTheClassesOfTheStandardFacetInEveryLocaleOfTheHost) {
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        EXPECT_EQ(Disagreement(CompiledPattern<L"\\w">, std::ctype_base::alnum), L"_") << name;
        EXPECT_EQ(Disagreement(CompiledPattern<L"\\d">, std::ctype_base::digit), L"") << name;
        EXPECT_EQ(Disagreement(CompiledPattern<L"\\s">, std::ctype_base::space), L"") << name;
    }
}

TEST(Pattern, KnowsTheLettersBeyondAsciiInEveryLocaleOfTheHost) {
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        const Pattern& word = CompiledPattern<LR"(^\w+$)", Ignored>;
        EXPECT_TRUE(word.Matches(L"a_9\u00e9\u0130\u0131\u0431\u3042\u6f22\u0661")) << name;
        for (const wchar_t* other : {L"-", L"\u00a0", L"\u2028", L"\xd83d", L"\u00d7"})
            EXPECT_FALSE(word.Matches(other)) << name << ": " << testing::PrintToString(other);
    }
}

TEST(Pattern, IgnoresTheCaseOfAsciiAloneInEveryLocaleOfTheHost) {
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        ExpectAsciiCase(name, CompiledPattern<L"^[a-z]+$", Ignored>);
        ExpectAsciiCase(name, CompiledPattern<L"^[A-Z]+$", Ignored>);
    }
}

TEST(Pattern, MillionCharactersFitASmallStack) {
    const std::wstring text(1'000'000, L'a');
    bool accepted = false;
    Testing::OnSmallStack([&] { accepted = CompiledPattern<L"^((a+)+b?)*$">.Matches(text); });
    EXPECT_TRUE(accepted);
}

} // namespace Zuvan::Lumeq::Common
