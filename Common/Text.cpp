#include "Common/Text.h"

#include "Common/Utf.h"

#include <algorithm>
#include <cctype>
#include <cwctype>
#include <vector>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr char Base64Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

char RotateLetter(char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    if (!std::isalpha(byte))
        return letter;
    const int base = std::isupper(byte) ? 'A' : 'a';
    return static_cast<char>((byte - base + 13) % 26 + base);
}

} // namespace

std::wstring Base64Encode(std::span<const std::uint8_t> bytes) {
    std::wstring result;
    result.reserve((bytes.size() + 2) / 3 * 4);
    const auto byteAt = [bytes](std::size_t i) { return i < bytes.size() ? std::uint32_t{bytes[i]} : 0U; };
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::uint32_t group = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
        for (int shift = 18; shift >= 0; shift -= 6)
            result += static_cast<wchar_t>(Base64Alphabet[group >> shift & 0x3F]);
    }
    const std::size_t padding = (3 - bytes.size() % 3) % 3;
    std::fill_n(result.rbegin(), padding, L'=');
    return result;
}

std::wstring Base64EncodeUtf8(const std::wstring& text) {
    if (text.empty())
        return {};
    const std::string utf8 = ToUtf8(text);
    return Base64Encode(std::vector<std::uint8_t>(utf8.begin(), utf8.end()));
}

std::wstring Rot13Wide(std::wstring text) {
    std::string utf8 = ToUtf8(text);
    std::transform(utf8.begin(), utf8.end(), utf8.begin(), RotateLetter);
    return FromUtf8(utf8);
}

bool IsBlank(const std::wstring& text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t unit) { return std::iswspace(unit) != 0; });
}

std::wstring ToLower(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](wchar_t unit) { return static_cast<wchar_t>(std::towlower(unit)); });
    return text;
}

std::wstring ToUpper(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](wchar_t unit) { return static_cast<wchar_t>(std::towupper(unit)); });
    return text;
}

} // namespace Zuvan::Lumeq::Common
