// Wide text to and from UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Common {

/// Throws std::range_error("bad conversion") for an unpaired surrogate.
std::string ToUtf8(const std::wstring& text);

/// Throws std::range_error("bad conversion") for anything but complete, valid UTF-8.
std::wstring FromUtf8(const std::string& text);

/// For the log: like ToUtf8, but an unpaired surrogate becomes U+FFFD.
std::string ToUtf8Lossy(std::wstring_view text);

/// For reports: reads `text` as UTF-8 if it is valid, otherwise byte by byte.
std::wstring WidenLossy(const char* text);

} // namespace Zuvan::Lumeq::Common
