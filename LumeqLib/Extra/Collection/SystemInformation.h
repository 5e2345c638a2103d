// What the basic road tells about the machine. Includes platform headers: for source files only.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/SystemSources.h"

#include <string>
#include <unordered_map>

namespace Zuvan::Lumeq::Extra::Collection {

using SystemInformation = std::unordered_map<std::wstring, std::wstring>;

/// The sys_info_base record. Every field has a value, "unknown" where nothing can be found. Asks the system
/// anew on each call, with a WMI connection for each property. Throws nothing but a _com_error and what an
/// allocation throws. Any thread may call; WMI makes it a COM apartment meanwhile.
SystemInformation GetSysInfoBase(const Utils::SystemSources& sources = {});

} // namespace Zuvan::Lumeq::Extra::Collection
