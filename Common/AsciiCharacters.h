// A locale facet with which parsers of wide formats recognise ASCII on every machine.
#pragma once

#include <locale>
#include <memory>

namespace Zuvan::Lumeq::Common {

/// Narrows and widens ASCII unchanged, and narrows no other character. The usual facet asks the system. If
/// the active code page is UTF-8, which a host's manifest can choose, some C runtimes then narrow no
/// character at all, and no parser finds the '%' of a format.
class AsciiCharacters : public std::ctype<wchar_t> {
protected:
    wchar_t do_widen(char byte) const override;
    const char* do_widen(const char* begin, const char* end, wchar_t* to) const override;
    char do_narrow(wchar_t unit, char otherwise) const override;
    const wchar_t* do_narrow(const wchar_t* begin, const wchar_t* end, char otherwise,
                             char* to) const override;
};

/// The locale with a new facet instead of its own.
template <class Facet>
std::locale With(const std::locale& locale) {
    auto facet = std::make_unique<Facet>();
    const std::locale result(locale, facet.get());
    facet.release(); // the locale owns it now
    return result;
}

} // namespace Zuvan::Lumeq::Common
