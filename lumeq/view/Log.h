// The lines of a log, and which of them belong to one call.
#pragma once

#include "lumeq/view/Run.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// A line with another layout continues the text of the line before it, or is dropped as the first.
std::vector<LogLine> ReadLog(const std::string& text);

/// The lines of one call; the first shows its arguments.
struct LoggedCall {
    std::string name; ///< As logged: GetBiid_Internal is logged as GetBiid.
    std::vector<LogLine> lines;
};

struct LoggedCalls {
    std::vector<LoggedCall> calls;
    std::vector<LogLine> otherLines; ///< Those before the first call.
};

/// Each line belongs to the call that its thread began last. The line of a thread without a call, such as the
/// posting worker, belongs to the last call of all. A log without TRACE shows of a call only why it is
/// refused; `withRefusals` makes such lines begin a call.
LoggedCalls SplitIntoCalls(std::vector<LogLine> lines, bool withRefusals = false);

/// The export that a line at ERROR reports; empty for any other line.
std::string ReportedExport(const LogLine& line);

/// Splits what the log shows of the arguments at the names that the catalogue lists.
std::vector<ViewedArgument> ArgumentsOfTrace(const Json& operation, const std::string& message);

} // namespace Zuvan::Lumeq::Tool
