// Wide text to and from UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Common {

/// Throws std::range_error("bad conversion") for an unpaired surrogate.
std::string ToUtf8(const std::wstring& text);

/// Throws std::range_error("bad conversion") for anything that is not whole, valid UTF-8.
std::wstring FromUtf8(const std::string& text);

/// For the log: an unpaired surrogate becomes U+FFFD, everything else is as ToUtf8 gives it.
std::string ToUtf8Lossy(std::wstring_view text);

/// For reports: `text` as UTF-8 if it is that, else byte by byte.
std::wstring WidenLossy(const char* text);

} // namespace Zuvan::Lumeq::Common
