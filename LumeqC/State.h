// What lumeq_get_state shows.
#pragma once

#include <Lumeq/lumeq.h>

#include <string>

namespace Zuvan::Lumeq {

/// The subfolder of the settings that the library uses from now on, if it accepts the text.
void RememberSubfolder(const std::wstring& subpath) noexcept;

/// False, and nothing is written, if the struct is null or has no size.
bool WriteState(lumeq_state* state) noexcept;

} // namespace Zuvan::Lumeq
