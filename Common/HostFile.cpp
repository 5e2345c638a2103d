#include "Common/HostFile.h"

#include "Common/Format.h"

#include <windows.h>

#include <shlwapi.h>
#include <vector>

namespace Zuvan::Lumeq::Common {

std::wstring GetHostFilePath() {
    wchar_t path[MAX_PATH + 1] = {};
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH + 1);
    path[MAX_PATH] = L'\0';
    return length == 0 ? std::wstring() : path;
}

std::wstring GetExecutableName() { return PathFindFileNameW(GetHostFilePath().c_str()); }

std::wstring GetHostFileVersion(const std::wstring& path) {
    constexpr wchar_t NoVersion[] = L"0.0.0.0";
    return path.empty() ? NoVersion : GetFileVersion(path, NoVersion);
}

std::wstring GetFileVersion(const std::wstring& path, const std::wstring& fallback) {
    DWORD unused = 0;
    const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &unused);
    if (size == 0)
        return fallback;
    std::vector<BYTE> block(size);
    GetFileVersionInfoW(path.c_str(), 0, size, block.data());

    DWORD high = 0;
    DWORD low = 0;
    void* found = nullptr;
    UINT length = 0;
    if (VerQueryValueW(block.data(), L"\\", &found, &length) && length == sizeof(VS_FIXEDFILEINFO)) {
        const auto* info = static_cast<const VS_FIXEDFILEINFO*>(found);
        high = info->dwFileVersionMS;
        low = info->dwFileVersionLS;
    }
    return FormatBounded(64, L"%u.%u.%u.%u", HIWORD(high), LOWORD(high), HIWORD(low), LOWORD(low)).text;
}

} // namespace Zuvan::Lumeq::Common
