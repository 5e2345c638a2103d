#pragma once

#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

/// A text value under HKEY_LOCAL_MACHINE, in the 64-bit view, up to its first terminator. "unknown" if there
/// is none or its type is not REG_SZ.
std::wstring ReadRegistryString(const std::wstring& subKey, const std::wstring& valueName);

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
