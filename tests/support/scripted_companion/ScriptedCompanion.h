// What a test can ask of the scripted companion library.
//
// The environment variable LUMEQ_SCRIPTED_COMPANION names what every operation raises: "vesto", "com", "std"
// or "unknown"; with "read" nothing is raised and events are read. Without it nothing is raised either,
// events are taken unread, and GetUserOptInInternal gives true.
#pragma once

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// Exported as "ScriptedCompanion_Calls": every call so far, also those that raised, each as the operation's
/// name with its arguments in parentheses.
extern "C" using ScriptedCompanionCallsFunction = std::vector<std::wstring> * ();

/// Exported as "ScriptedCompanion_Events": the object label and the action of every event that was read, with
/// a blank between them.
extern "C" using ScriptedCompanionEventsFunction = std::vector<std::wstring> * ();

} // namespace Zuvan::Lumeq::Testing
