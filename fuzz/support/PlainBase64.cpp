#include "fuzz/support/PlainBase64.h"

namespace Zuvan::Lumeq::Fuzzing {

namespace {

int SixBits(wchar_t digit) {
    if (digit >= L'A' && digit <= L'Z')
        return digit - L'A';
    if (digit >= L'a' && digit <= L'z')
        return digit - L'a' + 26;
    if (digit >= L'0' && digit <= L'9')
        return digit - L'0' + 52;
    return digit == L'+' ? 62 : digit == L'/' ? 63 : -1;
}

} // namespace

std::optional<std::vector<std::uint8_t>> PlainBase64Decoded(const std::wstring& text) {
    const std::size_t digits = text.find_last_not_of(L'=') + 1;
    if (text.size() % 4 != 0 || text.size() - digits > 2)
        return std::nullopt;
    std::vector<std::uint8_t> bytes;
    std::uint32_t pending = 0;
    int pendingBits = 0;
    for (std::size_t i = 0; i < digits; ++i) {
        const int bits = SixBits(text[i]);
        if (bits < 0)
            return std::nullopt;
        pending = pending << 6 | static_cast<std::uint32_t>(bits);
        pendingBits += 6;
        if (pendingBits < 8)
            continue;
        pendingBits -= 8;
        bytes.push_back(static_cast<std::uint8_t>(pending >> pendingBits));
        pending &= (1U << pendingBits) - 1;
    }
    return pending == 0 ? std::optional(bytes) : std::nullopt;
}

} // namespace Zuvan::Lumeq::Fuzzing
