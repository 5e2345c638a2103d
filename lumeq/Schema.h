// The subcommands of `lumeq schema`. Each returns the program's exit code.
#pragma once

#include "lumeq/Catalogue.h"
#include "lumeq/Output.h"

#include <string>

namespace Zuvan::Lumeq::Tool {

/// What is to be shown: an operation, an enumeration or a pattern.
ExitCode ShowSchema(const Catalogue& catalogue, const std::string& name, bool asJson, const Output& output);

/// The names of all operations, enumerations and patterns, with a sentence each.
ExitCode ListSchema(const Catalogue& catalogue, const Output& output);

/// The pages that docs/ holds.
std::string ReferencePage(const Catalogue& catalogue);
std::string PrivacySheet(const Catalogue& catalogue);

struct SchemaChange {
    enum class Breaks { Nothing, Hosts, Receivers };

    Breaks breaks;
    std::string where; ///< "ButtonClicked mode".
    std::string what;
};

/// What a host or a receiver that was made for `older` meets in `newer`.
std::vector<SchemaChange> CompareSchemas(const Catalogue& older, const Catalogue& newer);
ExitCode ShowSchemaDiff(const Catalogue& older, const Catalogue& newer, bool asJson, const Output& output);

} // namespace Zuvan::Lumeq::Tool
