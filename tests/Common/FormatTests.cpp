#include "Common/Format.h"

#include <gtest/gtest.h>

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

} // namespace Zuvan::Lumeq::Common
