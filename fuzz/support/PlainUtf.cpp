#include "fuzz/support/PlainUtf.h"

#include <cstdint>

namespace Zuvan::Lumeq::Fuzzing {

namespace {

constexpr std::uint32_t NoCodePoint = 0xFFFFFFFF;

bool IsHigh(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLow(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

std::uint32_t TakeFromUtf16(const std::wstring& text, std::size_t& at) {
    const wchar_t unit = text[at++];
    if (!IsHigh(unit))
        return IsLow(unit) ? NoCodePoint : static_cast<std::uint32_t>(unit);
    if (at == text.size() || !IsLow(text[at]))
        return NoCodePoint;
    return 0x10000 + (static_cast<std::uint32_t>(unit - 0xD800) << 10) +
           static_cast<std::uint32_t>(text[at++] - 0xDC00);
}

void AppendUtf8(std::string& bytes, std::uint32_t codePoint) {
    const auto tail = [&](int shift) { bytes += static_cast<char>(0x80 | (codePoint >> shift & 0x3F)); };
    if (codePoint < 0x80) {
        bytes += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        bytes += static_cast<char>(0xC0 | codePoint >> 6);
        tail(0);
    } else if (codePoint < 0x10000) {
        bytes += static_cast<char>(0xE0 | codePoint >> 12);
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xF0 | codePoint >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

std::size_t TailLength(std::uint8_t lead) {
    if (lead < 0x80)
        return 0;
    return lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
}

bool IsShortestScalar(std::uint32_t codePoint, std::size_t tailLength) {
    constexpr std::uint32_t Smallest[] = {0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return codePoint >= Smallest[tailLength] && codePoint <= 0x10FFFF && !isSurrogate;
}

std::uint32_t TakeFromUtf8(const std::string& bytes, std::size_t& at) {
    const auto lead = static_cast<std::uint8_t>(bytes[at++]);
    if ((lead >= 0x80 && lead < 0xC0) || lead >= 0xF8)
        return NoCodePoint;
    const std::size_t tailLength = TailLength(lead);
    std::uint32_t codePoint = tailLength == 0 ? lead : lead & (0x3F >> tailLength);
    for (std::size_t i = 0; i < tailLength; ++i) {
        if (at == bytes.size() || (static_cast<std::uint8_t>(bytes[at]) & 0xC0) != 0x80)
            return NoCodePoint;
        codePoint = codePoint << 6 | (static_cast<std::uint8_t>(bytes[at++]) & 0x3F);
    }
    return IsShortestScalar(codePoint, tailLength) ? codePoint : NoCodePoint;
}

void AppendUtf16(std::wstring& text, std::uint32_t codePoint) {
    if (codePoint < 0x10000) {
        text += static_cast<wchar_t>(codePoint);
    } else {
        text += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
    }
}

template <class To, class From>
std::optional<To> Converted(const From& from, std::uint32_t (*take)(const From&, std::size_t&),
                            void (*append)(To&, std::uint32_t)) {
    To to;
    for (std::size_t at = 0; at < from.size();) {
        const std::uint32_t codePoint = take(from, at);
        if (codePoint == NoCodePoint)
            return std::nullopt;
        append(to, codePoint);
    }
    return to;
}

} // namespace

std::optional<std::string> PlainUtf8(const std::wstring& text) {
    return Converted(text, TakeFromUtf16, AppendUtf8);
}

std::optional<std::wstring> PlainUtf16(const std::string& bytes) {
    return Converted(bytes, TakeFromUtf8, AppendUtf16);
}

} // namespace Zuvan::Lumeq::Fuzzing
