// The subcommands `lumeq lint` and `lumeq explain`. Each returns the program's exit code.
#pragma once

#include "lumeq/Catalogue.h"
#include "lumeq/Output.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct LintOptions {
    std::vector<std::string> files;
    bool asJson = false;
    bool verdictsOnly = false; ///< As JSON; quicker, because it looks for no advice.
    bool isStrict = false;     ///< Warnings count for the exit code.
    bool hidesNotes = false;
};
/// Throws std::runtime_error for a file that cannot be read.
ExitCode Lint(const Catalogue& catalogue, const LintOptions& options, const Output& output);

struct ExplainOptions {
    std::string pattern;
    std::string text;
    bool isSpelled = false; ///< The text is JSON, as a session spells texts.
    bool asJson = false;
};
ExitCode ExplainText(const Catalogue& catalogue, const ExplainOptions& options, const Output& output);

} // namespace Zuvan::Lumeq::Tool
