#include "LumeqLib/Extra/Collection/Hmac.h"

#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <string>

namespace Zuvan::Lumeq::Extra::Collection {

using Testing::Bytes;

namespace {

std::string HmacOf(const std::string& key, const std::string& message) {
    std::string text;
    for (const std::uint8_t byte : HmacSha256(Bytes(key), Bytes(message))) {
        constexpr char Digits[] = "0123456789abcdef";
        text += {Digits[byte >> 4], Digits[byte & 0xF]};
    }
    return text;
}

std::string Counting(char first, char last) {
    std::string bytes;
    for (char byte = first; byte <= last; ++byte)
        bytes += byte;
    return bytes;
}

} // namespace

// The numbered cases are those of RFC 4231.
TEST(Hmac, Case1) {
    EXPECT_EQ(HmacOf(std::string(20, '\x0b'), "Hi There"),
              "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
}

TEST(Hmac, Case2ShortKey) {
    EXPECT_EQ(HmacOf("Jefe", "what do ya want for nothing?"),
              "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
}

TEST(Hmac, Case3) {
    EXPECT_EQ(HmacOf(std::string(20, '\xaa'), std::string(50, '\xdd')),
              "773ea91e36800e46854db8ebd09181a72959098b3ef8c122d9635514ced565fe");
}

TEST(Hmac, Case4) {
    EXPECT_EQ(HmacOf(Counting(1, 25), std::string(50, '\xcd')),
              "82558a389a443c0ea4cc819899f2083a85f0faa3e578f8077a2e3ff46729665b");
}

TEST(Hmac, Case5StartsAsPublished) {
    EXPECT_EQ(HmacOf(std::string(20, '\x0c'), "Test With Truncation").substr(0, 32),
              "a3b6167473100ee06e0c796c2955552b");
}

TEST(Hmac, Case6KeyLongerThanABlock) {
    EXPECT_EQ(HmacOf(std::string(131, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First"),
              "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
}

TEST(Hmac, Case7KeyAndMessageLongerThanABlock) {
    EXPECT_EQ(
        HmacOf(std::string(131, '\xaa'),
               "This is a test using a larger than block-size key and a larger than block-size data. The "
               "key needs to be hashed before being used by the HMAC algorithm."),
        "9b09ffa71b942fcb27635fbcd5b0e944bfdc63644f0713938a7f51535c3a35e2");
}

TEST(Hmac, KeyOfExactlyABlockIsUsedUnchanged) {
    EXPECT_EQ(HmacOf(std::string(64, 'k'), "message"),
              "890f3a16e0ca0aaa3bf180f70fa8e3970b3fd6505e98fde157988dcc19d1685c");
}

TEST(Hmac, KeyOfOneByteMoreIsHashedFirst) {
    EXPECT_EQ(HmacOf(std::string(65, 'k'), "message"),
              "0c256505306af48015530c139bb7add5ad7a6a9291cd511278a067e765816fbd");
}

TEST(Hmac, EmptyKeyAndMessage) {
    EXPECT_EQ(HmacOf("", ""), "b613679a0814d9ec772f95d778c35fc5ff1697c493715653c6c712144292c5ad");
}

} // namespace Zuvan::Lumeq::Extra::Collection
