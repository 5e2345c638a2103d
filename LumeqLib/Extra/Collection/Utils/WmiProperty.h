// The library's only access to WMI. Includes platform headers: for source files only.
#pragma once

#include <windows.h>

#include <comutil.h>
#include <objbase.h>
#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

/// The system calls that reach WMI. Tests replace them.
struct WmiEntryPoints {
    decltype(&CoCreateInstance) createInstance = &CoCreateInstance;
    decltype(&CoSetProxyBlanket) setProxyBlanket = &CoSetProxyBlanket;
};

/// The property of the first instance of the class that has a value, in CIM version 2 of this machine.
/// VT_EMPTY if nothing could be read; VT_NULL if no instance has a value. Failures are logged, and only
/// _com_error leaves. Connects afresh on each call and waits for WMI without a limit. Any thread may call;
/// the thread is in a COM apartment during the call.
_variant_t GetWmiProperty(const std::wstring& className, const std::wstring& propertyName,
                          const WmiEntryPoints& entryPoints = {});

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
