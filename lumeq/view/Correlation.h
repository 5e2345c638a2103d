// Which log lines, operations of the companion library and answers belong to which call of a session.
#pragma once

#include "lumeq/view/Log.h"
#include "lumeq/view/Run.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// A call of the session, and what it looks like elsewhere.
struct SoughtCall {
    ViewedCall call;
    std::string logKey;                     ///< Its name and its texts.
    std::vector<std::string> operationKeys; ///< What the companion library gets of it, in order.
};

/// Calls with the same name and texts get their lines in order; a call whose line is lost leaves the others
/// theirs. Lines of no call end up in `run`.
void AttachLog(const Catalogue& catalogue, LoggedCalls logged, std::vector<SoughtCall>& calls, Run& run);

/// Each call takes the first operation left that it can have caused. The rest ends up in `run`.
void AttachOperations(const std::vector<Json>& operations, std::vector<SoughtCall>& calls, Run& run);

/// `lines` are what the host printed, a line for each call.
void AttachAnswers(const std::vector<Json>& lines, std::vector<SoughtCall>& calls, Run& run);

/// What AttachOperations looks for, in order.
std::vector<std::string> OperationKeysOf(const Json& operation, const Json& call, bool isRefused);

} // namespace Zuvan::Lumeq::Tool
