#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Fuzzing {

/// Strict: complete groups, the exact padding at the end only, no stray bits. None for anything else.
std::optional<std::vector<std::uint8_t>> PlainBase64Decoded(const std::wstring& text);

} // namespace Zuvan::Lumeq::Fuzzing
