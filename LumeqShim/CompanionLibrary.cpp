#include "LumeqShim/CompanionLibrary.h"

#include "Common/Exceptions.h"
#include "Common/Format.h"
#include "Common/Paths.h"
#include "Common/SystemHandles.h"

#include <Lumeq/LumeqRecords.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::FileFormatException;
using Lumeq::Common::FileNotFoundException;
using Lumeq::Common::FormatBounded;
using Lumeq::Common::IsFile;
using Lumeq::Common::ModulePath;
using Lumeq::Common::NarrowArgument;
using Lumeq::Common::OwnModulePath;
using Lumeq::Common::UniqueModule;

constinit HMODULE companionLibrary = nullptr;

/// Empty if the module's path is unknown, because the bare name would be looked for along the search path.
std::wstring CompanionPathBeside(const std::wstring& modulePath) {
    return modulePath.empty() ? std::wstring() : Lumeq::Common::InFolderOf(modulePath, CompanionFileName);
}

} // namespace

std::wstring CompanionPathFor(const std::wstring& host, const std::wstring& module) {
    const std::wstring besideHost = CompanionPathBeside(host);
    if (IsFile(besideHost))
        return besideHost;
    const std::wstring besideModule = CompanionPathBeside(module);
    return IsFile(besideModule) ? besideModule : besideHost;
}

void* LoadCompanionFrom(const std::wstring& path) {
    if (!IsFile(path))
        throw FileNotFoundException(path.empty() ? CompanionFileName : path,
                                    L"The companion library was not found");
    // The flags keep its own dependencies, too, from being loaded from the current folder or from PATH.
    UniqueModule library(LoadLibraryExW(path.c_str(), nullptr,
                                        LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    if (!library) {
        const DWORD error = GetLastError();
        throw FileFormatException(
            path, FormatBounded(80, L"The companion library could not be loaded: error %u", error).text);
    }
    // Deliberate leak: a managed runtime cannot be unloaded, and the library may have threads of its own.
    return library.Release();
}

void* FindCompanionOperation(const char* name) {
    if (!companionLibrary)
        companionLibrary =
            static_cast<HMODULE>(LoadCompanionFrom(CompanionPathFor(ModulePath(nullptr), OwnModulePath())));
    void* const operation = reinterpret_cast<void*>(GetProcAddress(companionLibrary, name));
    if (!operation)
        throw FileFormatException(
            ModulePath(companionLibrary),
            FormatBounded(160, L"The companion library has no operation %S", NarrowArgument(name).Text())
                .text);
    return operation;
}

} // namespace Zuvan::LumeqShim
