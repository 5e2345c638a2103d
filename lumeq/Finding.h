// What the linter has to say about one call.
#pragma once

#include "lumeq/Explanation.h"

#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

enum class Severity { Error, Warning, Note };

struct Finding {
    Severity severity;
    std::string rule; ///< "refused", "personal", ... docs/lint.md lists them.
    std::string argument;
    std::string message;
    std::string refusedBy; ///< "export" or "event class"; empty if the call is not refused for this.
    std::optional<RefusedText> text{};
};

using Findings = std::vector<Finding>;

} // namespace Zuvan::Lumeq::Tool
