// Which operations fail and how, and which are slow, as LumeqCompanion.json in the executable's folder says:
//   {"raise": {"StartupInternal": "vesto" | "com" | "std" | "unknown" | "managed", ...},
//    "sleepMsec": {"FlushInternal": 30000, ...}}
// An operation with one kind of failure fails in every call. With a list, each entry is for one call in turn,
// null for a call that succeeds, and the list starts again after its end: [null, "std"] fails in every second
// call.
#pragma once

#include <string>

namespace Companion {

/// Sleeps if the operation is slow. Then throws a VestoException, a _com_error, a std::runtime_error or an
/// int, or raises an exception of the managed runtime, if this call must fail. Also throws std::runtime_error
/// if the script cannot be read. Reads the script once. No lock, because Lumeq.dll makes one call at a time.
void FollowScript(const std::string& operation);

} // namespace Companion
