#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Fuzzing {

/// Strict: whole groups, padding at the end alone and as much as is needed, no stray bits. None for anything
/// else.
std::optional<std::vector<std::uint8_t>> PlainBase64Decoded(const std::wstring& text);

} // namespace Zuvan::Lumeq::Fuzzing
