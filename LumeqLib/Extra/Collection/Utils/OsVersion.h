#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

/// The running system, even if the system reports another version to this process. All zero if it is not
/// known.
struct OsVersion {
    std::uint32_t platform; ///< VER_PLATFORM_WIN32_NT is 2.
    std::uint32_t number;   ///< Major version times 100 plus the minor version: Windows 7 is 601.
};

OsVersion ReadOsVersion();

/// ReadOsVersion().number.
std::uint32_t GetOsVersionNumber();

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
