// The library's only road to WMI. Includes platform headers: for source files only.
#pragma once

#include <windows.h>

#include <comutil.h>
#include <objbase.h>
#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

/// The system calls through which WMI is reached.
struct WmiEntryPoints {
    decltype(&CoCreateInstance) createInstance = &CoCreateInstance;
    decltype(&CoSetProxyBlanket) setProxyBlanket = &CoSetProxyBlanket;
};

/// The property of the first instance of the class that has a value, in CIM version 2 of this machine.
/// VT_EMPTY when nothing could be read, VT_NULL when there were instances but none with a value. Failures are
/// logged and not reported, but for a _com_error. Connects afresh on each call and waits for WMI without a
/// limit. Any thread may call; it is a COM apartment of its own meanwhile.
_variant_t GetWmiProperty(const std::wstring& className, const std::wstring& propertyName,
                          const WmiEntryPoints& entryPoints = {});

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
