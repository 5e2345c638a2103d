// Small pure functions on texts.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace Zuvan::Lumeq::Common {

/// Standard alphabet, padded, no line breaks.
std::wstring Base64Encode(std::span<const std::uint8_t> bytes);

/// Base64 of the UTF-8 form. Throws std::range_error for an unpaired surrogate.
std::wstring Base64EncodeUtf8(const std::wstring& text);

/// Rotates the letters by 13 places; applied twice, it returns the original text. The runtime's isalpha
/// decides for each UTF-8 byte whether it is a letter. Throws std::range_error for an unpaired surrogate.
std::wstring Rot13Wide(std::wstring text);

/// Whether the text is empty or only white space, by the runtime's iswspace.
bool IsBlank(const std::wstring& text);

/// Lower or upper case of the whole text, unit by unit, by the runtime's towlower and towupper.
std::wstring ToLower(std::wstring text);
std::wstring ToUpper(std::wstring text);

/// The number in decimal digits. std::to_wstring would format it with the C library's wide printf, which is
/// 22 KB and takes half a microsecond.
template <class Number>
std::wstring DecimalText(Number number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

} // namespace Zuvan::Lumeq::Common
