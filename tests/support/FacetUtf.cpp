#include "support/FacetUtf.h"

#include <codecvt>
#include <locale>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

using Converter = std::wstring_convert<std::codecvt_utf8_utf16<wchar_t, 0x10FFFF>>;

/// The facet silently drops an incomplete sequence at the end; here that is a failure.
template <class Text, class Convert>
auto ConvertWhole(const Text& text, Convert convert) {
    Converter converter;
    std::optional<decltype(convert(converter))> result;
    try {
        result = convert(converter);
    } catch (const std::range_error&) {
    }
    if (converter.converted() != text.size())
        result.reset();
    return result;
}

/// The facet accepts these, and combines two of them into a pair.
bool HasEncodedSurrogate(const std::string& utf8) {
    for (std::size_t at = utf8.find('\xED'); at != utf8.npos; at = utf8.find('\xED', at + 1))
        if (at + 1 < utf8.size() && static_cast<unsigned char>(utf8[at + 1]) >= 0xA0)
            return true;
    return false;
}

} // namespace

std::optional<std::string> FacetToUtf8(const std::wstring& text) {
    return ConvertWhole(text, [&](Converter& converter) { return converter.to_bytes(text); });
}

std::optional<std::wstring> FacetFromUtf8(const std::string& utf8) {
    if (HasEncodedSurrogate(utf8))
        return std::nullopt;
    return ConvertWhole(utf8, [&](Converter& converter) { return converter.from_bytes(utf8); });
}

} // namespace Zuvan::Lumeq::Testing
