// The machine's part of the basic message. Includes platform headers: for source files only.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/SystemSources.h"

#include <string>
#include <unordered_map>

namespace Zuvan::Lumeq::Extra::Collection {

using SystemInformation = std::unordered_map<std::wstring, std::wstring>;

/// The sys_info_base record. A field without a value is "unknown". Reads the system afresh on each call, with
/// one WMI connection for each property. Throws only _com_error and what an allocation throws. Any thread may
/// call; the thread is in a COM apartment during each WMI query.
SystemInformation GetSysInfoBase(const Utils::SystemSources& sources = {});

} // namespace Zuvan::Lumeq::Extra::Collection
