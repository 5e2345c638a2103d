// What the program carries as resources, so that it is one file.
#pragma once

#include <string_view>

namespace Zuvan::Lumeq::Tool {

/// Throws std::runtime_error if the program has lost it.
std::string_view ProgramResource(const wchar_t* name);

} // namespace Zuvan::Lumeq::Tool
