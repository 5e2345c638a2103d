#include "LumeqShim/CompanionLibrary.h"

#include "Common/Exceptions.h"
#include "Common/Format.h"
#include "Common/SystemHandles.h"

#include <Lumeq/LumeqRecords.h>

#include <filesystem>
#include <string>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::FileFormatException;
using Lumeq::Common::FileNotFoundException;
using Lumeq::Common::FormatBounded;
using Lumeq::Common::NarrowArgument;
using Lumeq::Common::UniqueModule;

constinit HMODULE companionLibrary = nullptr;

/// Of any length; empty if the system does not tell.
std::wstring ModulePath(HMODULE module) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

/// The module that this code is in.
HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&companionLibrary), &module);
    return module;
}

/// Empty if the module's place is not known: the bare name would be looked for along the search path.
std::wstring CompanionPathBeside(const std::wstring& modulePath) {
    if (modulePath.empty())
        return {};
    return std::filesystem::path(modulePath).replace_filename(CompanionFileName).wstring();
}

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// Beside the host executable, unless a file of that name stands beside our own module alone.
std::wstring CompanionPath() {
    const std::wstring besideHost = CompanionPathBeside(ModulePath(nullptr));
    if (IsFile(besideHost))
        return besideHost;
    const std::wstring besideOwnModule = CompanionPathBeside(ModulePath(OwnModule()));
    return IsFile(besideOwnModule) ? besideOwnModule : besideHost;
}

HMODULE LoadCompanionLibrary() {
    const std::wstring path = CompanionPath();
    if (!IsFile(path))
        throw FileNotFoundException(path.empty() ? CompanionFileName : path,
                                    L"The companion library was not found");
    // What it depends on must not come from the current folder or from PATH either.
    UniqueModule library(LoadLibraryExW(path.c_str(), nullptr,
                                        LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    if (!library) {
        const DWORD error = GetLastError();
        throw FileFormatException(
            path, FormatBounded(80, L"The companion library could not be loaded: error %u", error).text);
    }
    // Never freed: it runs on a managed runtime, which cannot be unloaded, and may have threads of its own.
    return library.Release();
}

} // namespace

void* FindCompanionOperation(const char* name) {
    if (!companionLibrary)
        companionLibrary = LoadCompanionLibrary();
    void* const operation = reinterpret_cast<void*>(GetProcAddress(companionLibrary, name));
    if (!operation)
        throw FileFormatException(
            ModulePath(companionLibrary),
            FormatBounded(160, L"The companion library has no operation %S", NarrowArgument(name).Text())
                .text);
    return operation;
}

} // namespace Zuvan::LumeqShim
