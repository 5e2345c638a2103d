#include "Common/AsciiCharacters.h"

#include "support/Utf8CodePage.h"

#include <gtest/gtest.h>

#include <string>

namespace Zuvan::Lumeq::Common {

namespace {

using WideCharacters = std::ctype<wchar_t>;

void ExpectAsciiAlone(const WideCharacters& characters) {
    for (int unit = 0; unit < 0x80; ++unit) {
        EXPECT_EQ(characters.narrow(static_cast<wchar_t>(unit), '?'), unit);
        EXPECT_EQ(characters.widen(static_cast<char>(unit)), unit);
    }
    for (const wchar_t unit : {L'\x80', L'\xe9', L'\xff', L'\x0131', L'\xff11', L'\xd83d', L'\xffff'})
        EXPECT_EQ(characters.narrow(unit, '~'), '~') << static_cast<unsigned>(unit);
    EXPECT_EQ(characters.widen('\xe9'), L'\xe9');
}

void ExpectAsciiAloneInTexts(const WideCharacters& characters) {
    const std::wstring wide = L"%[\x0131\x7f";
    std::string narrow(wide.size(), '\0');
    EXPECT_EQ(characters.narrow(wide.data(), wide.data() + wide.size(), '?', narrow.data()),
              wide.data() + wide.size());
    EXPECT_EQ(narrow, "%[?\x7f");

    std::wstring widened(narrow.size(), L'\0');
    EXPECT_EQ(characters.widen(narrow.data(), narrow.data() + narrow.size(), widened.data()),
              narrow.data() + narrow.size());
    EXPECT_EQ(widened, L"%[?\x7f");
}

} // namespace

TEST(AsciiCharacters, NarrowAndWidenAsciiAlone) {
    const std::locale locale = With<AsciiCharacters>(std::locale());
    ExpectAsciiAlone(std::use_facet<WideCharacters>(locale));
    ExpectAsciiAloneInTexts(std::use_facet<WideCharacters>(locale));
}

TEST(AsciiCharacters, DoSoWhereTheCodePageIsUtf8) {
    const Testing::Utf8CodePage codePage;
    EXPECT_EQ(std::use_facet<WideCharacters>(std::locale()).narrow(L'%', '~'), '~')
        << "the usual ones do not";
    const std::locale locale = With<AsciiCharacters>(std::locale());
    ExpectAsciiAlone(std::use_facet<WideCharacters>(locale));
    ExpectAsciiAloneInTexts(std::use_facet<WideCharacters>(locale));
}

TEST(AsciiCharacters, LeaveTheRestOfTheLocaleAsItIs) {
    class Comma : public std::numpunct<wchar_t> {
        wchar_t do_decimal_point() const override { return L','; }
    };
    const std::locale locale = With<AsciiCharacters>(With<Comma>(std::locale()));
    EXPECT_EQ(std::use_facet<std::numpunct<wchar_t>>(locale).decimal_point(), L',');
    EXPECT_TRUE(std::isspace(L'\x2003', locale));
    EXPECT_FALSE(std::isspace(L'a', locale));
}

} // namespace Zuvan::Lumeq::Common
