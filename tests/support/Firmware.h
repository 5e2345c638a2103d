// Reads the machine's firmware tables directly, for comparison with other ways to the same facts.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// The system's UUID in upper case. Throws if the firmware has no table with it.
std::wstring FirmwareUuid();

/// Texts of the system; empty if the firmware has none. Throws if the firmware has no table with them.
std::wstring FirmwareMaker();
std::wstring FirmwareModel();
std::wstring FirmwareSerialNumber();

/// The type of the enclosure. Throws if the firmware has no table with it.
std::uint16_t FirmwareChassisType();

} // namespace Zuvan::Lumeq::Testing
