// The text closest to a refused one that a pattern accepts.
#pragma once

#include "Common/Pattern.h"

#include <optional>
#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

/// By the least cost of edits: another case and the loss of a spare character are cheapest, then another
/// separator, a deletion, an insertion, and another character. None if the text is empty, long or too far
/// from every accepted text: advice that keeps less than half of what was meant is none.
std::optional<std::wstring> NearestText(const Common::Pattern& pattern, std::wstring_view text);

} // namespace Zuvan::Lumeq::Tool
