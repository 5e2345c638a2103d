// UniqueHandle for every kind of handle that the library owns. Includes windows.h: for source files only.
#pragma once

#include "Common/Handle.h"

#include <windows.h>

#include <rpc.h>
#include <wininet.h>

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

struct FileSearchTraits {
    using Value = HANDLE;
    static Value None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Value search) noexcept { FindClose(search); }
};
using UniqueFileSearch = UniqueHandle<FileSearchTraits>;

struct SidTraits {
    using Value = PSID;
    static Value None() noexcept { return nullptr; }
    static void Close(Value sid) noexcept { FreeSid(sid); }
};
using UniqueSid = UniqueHandle<SidTraits>;

struct InternetTraits {
    using Value = HINTERNET;
    static Value None() noexcept { return nullptr; }
    static void Close(Value handle) noexcept { InternetCloseHandle(handle); }
};
using UniqueInternet = UniqueHandle<InternetTraits>;

struct RpcStringTraits {
    using Value = RPC_WSTR;
    static Value None() noexcept { return nullptr; }
    static void Close(Value text) noexcept { RpcStringFreeW(&text); }
};
using UniqueRpcString = UniqueHandle<RpcStringTraits>;

/// Memory that the system allocated for its caller: texts, access lists, security descriptors.
template <class Pointer>
struct LocalMemoryTraits {
    using Value = Pointer;
    static Value None() noexcept { return nullptr; }
    static void Close(Value memory) noexcept { LocalFree(memory); }
};
template <class Pointer>
using UniqueLocalMemory = UniqueHandle<LocalMemoryTraits<Pointer>>;

/// A function of a loaded module under its real type, or null.
template <class Function>
Function* FindFunction(HMODULE module, const char* name) noexcept {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace Zuvan::Lumeq::Common
