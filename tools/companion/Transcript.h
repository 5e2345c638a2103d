// What the stand-in was asked to do, one JSON line each, in LumeqCompanion.jsonl beside the executable.
#pragma once

#include "tools/companion/RecordText.h"

#include <filesystem>

namespace Companion {

/// A file beside the host's executable.
std::filesystem::path BesideExecutable(const wchar_t* name);

/// Appends a line, whole, whichever threads write. Throws std::runtime_error if it cannot be written.
void Write(const Members& line);

} // namespace Companion
