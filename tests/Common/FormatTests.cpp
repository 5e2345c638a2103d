#include "Common/Format.h"

#include "support/RuntimeLocale.h"

#include <gtest/gtest.h>

#include <cstring>

namespace Zuvan::Lumeq::Common {

TEST(FormatBounded, UsesThePlatformsConversions) {
    EXPECT_EQ(FormatBounded(100, L"%s %S %d 0x%08lx", L"wide", "narrow", -1, 0x1FUL).text,
              L"wide narrow -1 0x0000001f");
}

TEST(FormatBounded, PointersHaveSixteenUpperCaseDigits) {
    EXPECT_EQ(FormatBounded(100, L"0x%p", reinterpret_cast<void*>(0xABCDEF)).text, L"0x0000000000ABCDEF");
    EXPECT_EQ(FormatBounded(100, L"0x%p", nullptr).text, L"0x0000000000000000");
}

TEST(FormatBounded, OneLessThanTheCapacityFits) {
    const FormattedText result = FormatBounded(5, L"%s", L"abcd");
    EXPECT_EQ(result.text, L"abcd");
    EXPECT_FALSE(result.truncated);
}

TEST(FormatBounded, TheCapacityItselfDoesNotFit) {
    const FormattedText result = FormatBounded(5, L"%s", L"abcde");
    EXPECT_EQ(result.text, L"abcd");
    EXPECT_TRUE(result.truncated);
}

TEST(FormatBounded, LongTextIsCut) {
    const FormattedText result = FormatBounded(5, L"%s", L"abcdefghij");
    EXPECT_EQ(result.text, L"abcd");
    EXPECT_TRUE(result.truncated);
}

TEST(NarrowArgument, IsFollowedByTwoZeros) {
    for (const char* text : {"", "a", "caf\xE9", "\x83"}) {
        const NarrowArgument argument(text);
        EXPECT_STREQ(argument.Text(), text);
        EXPECT_EQ(argument.Text()[std::strlen(text) + 1], '\0') << text;
    }
}

TEST(NarrowArgument, IsCutWhereNothingMoreIsVisibleAndStillFollowedByTwoZeros) {
    for (const std::size_t length : {12287U, 12288U, 12289U, 20000U}) {
        const std::string text(length, '\x83');
        const NarrowArgument argument(text.c_str());
        const std::string kept = argument.Text();
        EXPECT_EQ(kept, text.substr(0, 12288));
        EXPECT_EQ(argument.Text()[kept.size() + 1], '\0') << length;
    }
}

TEST(NarrowArgument, IsOfTheSameTextInTheLongestMessage) {
    for (const std::size_t length : {4095U, 4096U, 20000U}) {
        const std::string text(length, 'x');
        const FormattedText result = FormatBounded(4096, L"%S", NarrowArgument(text.c_str()).Text());
        EXPECT_EQ(result.text, std::wstring(4095, L'x'));
        EXPECT_EQ(result.truncated, length > 4095) << length;
    }
}

TEST(NarrowArgument, KeepsCharactersOfTwoBytesThatFillTheLongestMessage) {
    const Testing::RuntimeLocale locale("Japanese");
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "\x8a\xbf";
    const FormattedText result = FormatBounded(4096, L"%S", NarrowArgument(text.c_str()).Text());
    EXPECT_EQ(result.text, std::wstring(4095, L'\u6f22'));
    EXPECT_TRUE(result.truncated);
}

} // namespace Zuvan::Lumeq::Common
