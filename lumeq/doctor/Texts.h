// Texts of the system as the report shows them, and back.
#pragma once

#include "Common/Utf.h"

#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Tool::Doctor {

/// Unpaired surrogates become U+FFFD.
inline std::string Utf8(std::wstring_view text) { return Common::ToUtf8Lossy(text); }

/// Throws std::range_error for anything but valid UTF-8, which all arguments of the program are.
inline std::wstring Wide(const std::string& utf8) { return Common::FromUtf8(utf8); }

} // namespace Zuvan::Lumeq::Tool::Doctor
