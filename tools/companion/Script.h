// Which operations fail and how, and which are slow, as LumeqCompanion.json in the executable's folder says:
//   {"raise": {"StartupInternal": "vesto" | "com" | "std" | "unknown", ...},
//    "sleepMsec": {"FlushInternal": 30000, ...}}
#pragma once

#include <string>

namespace Companion {

/// Sleeps if the operation is slow. Then throws a VestoException, a _com_error, a std::runtime_error or an
/// int if it must fail. Also throws std::runtime_error if the script cannot be read. Reads the script once.
void FollowScript(const std::string& operation);

} // namespace Companion
