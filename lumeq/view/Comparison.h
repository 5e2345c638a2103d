// Two runs side by side.
#pragma once

#include "lumeq/view/Run.h"

#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct ComparedCall {
    std::optional<std::size_t> a, b;      ///< Indices of the calls; one at least.
    std::vector<std::string> differences; ///< "arguments", "verdict", "record"; empty for equal calls.
};

/// Pairs equal calls first, in order, and then calls of the same name between them. Times, durations and the
/// random identifiers of tasks make no difference.
std::vector<ComparedCall> Compare(const Run& a, const Run& b);

} // namespace Zuvan::Lumeq::Tool
