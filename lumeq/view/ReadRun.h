// Reads what a run of a host left.
#pragma once

#include "lumeq/view/Run.h"

#include <string>

namespace Zuvan::Lumeq::Tool {

/// `path` is a folder that `tools/play` or a double of the library filled, a session, or a log alone. Throws
/// std::runtime_error if it cannot be read or is none of these.
Run ReadRun(const Catalogue& catalogue, const std::string& path);

/// A log alone: its calls are those that the log traces.
Run RunOfLog(const Catalogue& catalogue, const std::string& text);

/// The files of a run as texts. Any of them may be empty.
struct RunFiles {
    std::string session;
    std::string answers;
    std::string operations;
    std::string log;
};
/// `road` is empty if it is not known.
Run RunOfSession(const Catalogue& catalogue, const RunFiles& files, const std::string& road);

} // namespace Zuvan::Lumeq::Tool
