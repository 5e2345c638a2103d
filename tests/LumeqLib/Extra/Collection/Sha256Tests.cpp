#include "LumeqLib/Extra/Collection/Sha256.h"

#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <string>

namespace Zuvan::Lumeq::Extra::Collection {

using Testing::Bytes;

namespace {

std::string Hex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        constexpr char Digits[] = "0123456789abcdef";
        text += {Digits[byte >> 4], Digits[byte & 0xF]};
    }
    return text;
}

std::string HashOf(const std::string& text) {
    Sha256Digest digest;
    Sha256Hash(Bytes(text), digest);
    return Hex(digest);
}

std::string HashInPieces(const std::string& text, std::size_t pieceSize) {
    sha256_ctx context;
    Sha256Init(context);
    for (std::size_t at = 0; at < text.size(); at += pieceSize)
        Sha256Update(context, Bytes(text.substr(at, pieceSize)));
    Sha256Digest digest;
    Sha256Final(context, digest);
    return Hex(digest);
}

std::string FinalHash(sha256_ctx& context) {
    Sha256Digest digest;
    Sha256Final(context, digest);
    return Hex(digest);
}

} // namespace

TEST(Sha256, EmptyMessage) {
    EXPECT_EQ(HashOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(Sha256, OneBlockMessage) {
    EXPECT_EQ(HashOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(Sha256, TwoBlockMessages) {
    EXPECT_EQ(HashOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(
        HashOf("abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqr"
               "lmnopqrsmnopqrstnopqrstu"),
        "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1");
}

TEST(Sha256, MillionLetters) {
    EXPECT_EQ(HashOf(std::string(1000000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, LengthsAroundTheBlockEdges) {
    struct Row {
        std::size_t length;
        const char* hash;
    };
    const Row rows[] = {
        {55, "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318"},
        {56, "b35439a4ac6f0948b6d6f9e3c6af0f5f590ce20f1bde7090ef7970686ec6738a"},
        {63, "7d3e74a05d7db15bce4ad9ec0658ea98e3f06eeecf16b4c6fff2da457ddc2f34"},
        {64, "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb"},
        {65, "635361c48bb9eab14198e76ea8ab7f1a41685d6ad62aa9146d301d4f17eb0ae0"},
        {119, "31eba51c313a5c08226adf18d4a359cfdfd8d2e816b13f4af952f7ea6584dcfb"},
        {120, "2f3d335432c70b580af0e8e1b3674a7c020d683aa5f73aaaedfdc55af904c21c"},
        {127, "c57e9278af78fa3cab38667bef4ce29d783787a2f731d4e12200270f0c32320a"},
        {128, "6836cf13bac400e9105071cd6af47084dfacad4e5e302c94bfed24e013afb73e"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(HashOf(std::string(row.length, 'a')), row.hash) << row.length;
}

TEST(Sha256, PiecesOfAnySizeHaveTheSameDigest) {
    for (const std::size_t size : {1, 3, 63, 64, 65, 128, 1000})
        EXPECT_EQ(HashInPieces(std::string(128, 'a'), size),
                  "6836cf13bac400e9105071cd6af47084dfacad4e5e302c94bfed24e013afb73e")
            << size;
}

TEST(Sha256, ContextCountsWholeBlocksAndPendingBytes) {
    sha256_ctx context;
    Sha256Init(context);
    Sha256Update(context, Bytes(std::string(130, 'a')));
    EXPECT_EQ(context.totalLength, 128u);
    EXPECT_EQ(context.pendingLength, 2u);
    Sha256Init(context);
    EXPECT_EQ(context.totalLength, 0u);
    EXPECT_EQ(context.pendingLength, 0u);
    EXPECT_EQ(FinalHash(context), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(Sha256LengthField, IsBigEndianBitsInTheLastFourBytes) {
    EXPECT_EQ(Hex(Sha256LengthField(0)), "0000000000000000");
    EXPECT_EQ(Hex(Sha256LengthField(3)), "0000000000000018");
    EXPECT_EQ(Hex(Sha256LengthField(0x00123456)), "000000000091a2b0");
}

TEST(Sha256LengthField, DropsBitsBeyondThirtyTwo) {
    EXPECT_EQ(Hex(Sha256LengthField(0x1FFFFFFF)), "00000000fffffff8");
    EXPECT_EQ(Hex(Sha256LengthField(0x20000000)), "0000000000000000");
    EXPECT_EQ(Hex(Sha256LengthField(0x20000001)), "0000000000000008");
    EXPECT_EQ(Hex(Sha256LengthField(0xFFFFFFFF)), "00000000fffffff8");
}

TEST(Sha256, LengthOfHalfAGigabyteIsPaddedAsZero) {
    sha256_ctx context;
    Sha256Init(context);
    context.totalLength = 0x20000000;
    EXPECT_EQ(FinalHash(context), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");

    Sha256Init(context);
    context.totalLength = 0x20000000;
    Sha256Update(context, Bytes("abc"));
    EXPECT_EQ(FinalHash(context), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

} // namespace Zuvan::Lumeq::Extra::Collection
