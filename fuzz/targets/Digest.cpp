// SHA-256 and HMAC, in one piece and in many, compared with OpenSSL.
#include "LumeqLib/Extra/Collection/Hmac.h"
#include "LumeqLib/Extra/Collection/Sha256.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainHmac.h"
#include "fuzz/support/Require.h"

#include <algorithm>
#include <openssl/sha.h>
#include <vector>

using namespace Zuvan::Lumeq::Extra::Collection;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

using Bytes = std::span<const std::uint8_t>;

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::string sizes = input.Bytes() + '\x01';
    const std::string key = input.Bytes();
    const Bytes keyBytes(reinterpret_cast<const std::uint8_t*>(key.data()), key.size());
    const Bytes message = input.Rest();

    Sha256Digest digest;
    Sha256Hash(message, digest);
    Require(digest == PlainHash(message), "the digest is SHA-256");
    Require(HashInPieces(message, {reinterpret_cast<const std::uint8_t*>(sizes.data()), sizes.size()}) ==
                digest,
            "pieces have the digest of the whole");
    Require(HmacSha256(keyBytes, message) == PlainHmac(keyBytes, message), "the keyed digest is HMAC");
    return 0;
}
