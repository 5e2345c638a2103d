// The arguments of a call as the page shows them.
#pragma once

#include "lumeq/view/Run.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// Texts in quotation marks, enumerated values by their names.
std::vector<ViewedArgument> ArgumentsOfSession(const Catalogue& catalogue, const Json& operation,
                                               const Json& call);

/// The same for a call of a session and for its line in the log: its name and its texts.
std::string KeyOfSession(const Json& operation, const Json& call);
std::string KeyOfTrace(const Json& operation, const std::vector<ViewedArgument>& arguments);

/// The name under which the log shows a call.
std::string LoggedNameOf(const std::string& name);

} // namespace Zuvan::Lumeq::Tool
