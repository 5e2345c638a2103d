// Reads the machine's firmware tables directly, so that other ways to the same facts can be compared with
// them.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// The system's UUID in upper case. Throws where the firmware has no table of it.
std::wstring FirmwareUuid();

/// Texts of the system; empty where the firmware has none. Throw where the firmware has no table of it.
std::wstring FirmwareMaker();
std::wstring FirmwareModel();
std::wstring FirmwareSerialNumber();

/// The type of the enclosure. Throws where the firmware has no table of it.
std::uint16_t FirmwareChassisType();

} // namespace Zuvan::Lumeq::Testing
