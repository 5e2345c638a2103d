// Which operations are to fail, and how, as LumeqCompanion.json beside the executable tells:
//   {"raise": {"StartupInternal": "vesto" | "com" | "std" | "unknown", ...}}
#pragma once

#include <string>

namespace Companion {

/// Throws a VestoException, a _com_error, a std::runtime_error or an int if the operation is to fail. Throws
/// std::runtime_error as well for a script that cannot be read. The script is read once.
void RaiseIfScripted(const std::string& operation);

} // namespace Companion
