#include "LumeqLib/Extra/Collection/DeviceIdentifier.h"

#include "LumeqLib/Extra/Collection/BiidKey.h"
#include "LumeqLib/Extra/Collection/Hmac.h"

#include <string_view>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

static_assert(BiidKey.size() == 128);

std::span<const std::uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::wstring HexText(const Sha256Digest& digest) {
    constexpr wchar_t Digits[] = L"0123456789abcdef";
    std::wstring text;
    text.reserve(2 * digest.size());
    for (const std::uint8_t byte : digest) {
        text += Digits[byte >> 4];
        text += Digits[byte & 0xF];
    }
    return text;
}

} // namespace

std::wstring HmacSha256Hex(const std::string& message) {
    return HexText(HmacSha256(Bytes(BiidKey), Bytes(message)));
}

} // namespace Zuvan::Lumeq::Extra::Collection
