#include "Common/Utf.h"

#include <algorithm>
#include <codecvt>
#include <locale>
#include <stdexcept>

namespace Zuvan::Lumeq::Common {

namespace {

using Utf8Converter = std::wstring_convert<std::codecvt_utf8_utf16<wchar_t, 0x10FFFF>>;

[[noreturn]] void ThrowBadConversion() { throw std::range_error("bad conversion"); }

bool IsSurrogate(wchar_t unit) { return (unit & 0xF800) == 0xD800; }
bool IsHighSurrogate(wchar_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(wchar_t unit) { return (unit & 0xFC00) == 0xDC00; }

bool HasUnpairedSurrogate(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!IsSurrogate(text[i]))
            continue;
        if (!IsHighSurrogate(text[i]) || i + 1 == text.size() || !IsLowSurrogate(text[i + 1]))
            return true;
        ++i;
    }
    return false;
}

// The facet drops what is incomplete at the very end without a word, and the texts of its failures differ
// between standard libraries: all of that is one failure here.
template <class Convert, class Text>
auto ConvertWhole(const Text& text, Convert convert) {
    Utf8Converter converter;
    try {
        auto result = convert(converter);
        if (converter.converted() == text.size())
            return result;
    } catch (const std::range_error&) {
    }
    ThrowBadConversion();
}

} // namespace

std::string ToUtf8(const std::wstring& text) {
    return ConvertWhole(text, [&](Utf8Converter& converter) { return converter.to_bytes(text); });
}

std::wstring FromUtf8(const std::string& text) {
    std::wstring result =
        ConvertWhole(text, [&](Utf8Converter& converter) { return converter.from_bytes(text); });
    // Some facets accept a surrogate that was encoded by itself.
    if (HasUnpairedSurrogate(result))
        ThrowBadConversion();
    return result;
}

std::string ToUtf8Lossy(std::wstring_view text) {
    std::wstring repaired(text);
    for (std::size_t i = 0; i < repaired.size(); ++i) {
        if (!IsSurrogate(repaired[i]))
            continue;
        if (IsHighSurrogate(repaired[i]) && i + 1 < repaired.size() && IsLowSurrogate(repaired[i + 1]))
            ++i;
        else
            repaired[i] = L'\xFFFD';
    }
    return ToUtf8(repaired);
}

std::wstring WidenLossy(const char* text) {
    try {
        return FromUtf8(text);
    } catch (const std::range_error&) {
        const std::string_view bytes(text);
        std::wstring result(bytes.size(), L'\0');
        std::transform(bytes.begin(), bytes.end(), result.begin(),
                       [](char byte) { return static_cast<wchar_t>(static_cast<unsigned char>(byte)); });
        return result;
    }
}

} // namespace Zuvan::Lumeq::Common
