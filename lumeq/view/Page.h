// One self-contained HTML page about runs of a host.
#pragma once

#include "lumeq/view/Run.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct PageOptions {
    std::string title;         ///< Empty: the names of the runs.
    bool isUnmasked = false;   ///< Tokens, identifiers of devices and user names in paths stay readable.
    bool isComparison = false; ///< Two runs side by side instead of one after the other.
};

/// The page uses no network. Nothing in a run can add markup or script to it.
std::string RenderPage(const Catalogue& catalogue, std::vector<Run> runs, const PageOptions& options);

/// A request as the queue service takes it, for the page: splits and decodes it. Does not judge it.
ViewedMessage ReadRequest(const std::string& request);

} // namespace Zuvan::Lumeq::Tool
