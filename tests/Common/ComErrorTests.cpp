#include "Common/ComError.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr std::int32_t Code(std::uint32_t code) { return static_cast<std::int32_t>(code); }

} // namespace

TEST(ComErrorText, DropsTheLineEndOfTheSystemsMessage) {
    EXPECT_EQ(ComErrorText(Code(0x80070005), L"Access denied.\r\n"), L"Access denied.");
    EXPECT_EQ(ComErrorText(Code(0x80070005), L"Access denied."), L"Access denied.");
}

TEST(ComErrorText, NumbersDispatchErrors) {
    EXPECT_EQ(ComErrorText(Code(0x80040201), L""), L"IDispatch error #1");
    EXPECT_EQ(ComErrorText(Code(0x8004FFFF), L""), L"IDispatch error #65023");
}

TEST(ComErrorText, NamesTheCodeOtherwise) {
    EXPECT_EQ(ComErrorText(Code(0x80040200), L""), L"Unknown error 0x80040200");
    EXPECT_EQ(ComErrorText(Code(0x80050000), L""), L"Unknown error 0x80050000");
    EXPECT_EQ(ComErrorText(0x1F, L""), L"Unknown error 0x1F");
}

} // namespace Zuvan::Lumeq::Common
