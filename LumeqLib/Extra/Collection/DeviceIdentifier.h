// The identifier of a device: a keyed hash of its UUID.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Extra::Collection {

/// HMAC-SHA-256 of the bytes of `message` with the key of the build, as 64 lower-case hexadecimal digits. Any
/// thread may call.
std::wstring HmacSha256Hex(const std::string& message);

} // namespace Zuvan::Lumeq::Extra::Collection
