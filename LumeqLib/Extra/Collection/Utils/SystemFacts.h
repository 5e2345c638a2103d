// What the system says about the machine. Includes platform headers: for source files only.
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

/// Nothing where the system does not tell.
std::optional<PowerStatus> ReadPowerStatus();

/// Nothing where the system does not tell.
std::optional<std::wstring> FindSystemFolder();

/// Four-part file version of kernel32.dll in the system folder, "unknown" without either.
std::wstring GetKernelFileVersion();
std::wstring KernelFileVersionIn(const std::optional<std::wstring>& systemFolder);

/// The text in a VARIANT; nothing for any other type.
std::optional<std::wstring> TextIn(const VARIANT& value);

/// The last number of an array, 0 for an empty one; nothing for what is no array. Of wider numbers the low 16
/// bits.
std::optional<std::uint16_t> LastNumberIn(const VARIANT& value);

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
