// UniqueHandle for the handles that more than one source file uses. Includes windows.h: for source files
// only.
#pragma once

#include "Common/Handle.h"

#include <windows.h>

namespace Zuvan::Lumeq::Common {

struct RegistryKeyTraits {
    using Value = HKEY;
    static Value None() noexcept { return nullptr; }
    static void Close(Value key) noexcept { RegCloseKey(key); }
};
using UniqueRegistryKey = UniqueHandle<RegistryKeyTraits>;

struct ModuleTraits {
    using Value = HMODULE;
    static Value None() noexcept { return nullptr; }
    static void Close(Value module) noexcept { FreeLibrary(module); }
};
using UniqueModule = UniqueHandle<ModuleTraits>;

struct KernelObjectTraits {
    using Value = HANDLE;
    static Value None() noexcept { return nullptr; }
    static void Close(Value object) noexcept { CloseHandle(object); }
};
using UniqueKernelObject = UniqueHandle<KernelObjectTraits>;

struct FileTraits {
    using Value = HANDLE;
    static Value None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Value file) noexcept { CloseHandle(file); }
};
using UniqueFile = UniqueHandle<FileTraits>;

/// A function of a loaded module under the type it really has, or null.
template <class Function>
Function* FindFunction(HMODULE module, const char* name) noexcept {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace Zuvan::Lumeq::Common
