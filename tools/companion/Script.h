// Which operations are to fail, and how, and which are to be slow, as LumeqCompanion.json beside the
// executable tells:
//   {"raise": {"StartupInternal": "vesto" | "com" | "std" | "unknown", ...},
//    "sleepMsec": {"FlushInternal": 30000, ...}}
#pragma once

#include <string>

namespace Companion {

/// Sleeps if the operation is to be slow; then throws a VestoException, a _com_error, a std::runtime_error or
/// an int if it is to fail. Throws std::runtime_error as well for a script that cannot be read. The script is
/// read once.
void FollowScript(const std::string& operation);

} // namespace Companion
