// The fields of an operation's record, in full, as pages and comparisons show them.
#pragma once

#include "lumeq/Catalogue.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct RecordField {
    std::string name; ///< "app_event_details.scan_acquire_pages".
    std::string holds;
    std::string privacy;
};

/// Empty for an operation that records nothing.
std::vector<RecordField> FieldsOf(const Catalogue& catalogue, const Json& operation);

/// What one field of a list in the catalogue holds.
std::string HeldBy(const Json& field);

} // namespace Zuvan::Lumeq::Tool
