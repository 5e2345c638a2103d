// The event classes' own checks, on composed values. Some are stricter than the exports' checks, some looser.
// Time is linear in the length of the text, stack use constant.
#pragma once

#include "Common/Pattern.h"

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// False for an empty text.
bool IsWhiteSpace(const wchar_t* text);

extern const Common::Pattern urlLabelPattern;
extern const Common::Pattern hyperlinkLabelPattern;
extern const Common::Pattern reportMonikerPattern;
extern const Common::Pattern formMonikerPattern;

/// Throws std::range_error for an unpaired surrogate.
bool IsValidUrl(const std::wstring& label);
bool IsValidHyperlinkLabel(const std::wstring& label);
bool IsValidReportMoniker(const std::wstring& moniker);
bool IsValidFormMoniker(const std::wstring& moniker);

} // namespace Zuvan::Lumeq::Extra::Eventing
