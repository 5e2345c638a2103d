// Works around libdelayimp, MinGW's helper for delayed imports: it loads a library by its bare name, so from
// any folder of the search path, and where that fails it raises a structured exception, which ends the host.
// This file loads by full path from the system folder, and a call that cannot be made returns a failure that
// its caller handles. Imports are delayed because they are most of what loading Lumeq costs a host, and many
// hosts never come to call them.
//
// No longer needed once a toolchain's helper does both, so that the tests of DelayedImports pass with it.
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cwchar>
#include <iterator>
#include <oaidl.h>
#include <string_view>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace {

// What a call returns while its library cannot be loaded. It arrives with the arguments of the missing
// function, which a caller on this platform passes in registers and clears away itself, so that their number
// is free.
namespace Missing {
std::uintptr_t zero() noexcept {
    SetLastError(ERROR_MOD_NOT_FOUND);
    return 0;
}
std::uintptr_t one() noexcept { return 1; }
std::uintptr_t error() noexcept { return ERROR_MOD_NOT_FOUND; }
std::uintptr_t hresult() noexcept {
    return static_cast<std::uint32_t>(HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND));
}
std::uintptr_t same(std::uintptr_t argument) noexcept { return argument; }
std::uintptr_t empty(VARIANT* variant) noexcept {
    *variant = VARIANT{};
    return 0;
}
} // namespace Missing

struct DelayedFunction {
    std::string_view name;
    FARPROC standIn;
};

template <class Function>
FARPROC Address(Function* function) noexcept {
    return reinterpret_cast<FARPROC>(reinterpret_cast<std::uintptr_t>(function));
}

FARPROC StandInFor(std::string_view name) noexcept {
    static const DelayedFunction functions[] = {
#include "DelayedFunctions.inc" // made from DelayedFunctions.txt
    };
    const auto* const row =
        std::find_if(std::begin(functions), std::end(functions),
                     [name](const DelayedFunction& function) { return function.name == name; });
    return row == std::end(functions) ? Address(&Missing::zero) : row->standIn;
}

template <class Value>
Value* At(DWORD offset) noexcept {
    return reinterpret_cast<Value*>(reinterpret_cast<std::uintptr_t>(&__ImageBase) + offset);
}

/// Null where it cannot be loaded.
HMODULE LoadFromSystemFolder(std::string_view name) noexcept {
    wchar_t path[2 * MAX_PATH];
    const UINT length = GetSystemDirectoryW(path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH || name.size() >= MAX_PATH - 1)
        return nullptr;
    path[length] = L'\\';
    *std::copy(name.begin(), name.end(), path + length + 1) = L'\0';
    // What it needs in turn comes from the same folder.
    return LoadLibraryExW(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

/// The loaded library, which stays loaded: what it keeps for the process may outlive this library.
HMODULE LibraryOf(const IMAGE_DELAYLOAD_DESCRIPTOR& library) noexcept {
    const std::atomic_ref handle(*At<HMODULE>(library.ModuleHandleRVA));
    if (const HMODULE loaded = handle.load())
        return loaded;
    const HMODULE loaded = LoadFromSystemFolder(At<const char>(library.DllNameRVA));
    if (loaded && handle.exchange(loaded) != nullptr)
        FreeLibrary(loaded); // Another thread was faster: one reference is enough.
    return loaded;
}

std::string_view FunctionName(const IMAGE_DELAYLOAD_DESCRIPTOR& library, const FARPROC* slot) noexcept {
    const auto index = slot - At<FARPROC>(library.ImportAddressTableRVA);
    const auto& entry = At<const IMAGE_THUNK_DATA>(library.ImportNameTableRVA)[index];
    return At<const IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(entry.u1.AddressOfData))->Name;
}

} // namespace

/// Called by the linker's code for the first call of each function: returns what that call goes to, and
/// writes it to the slot for all later ones. After a failure the slot stays, so the next call tries again.
/// Leaves the thread's last error as it was.
extern "C" FARPROC WINAPI __delayLoadHelper2(const IMAGE_DELAYLOAD_DESCRIPTOR* library,
                                             FARPROC* slot) noexcept {
    const DWORD lastError = GetLastError();
    const std::string_view name = FunctionName(*library, slot);
    const HMODULE module = LibraryOf(*library);
    const FARPROC function = module ? GetProcAddress(module, name.data()) : nullptr;
    if (function)
        std::atomic_ref(*slot).store(function);
    SetLastError(lastError);
    return function ? function : StandInFor(name);
}
