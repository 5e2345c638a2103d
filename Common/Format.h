// The one place that knows the platform's wide printf formats: %s is wide, %S narrow, %p 16 digits.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace Zuvan::Lumeq::Common {

struct FormattedText {
    std::wstring text;
    bool truncated; ///< The text did not fit and was cut at `capacity` - 1 characters.
};

/// Formats into `capacity` wide characters, terminator included.
FormattedText FormatBounded(std::size_t capacity, const wchar_t* format, ...);

/// The same. Not an overload: a va_list is a plain pointer here, and so are some arguments.
FormattedText FormatBoundedV(std::size_t capacity, const wchar_t* format, std::va_list arguments);

} // namespace Zuvan::Lumeq::Common
