// The texts for facts about a machine, as its record contains them. Pure functions.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/OsVersion.h"

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

/// The text for every fact that cannot be found.
inline constexpr wchar_t UnknownText[] = L"unknown";

/// Whether there is a battery, from two bytes of the system's power status.
std::wstring BatteryText(std::uint8_t acLineStatus, std::uint8_t batteryFlag);

/// `maximumTouches`: how many touches the digitizers distinguish, 0 without one.
std::wstring TouchText(int maximumTouches);

/// False for systems older than Windows 7, which cannot report touch screens.
bool CanReportTouches(std::uint32_t osVersionNumber);

bool IsWindowsXp(const OsVersion& version);

/// Without non-ASCII characters anywhere, and without white space at either end.
std::wstring OsNameText(const std::wstring& caption);

/// `wmiVersion` followed by the last part of the kernel's file version, if that version has parts.
std::wstring OsVersionText(const std::wstring& wmiVersion, const std::wstring& kernelFileVersion);

/// Sizes in pixels.
std::wstring ResolutionText(int width, int height);

std::wstring ChassisText(std::uint16_t chassisType);

/// Whether firmware uses this text when it has no real identifier. Case matters.
bool IsMissingUuid(const std::wstring& uuid);

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
