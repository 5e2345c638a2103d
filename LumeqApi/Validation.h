// The checks of the exported layer, their one reporter, and how arguments look in the log.
#pragma once

#include "Common/Pattern.h"

#include <Lumeq/LumeqApi.h>

#include <string>

namespace Zuvan::Lumeq::API {

/// What the reports give as their source file.
inline constexpr wchar_t SourceFile[] = L"LumeqApi";

/// Whether the pattern covers the whole value; a failure is reported. `function`: the export's qualified
/// name.
bool CheckRequiredArg(const std::wstring& value, const wchar_t* argName, const Common::Pattern& pattern,
                      const wchar_t* function, const wchar_t* file, int line);

/// The same for a text that may be null, which passes. An empty text is matched like any other.
bool CheckOptionalArg(const wchar_t* value, const wchar_t* argName, const Common::Pattern& pattern,
                      const wchar_t* function, const wchar_t* file, int line);

/// Where every failure of the exported layer ends: one line at ERROR, and a stop in an attached debugger, so
/// that a developer sees a bad argument where it is given. Always false.
bool ReportValidationError(const wchar_t* title, const std::wstring& detail, const wchar_t* function,
                           const wchar_t* file, int line);

/// The text between quotation marks, or "(null)". Nothing inside is escaped.
std::wstring QuoteArg(const wchar_t* text);
std::wstring QuoteArg(const std::wstring& text);

/// The number of entries, as "[2 item(s)]", or "(null)".
std::wstring CountArg(const StringDictionary* dictionary);
std::wstring CountArg(const StringDictionary& dictionary);

} // namespace Zuvan::Lumeq::API
