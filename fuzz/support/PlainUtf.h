// UTF-16 and UTF-8 as the standard defines them, code point by code point.
#pragma once

#include <optional>
#include <string>

namespace Zuvan::Lumeq::Fuzzing {

/// None for an unpaired surrogate.
std::optional<std::string> PlainUtf8(const std::wstring& text);

/// None for anything but whole, shortest-form UTF-8 of scalar values.
std::optional<std::wstring> PlainUtf16(const std::string& bytes);

} // namespace Zuvan::Lumeq::Fuzzing
