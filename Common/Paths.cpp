#include "Common/Paths.h"

#include <windows.h>

#include <shlwapi.h>

namespace Zuvan::Lumeq::Common {

bool Exists(const std::wstring& path) { return PathFileExistsW(path.c_str()) != FALSE; }

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::wstring InFolderOf(const std::wstring& path, const std::wstring& name) {
    return path.substr(0, path.find_last_of(L"\\/") + 1) + name;
}

std::wstring ModulePath(void* module) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(static_cast<HMODULE>(module), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::wstring OwnModulePath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&OwnModulePath), &module);
    return ModulePath(module);
}

} // namespace Zuvan::Lumeq::Common
