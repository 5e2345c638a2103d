// Wide characters that the pattern compiler and the parsers of formats recognise on every machine.
#pragma once

#include <locale>
#include <memory>

namespace Zuvan::Lumeq::Common {

/// Narrows and widens ASCII as it stands and nothing else of what is wide. The usual facet asks the system
/// for the narrow form, and with some C runtimes gets none of any character where the active code page is
/// UTF-8, as a host's manifest can have it: then no '%' of a format and no '[' of a pattern is found.
class AsciiCharacters : public std::ctype<wchar_t> {
protected:
    wchar_t do_widen(char byte) const override;
    const char* do_widen(const char* begin, const char* end, wchar_t* to) const override;
    char do_narrow(wchar_t unit, char otherwise) const override;
    const wchar_t* do_narrow(const wchar_t* begin, const wchar_t* end, char otherwise,
                             char* to) const override;
};

/// The locale with a new facet in the place of its own.
template <class Facet>
std::locale With(const std::locale& locale) {
    auto facet = std::make_unique<Facet>();
    const std::locale result(locale, facet.get());
    facet.release(); // from here on the locale's
    return result;
}

} // namespace Zuvan::Lumeq::Common
