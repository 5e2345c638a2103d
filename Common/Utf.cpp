#include "Common/Utf.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <stdexcept>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr std::uint32_t FirstInPairs = 0x10000; // UTF-16 has surrogate pairs from this character on
constexpr std::uint32_t LastCharacter = 0x10FFFF;

[[noreturn]] void ThrowBadConversion() { throw std::range_error("bad conversion"); }

bool IsSurrogate(std::uint32_t unit) { return unit >> 11 == 0xD800 >> 11; }
bool IsHighSurrogate(std::uint32_t unit) { return unit >> 10 == 0xD800 >> 10; }
bool IsLowSurrogate(std::uint32_t unit) { return unit >> 10 == 0xDC00 >> 10; }

/// Removes the first character from the text and returns it.
std::uint32_t TakeCharacter(std::wstring_view& text) {
    const std::uint32_t unit = text.front();
    text.remove_prefix(1);
    if (!IsSurrogate(unit))
        return unit;
    if (!IsHighSurrogate(unit) || text.empty() || !IsLowSurrogate(text.front()))
        ThrowBadConversion();
    const std::uint32_t low = text.front();
    text.remove_prefix(1);
    return FirstInPairs + ((unit & 0x3FF) << 10 | (low & 0x3FF));
}

std::uint32_t TakeCharacter(std::string_view& utf8) {
    const auto lead = static_cast<unsigned char>(utf8.front());
    // The lead byte of a sequence has as many ones at its start as the sequence has bytes; ASCII has none.
    const auto ones = static_cast<std::size_t>(std::countl_one(lead));
    const std::size_t length = std::max<std::size_t>(ones, 1);
    constexpr std::uint32_t Smallest[] = {0, LastCharacter + 1, 0x80, 0x800, FirstInPairs};
    if (ones >= std::size(Smallest) || length > utf8.size())
        ThrowBadConversion();
    std::uint32_t character = lead & (0xFF >> ones);
    for (const char byte : utf8.substr(1, length - 1)) {
        if ((byte & 0xC0) != 0x80)
            ThrowBadConversion();
        character = character << 6 | (byte & 0x3F);
    }
    if (character < Smallest[ones] || character > LastCharacter || IsSurrogate(character))
        ThrowBadConversion();
    utf8.remove_prefix(length);
    return character;
}

void Append(std::string& utf8, std::uint32_t character) {
    if (character < 0x80) {
        utf8 += static_cast<char>(character);
        return;
    }
    const int following = character < 0x800 ? 1 : character < FirstInPairs ? 2 : 3;
    const std::uint32_t mark = 0xFF00 >> (following + 1);
    utf8 += static_cast<char>(mark | character >> 6 * following);
    for (int shift = 6 * (following - 1); shift >= 0; shift -= 6)
        utf8 += static_cast<char>(0x80 | (character >> shift & 0x3F));
}

void Append(std::wstring& text, std::uint32_t character) {
    if (character < FirstInPairs) {
        text += static_cast<wchar_t>(character);
        return;
    }
    text += static_cast<wchar_t>(0xD800 + ((character - FirstInPairs) >> 10));
    text += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
}

template <class To, class From>
To Converted(From from) {
    To to;
    to.reserve(from.size());
    while (!from.empty())
        Append(to, TakeCharacter(from));
    return to;
}

} // namespace

std::string ToUtf8(const std::wstring& text) { return Converted<std::string>(std::wstring_view(text)); }

std::wstring FromUtf8(const std::string& text) { return Converted<std::wstring>(std::string_view(text)); }

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
