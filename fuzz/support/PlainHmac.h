#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace Zuvan::Lumeq::Fuzzing {

/// HMAC with SHA-256, by OpenSSL.
std::array<std::uint8_t, 32> PlainHmac(std::span<const std::uint8_t> key,
                                       std::span<const std::uint8_t> message);

} // namespace Zuvan::Lumeq::Fuzzing
