// The part of the platform's runtime hosting interface that the probe uses. Declared here because not every
// toolchain has the platform's own header. The methods keep the published order; those after the last one
// used are left out. Includes windows.h: for source files only.
#pragma once

#include <windows.h>

#include <objidl.h>
#include <unknwn.h>

namespace Zuvan::LumeqShim {

/// {9280188D-0E8E-4867-B30C-7FA83884E8DE}
inline constexpr GUID CLSID_CLRMetaHost = {
    0x9280188d, 0x0e8e, 0x4867, {0xb3, 0x0c, 0x7f, 0xa8, 0x38, 0x84, 0xe8, 0xde}};
/// {D332DB9E-B9B3-4125-8207-A14884F53216}
inline constexpr GUID IID_ICLRMetaHost = {
    0xd332db9e, 0xb9b3, 0x4125, {0x82, 0x07, 0xa1, 0x48, 0x84, 0xf5, 0x32, 0x16}};

/// The host object, which lists the installed runtimes.
struct ICLRMetaHost : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetRuntime(const wchar_t* version, REFIID iid, void** runtime) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVersionFromFile(const wchar_t* path, wchar_t* buffer,
                                                         DWORD* capacity) = 0;
    /// The elements are ICLRRuntimeInfo objects.
    virtual HRESULT STDMETHODCALLTYPE EnumerateInstalledRuntimes(IEnumUnknown** enumerator) = 0;
};

/// One runtime.
struct ICLRRuntimeInfo : public IUnknown {
    /// `capacity` is in wide characters and includes the terminator.
    virtual HRESULT STDMETHODCALLTYPE GetVersionString(wchar_t* buffer, DWORD* capacity) = 0;
};

/// The type of the entry point "CLRCreateInstance" of mscoree.dll.
using CLRCreateInstanceFunction = HRESULT STDAPICALLTYPE(REFCLSID classId, REFIID iid, void** instance);

} // namespace Zuvan::LumeqShim
