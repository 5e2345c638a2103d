// Stands in for what the machine says about telemetry.
#pragma once

#include "LumeqC/MachineState.h"

#include <string>

namespace Zuvan::Lumeq::Testing::StandIn {

/// What the next readings return.
inline MachineState machineState;
/// The subfolder of the last reading.
inline std::wstring readSubfolder;

} // namespace Zuvan::Lumeq::Testing::StandIn
