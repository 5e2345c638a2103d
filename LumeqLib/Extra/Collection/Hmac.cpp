#include "LumeqLib/Extra/Collection/Hmac.h"

#include <algorithm>
#include <array>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

using BlockBytes = std::array<std::uint8_t, Sha256BlockSize>;

BlockBytes KeyBlock(const CHMAC256& hmac, std::span<const std::uint8_t> key) {
    BlockBytes block{};
    if (key.size() <= block.size()) {
        std::copy(key.begin(), key.end(), block.begin());
        return block;
    }
    Sha256Digest digest;
    hmac.hash(key, digest);
    std::copy(digest.begin(), digest.end(), block.begin());
    return block;
}

BlockBytes Masked(BlockBytes block, std::uint8_t mask) {
    for (std::uint8_t& byte : block)
        byte ^= mask;
    return block;
}

Sha256Digest HashWithPrefix(const CHMAC256& hmac, const BlockBytes& prefix,
                            std::span<const std::uint8_t> rest) {
    Sha256Digest digest;
    hmac.init(*hmac.context);
    hmac.update(*hmac.context, prefix);
    if (!rest.empty())
        hmac.update(*hmac.context, rest);
    hmac.final(*hmac.context, digest);
    return digest;
}

} // namespace

Sha256Digest HmacSha256(std::span<const std::uint8_t> key, std::span<const std::uint8_t> message) {
    const CHMAC256 hmac;
    const BlockBytes keyBlock = KeyBlock(hmac, key);
    const Sha256Digest inner = HashWithPrefix(hmac, Masked(keyBlock, 0x36), message);
    return HashWithPrefix(hmac, Masked(keyBlock, 0x5C), inner);
}

} // namespace Zuvan::Lumeq::Extra::Collection
