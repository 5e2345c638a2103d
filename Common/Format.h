// The only place that uses the platform's wide printf formats: %s is wide, %S narrow, %p 16 digits.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace Zuvan::Lumeq::Common {

/// Capacity of the longest text that formatting produces, a log message, including the terminator.
inline constexpr std::size_t LongestFormatted = 4096;

/// A narrow text for %S, followed by two zero bytes. In a host's two-byte locale the platform's printf skips
/// the byte after a lead byte, even if that is the zero that ends the text. Does not allocate. Keeps only as
/// much as the longest formatted text can show.
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

    /// Valid for the life of this object.
    const char* Text() const noexcept { return _text; }

private:
    static constexpr std::size_t Kept = 3 * LongestFormatted; // bytes of UTF-8 for as many units

    char _text[Kept + 2];
};

struct FormattedText {
    std::wstring text;
    bool truncated; ///< Whether the text was cut at `capacity` - 1 characters.
};

/// Formats into `capacity` wide characters, including the terminator.
FormattedText FormatBounded(std::size_t capacity, const wchar_t* format, ...);

/// The same. Not an overload, because a va_list is a plain pointer here, like some arguments.
FormattedText FormatBoundedV(std::size_t capacity, const wchar_t* format, std::va_list arguments);

} // namespace Zuvan::Lumeq::Common
