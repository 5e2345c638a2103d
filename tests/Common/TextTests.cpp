#include "Common/Text.h"

#include "support/RuntimeLocale.h"

#include <gtest/gtest.h>

#include <locale>
#include <stdexcept>
#include <vector>

namespace Zuvan::Lumeq::Common {

TEST(Base64Encode, PadsByTheLength) {
    EXPECT_EQ(Base64Encode(std::vector<std::uint8_t>{}), L"");
    EXPECT_EQ(Base64Encode(std::vector<std::uint8_t>{'f'}), L"Zg==");
    EXPECT_EQ(Base64Encode(std::vector<std::uint8_t>{'f', 'o'}), L"Zm8=");
    EXPECT_EQ(Base64Encode(std::vector<std::uint8_t>{'f', 'o', 'o'}), L"Zm9v");
    EXPECT_EQ(Base64Encode(std::vector<std::uint8_t>{'f', 'o', 'o', 'b'}), L"Zm9vYg==");
}

TEST(Base64Encode, UsesTheWholeStandardAlphabet) {
    std::vector<std::uint8_t> bytes;
    for (unsigned group = 0; group < 64; group += 4) {
        const unsigned bits = group << 18 | (group + 1) << 12 | (group + 2) << 6 | (group + 3);
        for (const int shift : {16, 8, 0})
            bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
    }
    EXPECT_EQ(Base64Encode(bytes), L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST(Base64Encode, AddsNoLineBreaks) {
    const std::wstring encoded = Base64Encode(std::vector<std::uint8_t>(300, 0));
    EXPECT_EQ(encoded, std::wstring(400, L'A'));
}

TEST(Base64EncodeUtf8, EncodesTheUtf8Bytes) {
    EXPECT_EQ(Base64EncodeUtf8(L""), L"");
    EXPECT_EQ(Base64EncodeUtf8(L"\u00e9"), L"w6k=");
    EXPECT_THROW(Base64EncodeUtf8(L"\xD800"), std::range_error);
}

TEST(Rot13Wide, RotatesLettersOnly) {
    EXPECT_EQ(Rot13Wide(L"Abc-9"), L"Nop-9");
    EXPECT_EQ(Rot13Wide(L"Nop-9"), L"Abc-9");
    EXPECT_EQ(Rot13Wide(L"0123456789"), L"0123456789");
    EXPECT_EQ(Rot13Wide(L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"),
              L"NOPQRSTUVWXYZABCDEFGHIJKLMnopqrstuvwxyzabcdefghijklm");
    EXPECT_EQ(Rot13Wide(L""), L"");
}

TEST(Rot13Wide, LeavesOtherCharactersAlone) { EXPECT_EQ(Rot13Wide(L"\u00e9\u6f22"), L"\u00e9\u6f22"); }

TEST(Rot13Wide, OfAsciiIsTheSameInEveryLocale) {
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        EXPECT_EQ(Rot13Wide(L"AIZaiz[@`{019-._~+/="), L"NVMnvm[@`{019-._~+/=") << name;
    }
}

// UTF-8 bytes that are letters in that code page are rotated as well, and the result is no valid text.
TEST(Rot13Wide, OfOtherLettersFailsWhereTheHostsLocaleHasThem) {
    const Testing::RuntimeLocale german("German");
    EXPECT_THROW(Rot13Wide(L"\u00e9"), std::range_error);
}

TEST(DecimalText, WritesAnyNumber) {
    EXPECT_EQ(DecimalText(0), L"0");
    EXPECT_EQ(DecimalText(static_cast<unsigned char>(255)), L"255");
    EXPECT_EQ(DecimalText(INT64_MIN), L"-9223372036854775808");
    EXPECT_EQ(DecimalText(UINT64_MAX), L"18446744073709551615");
}

TEST(IsBlank, DoesNotFollowTheHostsLocale) {
    const Testing::RuntimeLocale german("German");
    EXPECT_TRUE(IsBlank(L" \t"));
    EXPECT_FALSE(IsBlank(L"\u00e4"));
}

TEST(IsBlank, TakesEmptyAndWhiteSpace) {
    EXPECT_TRUE(IsBlank(L""));
    EXPECT_TRUE(IsBlank(L"   "));
    EXPECT_TRUE(IsBlank(L" \t\r\n"));
    EXPECT_FALSE(IsBlank(L" x "));
}

TEST(IsBlank, AgreesWithTheClassicLocaleOnEveryUnit) {
    const std::locale& classic = std::locale::classic();
    for (unsigned number = 0; number <= 0xFFFF; ++number) {
        const auto unit = static_cast<wchar_t>(number);
        ASSERT_EQ(IsBlank({unit}), std::isspace(unit, classic) || std::isblank(unit, classic)) << number;
    }
}

TEST(LetterCase, ChangesTheWholeText) {
    EXPECT_EQ(ToLower(L"Debug-1"), L"debug-1");
    EXPECT_EQ(ToUpper(L"ab-12-cd"), L"AB-12-CD");
}

TEST(LetterCase, OfAsciiIsTheSameInEveryLocale) {
    for (const char* name : Testing::HostLocales) {
        const Testing::RuntimeLocale locale(name);
        EXPECT_EQ(ToLower(L"AIZ[@09{}-"), L"aiz[@09{}-") << name;
        EXPECT_EQ(ToUpper(L"aiz`@09{}-"), L"AIZ`@09{}-") << name;
    }
}

} // namespace Zuvan::Lumeq::Common
