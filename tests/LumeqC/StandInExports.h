// Stand-ins for the exports of Lumeq.dll, linked into this program in their place: they note how they are
// called.
#pragma once

#include <string>
#include <vector>

namespace Zuvan::Lumeq::StandIn {

/// Each call as Name(argument, ...), with texts in quotation marks and dictionaries sorted; the order of the
/// calls. Taken away by asking.
std::vector<std::wstring> TakeCalls();

/// What the stand-ins do besides. Reset puts all back and forgets calls and open tasks.
void Reset();
/// Initiated exports fail: they return null.
void FailToBegin();
/// Completed exports refuse: they leave the task open.
void RefuseToComplete();
/// Every export throws, as when its lock fails.
void ThrowAlways();
/// Every export waits, until Release.
void Block();
void Release();
/// Returns when a stand-in waits.
void AwaitBlocked();

/// The next call does this as well, before it returns.
void OnNextCall(void (*action)());

/// Open tasks of the stand-ins.
int OpenTasks();
/// The thread of the last call.
unsigned long LastThread();
bool WasInSingleThreadedApartment();

} // namespace Zuvan::Lumeq::StandIn
