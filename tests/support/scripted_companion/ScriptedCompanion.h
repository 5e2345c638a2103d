// What a test can ask of the scripted companion library.
//
// The environment variable LUMEQ_SCRIPTED_COMPANION names what every operation raises: "vesto", "com", "std"
// or "unknown". Without it nothing is raised, and GetUserOptInInternal gives true.
#pragma once

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// Exported as "ScriptedCompanion_Calls": every call so far, also those that raised, each as the operation's
/// name with its arguments in parentheses.
extern "C" using ScriptedCompanionCallsFunction = const std::vector<std::wstring> * ();

} // namespace Zuvan::Lumeq::Testing
