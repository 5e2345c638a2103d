// The calls that the stand-in received, one JSON line each, in LumeqCompanion.jsonl in the executable's
// folder.
#pragma once

#include "tools/companion/RecordText.h"

#include <filesystem>

namespace Companion {

/// A file in the host executable's folder.
std::filesystem::path BesideExecutable(const wchar_t* name);

/// Appends one complete line, whichever threads write. Throws std::runtime_error if it cannot be written.
void Write(const Members& line);

} // namespace Companion
