// The identifier of a device: its UUID as a keyed hash.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Extra::Collection {

/// HMAC-SHA-256 of the bytes as they stand, under the key that the library was configured with, as 64
/// lower-case hexadecimal digits. Any thread may call.
std::wstring HmacSha256Hex(const std::string& message);

} // namespace Zuvan::Lumeq::Extra::Collection
