// Language and country of a locale. Includes platform headers: for source files only.
#pragma once

#include <windows.h>

#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

using LocaleInfoReader = decltype(&GetLocaleInfoW);

/// The country, such as US; "unknown" if the system does not return it.
std::wstring CountryOf(LCID locale, LocaleInfoReader read = &GetLocaleInfoW);

/// Language and country, such as en-US, or the country alone if there is no language. A part that exists but
/// cannot be read is "unknown".
std::wstring LanguageOf(LCID locale, LocaleInfoReader read = &GetLocaleInfoW);

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
