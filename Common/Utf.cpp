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

// The lead byte 0xED starts U+D000 to U+DFFF; the surrogates are those from U+D800 on.
bool HasEncodedSurrogate(std::string_view utf8) {
    constexpr char Lead = '\xED';
    for (std::size_t at = utf8.find(Lead); at != utf8.npos; at = utf8.find(Lead, at + 1))
        if (at + 1 < utf8.size() && static_cast<unsigned char>(utf8[at + 1]) >= 0xA0)
            return true;
    return false;
}

// The facet silently drops an incomplete sequence at the end, and the texts of its failures differ between
// standard libraries. Here both cases are the same failure.
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
    // Some facets accept surrogates that are encoded separately, and combine two of them into a pair.
    if (HasEncodedSurrogate(text))
        ThrowBadConversion();
    return ConvertWhole(text, [&](Utf8Converter& converter) { return converter.from_bytes(text); });
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
