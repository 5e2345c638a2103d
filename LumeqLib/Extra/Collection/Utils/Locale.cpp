#include "LumeqLib/Extra/Collection/Utils/Locale.h"

#include "LumeqLib/Extra/Collection/Utils/SystemTexts.h"

#include <optional>
#include <vector>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

/// Nothing if the system does not even return the size.
std::optional<std::wstring> ReadInfo(LocaleInfoReader read, LCID locale, LCTYPE type) {
    const int size = read(locale, type, nullptr, 0); // characters, terminator included
    if (size < 1)
        return std::nullopt;
    std::vector<wchar_t> text(static_cast<std::size_t>(size) + 1);
    return read(locale, type, text.data(), size) == 0 ? UnknownText : text.data();
}

} // namespace

std::wstring CountryOf(LCID locale, LocaleInfoReader read) {
    return ReadInfo(read, locale, LOCALE_SISO3166CTRYNAME).value_or(UnknownText);
}

std::wstring LanguageOf(LCID locale, LocaleInfoReader read) {
    const std::optional<std::wstring> country = ReadInfo(read, locale, LOCALE_SISO3166CTRYNAME);
    if (!country)
        return UnknownText;
    const std::optional<std::wstring> language = ReadInfo(read, locale, LOCALE_SISO639LANGNAME);
    return language ? *language + L"-" + *country : *country;
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
