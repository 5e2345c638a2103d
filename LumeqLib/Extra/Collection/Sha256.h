// SHA-256 (FIPS 180-4), except for the length of messages of 512 MiB and more: see Sha256LengthField.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace Zuvan::Lumeq::Extra::Collection {

inline constexpr std::size_t Sha256BlockSize = 64; // bytes

using Sha256Digest = std::array<std::uint8_t, 32>;

/// Base of the hash contexts.
class CSHACtxBase {
public:
    virtual ~CSHACtxBase() = default;
};

/// The state of one running hash.
class sha256_ctx : public CSHACtxBase {
public:
    std::uint32_t totalLength = 0;                         ///< Bytes of whole blocks already processed.
    std::uint32_t pendingLength = 0;                       ///< Bytes waiting in `block`, less than a block.
    std::array<std::uint8_t, 2 * Sha256BlockSize> block{}; ///< Room for two blocks of padding.
    std::array<std::uint32_t, 8> state{};
};

void Sha256Init(sha256_ctx& context);
void Sha256Update(sha256_ctx& context, std::span<const std::uint8_t> bytes);
/// The context needs Sha256Init before its next use.
void Sha256Final(sha256_ctx& context, Sha256Digest& digest);
/// Hashes one buffer.
void Sha256Hash(std::span<const std::uint8_t> bytes, Sha256Digest& digest);

/// The last eight bytes of the padding of a message of `byteCount` bytes. The bit count is computed in 32
/// bits, so its high half is always zero: identifiers in the field were made that way.
std::array<std::uint8_t, 8> Sha256LengthField(std::uint32_t byteCount);

} // namespace Zuvan::Lumeq::Extra::Collection
