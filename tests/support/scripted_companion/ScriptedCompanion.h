// The scripted companion library's interface for tests.
//
// The environment variable LUMEQ_SCRIPTED_COMPANION names what every operation raises: "vesto", "com", "std",
// "unknown", "managed4" (an exception of the managed runtime since its version 4) or "managed2" (before it).
// With "read" nothing is raised and events are read. Without the variable nothing is raised, events are not
// read, and GetUserOptInInternal returns true.
#pragma once

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// Exported as "ScriptedCompanion_Calls": every call so far, including those that raised, each as the
/// operation's name with its arguments in parentheses.
extern "C" using ScriptedCompanionCallsFunction = std::vector<std::wstring> * ();

/// Exported as "ScriptedCompanion_Events": object label and action of every event that was read, separated by
/// a space.
extern "C" using ScriptedCompanionEventsFunction = std::vector<std::wstring> * ();

} // namespace Zuvan::Lumeq::Testing
