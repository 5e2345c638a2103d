// What the program carries as resources, so that it is one file.
#pragma once

#include <string_view>

namespace Zuvan::Lumeq::Tool {

/// One of the program, or of the DLL, with this code. Throws std::runtime_error if it has lost it.
std::string_view ProgramResource(const wchar_t* name);

} // namespace Zuvan::Lumeq::Tool
