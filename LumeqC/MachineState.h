// What the machine says about telemetry, read as the library reads it, by its own code.
#pragma once

#include <Lumeq/lumeq.h>

#include <cstdint>

namespace Zuvan::Lumeq {

/// `choice` and `road`: constants of lumeq.h.
struct MachineState {
    bool isTrackingDisabled = false;
    bool isPaused = false;
    std::int32_t choice = LUMEQ_CHOICE_UNKNOWN;
    std::int32_t road = LUMEQ_ROAD_UNKNOWN;
};

/// Reads the settings file of the subfolder, empty for none. Changes nothing and takes no lock.
MachineState ReadMachineState(const wchar_t* subfolder) noexcept;

/// Whether the library accepts the text as a subfolder.
bool IsSubfolder(const wchar_t* subpath) noexcept;

} // namespace Zuvan::Lumeq
