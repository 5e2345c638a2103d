#include "LumeqLib/Extra/Collection/DeviceIdentifier.h"

#include "Common/CompiledPattern.h"
#include "LumeqLib/Extra/Collection/BiidKey.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>
#include <new>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

/// The literals below are valid for the development key only.
class HmacSha256HexTest : public testing::Test {
protected:
    void SetUp() override {
        if (BiidKey != "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"
                       "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef")
            GTEST_SKIP() << "configured with a deployment's own key";
    }
};

} // namespace

TEST_F(HmacSha256HexTest, EmptyMessageIsHashedUnderTheKey) {
    EXPECT_EQ(HmacSha256Hex(""), L"2b1439d9ad6245b23ef5f1fd61463fb5ed579e8c871d6288200fac36590114bb");
}

TEST_F(HmacSha256HexTest, TwoSpellingsOfOneUuidDiffer) {
    EXPECT_EQ(HmacSha256Hex("12345678-90ab-cdef-1234-567890abcdef"),
              L"6d5fd4a8ac15d1d7aea10729c40413df06d68c0fe15f0483d8501f297d6b4bb3");
    EXPECT_EQ(HmacSha256Hex("12345678-90AB-CDEF-1234-567890ABCDEF"),
              L"eac1bb83e11ee265b3815332998491005e2c31b8d0fadfe55d7a1f2a1d0bcef5");
}

TEST_F(HmacSha256HexTest, HashesBytesUnchanged) {
    EXPECT_EQ(HmacSha256Hex("\xe9\xff caf"),
              L"1a40d656a5d2f2fb1f631cdc165fd2a8175014ad4c2496ddde39fcd486f78009");
    EXPECT_EQ(HmacSha256Hex("{a}"), L"a042aa01c9c37341071a442156efed76e0602436ee1f10cf686adbb2f3b70408");
}

TEST(HmacSha256Hex, HoldsOnlyLowerCaseHexadecimalDigits) {
    const Common::Pattern& biid = Common::CompiledPattern<L"^[a-f0-9]{64}$">;
    for (int i = 0; i < 200; ++i)
        EXPECT_TRUE(biid.Matches(HmacSha256Hex(std::to_string(i)))) << i;
}

TEST(HmacSha256Hex, MemoryThatRunsOutIsAStandardException) {
    for (const int nth : {1, 2}) {
        const Testing::FailingAllocation failing(nth);
        EXPECT_THROW(HmacSha256Hex("1c852a4d-b800-1f08"), std::bad_alloc) << nth;
    }
}

} // namespace Zuvan::Lumeq::Extra::Collection
