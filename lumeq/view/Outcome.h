// What came of the calls of a run, once all that is known of each is together.
#pragma once

#include "lumeq/view/Run.h"

#include <string>

namespace Zuvan::Lumeq::Tool {

/// Fills in each call's outcome and the run's tasks.
void Conclude(const Catalogue& catalogue, Run& run);

/// "recorded", "accepted", "refused", "failed" or "not made".
const char* VerdictWord(const ViewedCall& call);

/// Whether the companion library got an event or data of it.
bool IsRecorded(const ViewedCall& call);

/// The text at a place of the JSON; empty if there is none.
std::string TextUnder(const Json& json, const char* pointer);

} // namespace Zuvan::Lumeq::Tool
