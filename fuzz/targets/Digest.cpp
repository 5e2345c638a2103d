// SHA-256 in one piece, in many and by turns, HMAC, the identifier in hexadecimal, compared with OpenSSL, and
// the length field.
#include "LumeqLib/Extra/Collection/BiidKey.h"
#include "LumeqLib/Extra/Collection/DeviceIdentifier.h"
#include "LumeqLib/Extra/Collection/Hmac.h"
#include "LumeqLib/Extra/Collection/Sha256.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainHmac.h"
#include "fuzz/support/Require.h"

#include <algorithm>
#include <iterator>
#include <openssl/sha.h>
#include <string_view>
#include <vector>

using namespace Zuvan::Lumeq::Extra::Collection;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

using Bytes = std::span<const std::uint8_t>;

Bytes AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// A number of times a line: texts of many blocks from an input of a few bytes.
std::string Repeated(Input& input) {
    constexpr std::size_t Longest = 5000;
    const auto times = static_cast<std::size_t>(input.Number() & 0x7FFF);
    const std::string line = input.Bytes();
    std::string text;
    for (std::size_t i = 0; i < times && text.size() < Longest; ++i)
        text += line;
    return text;
}

Sha256Digest PlainHash(Bytes bytes) {
    Sha256Digest digest;
    SHA256(bytes.data(), bytes.size(), digest.data());
    return digest;
}

/// Hashes in pieces, whose sizes repeat `sizes`. At least one size must not be zero.
Sha256Digest HashInPieces(Bytes bytes, Bytes sizes) {
    sha256_ctx context;
    Sha256Init(context);
    for (std::size_t i = 0; !bytes.empty(); ++i) {
        const std::size_t size = std::min<std::size_t>(bytes.size(), sizes[i % sizes.size()]);
        Sha256Update(context, bytes.first(size));
        bytes = bytes.subspan(size);
    }
    Sha256Digest digest;
    Sha256Final(context, digest);
    return digest;
}

/// Two hashes at the same time, in pieces by turns; the contexts were used before.
void FuzzTwoAtOnce(Input& input) {
    sha256_ctx contexts[2];
    Sha256Digest digest;
    std::vector<std::uint8_t> messages[2];
    for (sha256_ctx& context : contexts) {
        Sha256Init(context);
        Sha256Update(context, AsBytes("used before"));
        Sha256Final(context, digest);
        Sha256Init(context);
    }
    while (!input.IsAtEnd()) {
        const std::size_t turn = input.Choice(2);
        const std::string piece = Repeated(input);
        Sha256Update(contexts[turn], AsBytes(piece));
        messages[turn].insert(messages[turn].end(), piece.begin(), piece.end());
    }
    for (std::size_t turn = 0; turn < 2; ++turn) {
        Sha256Final(contexts[turn], digest);
        Require(digest == PlainHash(messages[turn]), "a hash depends on its own message alone");
    }
}

void FuzzWhole(Input& input) {
    const std::string sizes = input.Bytes() + '\x01';
    const std::string key = Repeated(input);
    const std::string text = Repeated(input);
    const Bytes message = AsBytes(text);

    Sha256Digest digest;
    Sha256Hash(message, digest);
    Require(digest == PlainHash(message), "the digest is SHA-256");
    Require(HashInPieces(message, AsBytes(sizes)) == digest, "pieces have the digest of the whole");
    Require(HmacSha256(AsBytes(key), message) == PlainHmac(AsBytes(key), message),
            "the keyed digest is HMAC");
}

void FuzzHex(Input& input) {
    const std::string message = Repeated(input);
    std::wstring hex;
    for (const std::uint8_t byte : PlainHmac(AsBytes(BiidKey), AsBytes(message))) {
        hex += L"0123456789abcdef"[byte / 16];
        hex += L"0123456789abcdef"[byte % 16];
    }
    Require(HmacSha256Hex(message) == hex, "an identifier is the keyed digest in small letters");
}

/// Of messages that are too long to make.
void FuzzLengthField(Input& input) {
    const auto byteCount = static_cast<std::uint32_t>(input.Number());
    const std::array<std::uint8_t, 8> field = Sha256LengthField(byteCount);
    std::uint64_t bits = 0;
    for (const std::uint8_t byte : field)
        bits = bits * 256 + byte;
    Require(bits == byteCount % 0x20000000ULL * 8,
            "the length is in bits, the highest byte first, without the high half");
}

constexpr void (*Parts[])(Input& input) = {FuzzWhole, FuzzTwoAtOnce, FuzzHex, FuzzLengthField};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Parts[input.Choice(std::size(Parts))](input);
    return 0;
}
