// What the facts about a machine are called in its record. Pure functions.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/OsVersion.h"

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

/// What stands for anything that cannot be found.
inline constexpr wchar_t UnknownText[] = L"unknown";

/// Whether there is a battery, from the two bytes of the system's power status.
std::wstring BatteryText(std::uint8_t acLineStatus, std::uint8_t batteryFlag);

/// `maximumTouches`: how many touches the digitizers tell apart, 0 without one.
std::wstring TouchText(int maximumTouches);

/// False for systems older than Windows 7, which cannot tell touch screens.
bool TellsTouches(std::uint32_t osVersionNumber);

bool IsWindowsXp(const OsVersion& version);

/// Without characters beyond ASCII, wherever they stand, and without white space at its ends.
std::wstring OsNameText(const std::wstring& caption);

/// `wmiVersion` with the last part of the kernel's file version, if that has parts.
std::wstring OsVersionText(const std::wstring& wmiVersion, const std::wstring& kernelFileVersion);

/// Sizes in pixels.
std::wstring ResolutionText(int width, int height);

std::wstring ChassisText(std::uint16_t chassisType);

/// Whether firmware gives this text for want of a real identifier. Case matters.
bool IsMissingUuid(const std::wstring& uuid);

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
