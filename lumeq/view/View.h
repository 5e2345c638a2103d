// The subcommand `lumeq view`. Returns the program's exit code.
#pragma once

#include "lumeq/Catalogue.h"
#include "lumeq/Output.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct ViewOptions {
    std::vector<std::string> runs;
    std::string page = "lumeq.html"; ///< "-" for standard output.
    bool isEach = false;             ///< One run after the other, also of two.
    bool isUnmasked = false;
    bool isText = false; ///< Prints a line for each call instead of writing a page.
};
/// Throws std::runtime_error for a run that cannot be read or a page that cannot be written.
ExitCode View(const Catalogue& catalogue, const ViewOptions& options, const Output& output);

} // namespace Zuvan::Lumeq::Tool
