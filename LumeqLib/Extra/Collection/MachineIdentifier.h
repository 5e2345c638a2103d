// The identifier of the machine. Includes platform headers: for source files only.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/SystemSources.h"

#include <string>

namespace Zuvan::Lumeq::Extra::Collection {

/// The firmware's UUID, or else the system's MachineGuid, in upper case; "UNKNOWN" if neither exists. Reads
/// the system afresh on each call. Any thread may call.
std::wstring GetMachineUuid(const Utils::SystemSources& sources = {});

} // namespace Zuvan::Lumeq::Extra::Collection
