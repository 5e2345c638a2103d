#include "Common/Pattern.h"

#include "support/ImportedFunction.h"
#include "support/RuntimeLocale.h"
#include "support/Utf8CodePage.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <gtest/gtest.h>
#include <locale>
#include <regex>

namespace Zuvan::Lumeq::Common {

namespace {

int keysAskedFor = 0;

std::size_t CountNarrowKey(char* key, const char* text, std::size_t size) {
    ++keysAskedFor;
    std::copy_n(text, std::min(std::strlen(text) + 1, size), key);
    return std::strlen(text);
}

std::size_t CountWideKey(wchar_t* key, const wchar_t* text, std::size_t size) {
    ++keysAskedFor;
    std::copy_n(text, std::min(std::wcslen(text) + 1, size), key);
    return std::wcslen(text);
}

/// While it lives, the C runtime's keys for sorting are counted.
class CollationKeys {
public:
    CollationKeys() { keysAskedFor = 0; }

    int Count() const { return keysAskedFor; }

private:
    Testing::ImportedFunction<decltype(strxfrm)> _narrow{"msvcrt.dll", "strxfrm", &CountNarrowKey};
    Testing::ImportedFunction<decltype(wcsxfrm)> _wide{"msvcrt.dll", "wcsxfrm", &CountWideKey};
};

template <class Char>
void SortInTheUsualLocale(const std::basic_string<Char>& text) {
    std::use_facet<std::collate<Char>>(std::locale::classic())
        .transform(text.data(), text.data() + text.size());
}

void ExpectAsciiCase(const char* locale, const Pattern& letter, const Pattern& range) {
    EXPECT_TRUE(letter.Matches(L"\u00e9")) << locale;
    EXPECT_FALSE(letter.Matches(L"\u00c9")) << locale;
    EXPECT_TRUE(range.Matches(L"azAZ")) << locale;
    for (const wchar_t* other : {L"\u00e9", L"\u0130", L"\u0131", L"\u017f", L"\u212a", L"[", L"`", L"@"})
        EXPECT_FALSE(range.Matches(other)) << locale << ": " << testing::PrintToString(other);
}

} // namespace

TEST(Pattern, NarrowOneAsksTheRuntimeForNoCollationKeys) {
    const CollationKeys keys;
    EXPECT_TRUE(NarrowPattern("^[^?]+$").Matches("a\xC3\xA9"));
    EXPECT_EQ(keys.Count(), 0);
    SortInTheUsualLocale<char>("a");
    EXPECT_EQ(keys.Count(), 1) << "they are counted";
}

TEST(Pattern, WideOneAsksTheRuntimeForNoCollationKeys) {
    const CollationKeys keys;
    EXPECT_TRUE(Pattern(L"^[^?]+$").Matches(L"a\u00e9\u6f22"));
    EXPECT_TRUE(Pattern(L"^[^?]+$", LetterCase::Ignored).Matches(L"a\u00e9\u6f22"));
    EXPECT_EQ(keys.Count(), 0);
    SortInTheUsualLocale<wchar_t>(L"a");
    EXPECT_EQ(keys.Count(), 1) << "they are counted";
}

TEST(Pattern, IgnoresTheCaseOfAsciiAlone) {
    const Pattern letter(L"^\u00e9$", LetterCase::Ignored);
    const Pattern range(L"^[a-z]+$", LetterCase::Ignored);
    ExpectAsciiCase("C", letter, range);
    ExpectAsciiCase("C", letter, Pattern(L"^[A-Z]+$", LetterCase::Ignored));
}

TEST(Pattern, IgnoresTheCaseOfAsciiAloneInEveryLocaleOfTheHost) {
    const Pattern letter(L"^\u00e9$", LetterCase::Ignored);
    const Pattern range(L"^[a-z]+$", LetterCase::Ignored);
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        ExpectAsciiCase(name, letter, range);
        ExpectAsciiCase(name, Pattern(L"^\u00e9$", LetterCase::Ignored),
                        Pattern(L"^[A-Z]+$", LetterCase::Ignored));
    }
}

TEST(Pattern, KnowsTheLettersBeyondAsciiInEveryLocaleOfTheHost) {
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        const Pattern word(LR"(^\w+$)", LetterCase::Ignored);
        EXPECT_TRUE(word.Matches(L"a_9\u00e9\u0130\u0131\u0431\u3042\u6f22\u0661")) << name;
        for (const wchar_t* other : {L"-", L"\u00a0", L"\u2028", L"\xd83d", L"\u00d7"})
            EXPECT_FALSE(word.Matches(other)) << name << ": " << testing::PrintToString(other);
    }
}

TEST(Pattern, NarrowBracketHoldsTheSameBytesInEveryLocaleOfTheHost) {
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        const NarrowPattern pattern("^[^?a-f]$");
        for (int byte = 0x80; byte < 0x100; ++byte)
            EXPECT_TRUE(pattern.Matches(std::string(1, static_cast<char>(byte)))) << name << ": " << byte;
        for (const char* other : {"?", "a", "f"})
            EXPECT_FALSE(pattern.Matches(other)) << name << ": " << other;
        EXPECT_TRUE(pattern.Matches("A")) << name;
    }
}

TEST(Pattern, HasItsSpecialCharactersWhereTheCodePageIsUtf8) {
    const Testing::Utf8CodePage codePage;
    // Those of the program's own patterns are in a locale that is older.
    std::wregex pattern;
    pattern.imbue(NewPatternLocale());
    pattern.assign(LR"(^[^?\s]+(\w|\.x){2,3}\*$)", std::regex::ECMAScript | std::regex::icase);
    for (const wchar_t* text : {L"a_1*", L"ab.Xc*", L"\u00e9.x\u6f22*"})
        EXPECT_TRUE(std::regex_match(text, pattern)) << testing::PrintToString(text);
    for (const wchar_t* text : {L"", L"?_1*", L"a--*", L"abxc", LR"(^[^?\s]+(\w|\.x){2,3}\*$)"})
        EXPECT_FALSE(std::regex_match(text, pattern)) << testing::PrintToString(text);
}

} // namespace Zuvan::Lumeq::Common
