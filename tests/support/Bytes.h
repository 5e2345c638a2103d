// Texts as bytes for hashing.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// Valid as long as the text.
inline std::span<const std::uint8_t> Bytes(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

} // namespace Zuvan::Lumeq::Testing
