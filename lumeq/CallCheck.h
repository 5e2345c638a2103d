// Whether the library accepts one call, and what else is worth knowing about it.
#pragma once

#include "lumeq/Catalogue.h"
#include "lumeq/Finding.h"

namespace Zuvan::Lumeq::Tool {

/// What the library refuses of a call that a session spells: first what the export refuses, then what the
/// event class does, each in the library's order. The library stops before the event class if the export
/// refuses anything, and at the event class's first refusal; the rest is reported too, for whoever corrects
/// the call. `call` has the members that the operation needs. A task's handle is the caller's affair.
Findings RefusalsOf(const Catalogue& catalogue, const Json& operation, const Json& call);

/// What an accepted call loses or changes: replaced numbers and fields, skipped printers, values recorded as
/// "unknown".
Findings LossesOf(const Json& operation, const Json& call);

/// Texts of a call that look as if they identified somebody, accepted or not.
Findings PersonalValuesOf(const Json& operation, const Json& call);

} // namespace Zuvan::Lumeq::Tool
