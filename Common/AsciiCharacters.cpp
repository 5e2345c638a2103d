#include "Common/AsciiCharacters.h"

#include <algorithm>
#include <cstdint>

namespace Zuvan::Lumeq::Common {

wchar_t AsciiCharacters::do_widen(char byte) const { return static_cast<unsigned char>(byte); }

const char* AsciiCharacters::do_widen(const char* begin, const char* end, wchar_t* to) const {
    std::transform(begin, end, to, [this](char byte) { return do_widen(byte); });
    return end;
}

char AsciiCharacters::do_narrow(wchar_t unit, char otherwise) const {
    return static_cast<std::uint32_t>(unit) < 0x80 ? static_cast<char>(unit) : otherwise;
}

const wchar_t* AsciiCharacters::do_narrow(const wchar_t* begin, const wchar_t* end, char otherwise,
                                          char* to) const {
    std::transform(begin, end, to, [=, this](wchar_t unit) { return do_narrow(unit, otherwise); });
    return end;
}

} // namespace Zuvan::Lumeq::Common
