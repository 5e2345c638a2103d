// The one place that knows the platform's wide printf formats: %s is wide, %S narrow, %p 16 digits.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace Zuvan::Lumeq::Common {

/// The longest text that is made by formatting, terminator included: a message of the log.
inline constexpr std::size_t LongestFormatted = 4096;

/// A narrow text for %S, followed by two zero bytes: in a host's two-byte locale the platform's printf steps
/// over whatever follows a lead byte, also over a zero that ends the text there. Allocates nothing. Keeps no
/// more than can become visible in the longest formatted text.
class NarrowArgument {
public:
    explicit NarrowArgument(const char* text) noexcept {
        std::size_t length = 0;
        for (; length < Kept && text[length] != '\0'; ++length)
            _text[length] = text[length];
        _text[length] = _text[length + 1] = '\0';
    }
    NarrowArgument(const NarrowArgument&) = delete;
    NarrowArgument& operator=(const NarrowArgument&) = delete;

    /// For as long as this lives.
    const char* Text() const noexcept { return _text; }

private:
    static constexpr std::size_t Kept = 3 * LongestFormatted; // as many bytes as UTF-8 takes for one

    char _text[Kept + 2];
};

struct FormattedText {
    std::wstring text;
    bool truncated; ///< The text did not fit and was cut at `capacity` - 1 characters.
};

/// Formats into `capacity` wide characters, terminator included.
FormattedText FormatBounded(std::size_t capacity, const wchar_t* format, ...);

/// The same. Not an overload: a va_list is a plain pointer here, and so are some arguments.
FormattedText FormatBoundedV(std::size_t capacity, const wchar_t* format, std::va_list arguments);

} // namespace Zuvan::Lumeq::Common
