// Why a call is refused: from the linter's findings, or from the log alone.
#pragma once

#include "lumeq/Finding.h"
#include "lumeq/view/Run.h"

#include <vector>

namespace Zuvan::Lumeq::Tool {

Reason ReasonOf(const Catalogue& catalogue, const Finding& finding);

/// Of the lines of one call at ERROR. A replaced timeout is no reason.
std::vector<Reason> ReasonsOfLog(const Catalogue& catalogue, const Json& operation,
                                 const std::vector<LogLine>& lines);

/// All of them in one line.
std::string BriefReasons(const std::vector<Reason>& reasons);

} // namespace Zuvan::Lumeq::Tool
