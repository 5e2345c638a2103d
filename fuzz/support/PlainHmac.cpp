#include "fuzz/support/PlainHmac.h"

#include <openssl/hmac.h>

namespace Zuvan::Lumeq::Fuzzing {

std::array<std::uint8_t, 32> PlainHmac(std::span<const std::uint8_t> key,
                                       std::span<const std::uint8_t> message) {
    static constexpr std::uint8_t Nothing = 0; // a null key would mean the previous key
    std::array<std::uint8_t, 32> digest;
    HMAC(EVP_sha256(), key.empty() ? &Nothing : key.data(), static_cast<int>(key.size()), message.data(),
         message.size(), digest.data(), nullptr);
    return digest;
}

} // namespace Zuvan::Lumeq::Fuzzing
