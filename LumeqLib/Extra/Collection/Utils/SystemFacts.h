// Facts about the machine from the system. Includes platform headers: for source files only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <oaidl.h>
#include <optional>
#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

struct PowerStatus {
    std::uint8_t acLineStatus;
    std::uint8_t batteryFlag;
};

/// Nothing if the system does not return it.
std::optional<PowerStatus> ReadPowerStatus();

/// Nothing if the system does not return it.
std::optional<std::wstring> FindSystemFolder();

/// Four-part file version of kernel32.dll in the system folder; "unknown" if either is missing.
std::wstring GetKernelFileVersion();
std::wstring KernelFileVersionIn(const std::optional<std::wstring>& systemFolder);

/// The text in a VARIANT; nothing for any other type.
std::optional<std::wstring> TextIn(const VARIANT& value);

/// The last number of an array, 0 for an empty array, nothing if `value` is not an array. Wider numbers are
/// cut to their low 16 bits.
std::optional<std::uint16_t> LastNumberIn(const VARIANT& value);

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
