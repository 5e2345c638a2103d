// HMAC (RFC 2104) with SHA-256.
#pragma once

#include "LumeqLib/Extra/Collection/Sha256.h"

#include <cstdint>
#include <memory>
#include <span>

namespace Zuvan::Lumeq::Extra::Collection {

/// The hash functions of an HMAC and their context.
class CHMAC256 {
public:
    virtual ~CHMAC256() = default;

    std::unique_ptr<sha256_ctx> context = std::make_unique<sha256_ctx>();
    void (*init)(sha256_ctx&) = &Sha256Init;
    void (*update)(sha256_ctx&, std::span<const std::uint8_t>) = &Sha256Update;
    void (*final)(sha256_ctx&, Sha256Digest&) = &Sha256Final;
    void (*hash)(std::span<const std::uint8_t>, Sha256Digest&) = &Sha256Hash; ///< Uses its own context.
};

/// A key of more than 64 bytes, one block, is replaced by its digest first.
Sha256Digest HmacSha256(std::span<const std::uint8_t> key, std::span<const std::uint8_t> message);

} // namespace Zuvan::Lumeq::Extra::Collection
