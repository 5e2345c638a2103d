// The second line of checks, on composed values. Stricter than those of the exports in places, looser in
// others. Time is linear in the length of the text and stack use constant.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// False for an empty text.
bool IsWhiteSpace(const wchar_t* text);

/// The checks below throw ValidationErrorException if the engine of regular expressions fails.
/// IsValidUrl also throws std::range_error for an unpaired surrogate.
bool IsValidUrl(const std::wstring& label);
bool IsValidHyperlinkLabel(const std::wstring& label);
bool IsValidReportMoniker(const std::wstring& moniker);
bool IsValidFormMoniker(const std::wstring& moniker);

} // namespace Zuvan::Lumeq::Extra::Eventing
