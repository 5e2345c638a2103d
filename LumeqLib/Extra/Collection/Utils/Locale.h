// Language and country of a locale. Includes platform headers: for source files only.
#pragma once

#include <windows.h>

#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

using LocaleInfoReader = decltype(&GetLocaleInfoW);

/// The country, such as US; "unknown" where the system does not tell.
std::wstring CountryOf(LCID locale, LocaleInfoReader read = &GetLocaleInfoW);

/// Language and country, such as en-US, or the country alone where there is no language. Where only the
/// reading of either fails, "unknown" stands in its place.
std::wstring LanguageOf(LCID locale, LocaleInfoReader read = &GetLocaleInfoW);

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
