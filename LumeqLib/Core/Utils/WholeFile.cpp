#include "LumeqLib/Core/Utils/WholeFile.h"

#include "Common/Format.h"
#include "Common/SystemHandles.h"

#include <aclapi.h>
#include <cstdint>
#include <memory>

namespace Zuvan::Lumeq::Core::Utils {

namespace {

struct FileTraits {
    using Value = HANDLE;
    static Value None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Value file) noexcept { CloseHandle(file); }
};
using UniqueFile = Common::UniqueHandle<FileTraits>;

struct FindTraits {
    using Value = HANDLE;
    static Value None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Value search) noexcept { FindClose(search); }
};
using UniqueFind = Common::UniqueHandle<FindTraits>;

/// Removes the file at the end. That it is gone by then is the usual case.
class Remover {
public:
    explicit Remover(const std::wstring& path) : _path(path) {}
    ~Remover() { DeleteFileW(_path.c_str()); }
    Remover(const Remover&) = delete;
    Remover& operator=(const Remover&) = delete;

private:
    const std::wstring& _path;
};

std::wstring InFolderOf(const std::wstring& path, const std::wstring& name) {
    return path.substr(0, path.find_last_of(L"\\/") + 1) + name;
}

/// Shorter than the name of any settings file, so that the path does not grow past what the system takes.
std::wstring NeighbourOf(const std::wstring& path) {
    return InFolderOf(path, Common::FormatBounded(32, L"Lumeq%08lx.tmp", GetCurrentProcessId()).text);
}

bool IsLeftOver(const FILETIME& written) {
    constexpr std::uint64_t Minute = 60ULL * 10'000'000;
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& time) {
        return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    };
    return ticks(now) > ticks(written) + Minute;
}

void RemoveLeftOvers(const std::wstring& path) {
    WIN32_FIND_DATAW found{};
    const UniqueFind search(FindFirstFileW(InFolderOf(path, L"Lumeq????????.tmp").c_str(), &found));
    if (!search)
        return;
    do {
        if (IsLeftOver(found.ftLastWriteTime))
            DeleteFileW(InFolderOf(path, found.cFileName).c_str());
    } while (FindNextFileW(search.Get(), &found));
}

/// Tries until it gives something else than that the file is in use, which takes a process no time that loads
/// or saves it.
template <class Attempt>
DWORD RetryWhileInUse(Attempt attempt) {
    constexpr ULONGLONG LimitMilliseconds = 200;
    const ULONGLONG start = GetTickCount64();
    for (;;) {
        const DWORD error = attempt();
        // A file that is open cannot be replaced, which is told as denied access.
        const bool inUse = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
        if (!inUse || GetTickCount64() - start >= LimitMilliseconds)
            return error;
        Sleep(1);
    }
}

/// The error code, or ERROR_SUCCESS.
DWORD Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition, UniqueFile& file) {
    file.Reset(CreateFileW(path.c_str(), access, sharing, nullptr, disposition, 0, nullptr));
    return file ? ERROR_SUCCESS : GetLastError();
}

bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

/// Whether the file, if there is one, can be written to. Replacing it asks less of it than that, and a file
/// that must not be written has to stay.
DWORD WritingError(const std::wstring& path) {
    UniqueFile file;
    const DWORD error = Open(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             OPEN_EXISTING, file);
    return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
}

DWORD CreationError(const std::wstring& path) {
    UniqueFile file;
    return Open(path, GENERIC_WRITE, 0, CREATE_ALWAYS, file);
}

/// Not every implementation tells that the disk is full.
void CheckReadable(const std::wstring& path) {
    if (!LoadXml(*CreateXmlDocument().Get(), path))
        ThrowIfFailed(E_FAIL);
}

DWORD Replace(const std::wstring& path, const std::wstring& neighbour) {
    if (const DWORD error = WritingError(path); error != ERROR_SUCCESS)
        return error;
    return MoveFileExW(neighbour.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
               ? ERROR_SUCCESS
               : GetLastError();
}

/// As far as the system lets us, and if there is a file: what the new one inherits from its folder is the
/// usual case.
void CopyAccessRights(const std::wstring& from, std::wstring to) {
    ACL* rights = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(from.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                              &rights, nullptr, &descriptor) != ERROR_SUCCESS)
        return;
    const std::unique_ptr<void, decltype(&LocalFree)> owner(descriptor, &LocalFree);
    SetNamedSecurityInfoW(to.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, rights,
                          nullptr);
}

} // namespace

bool LoadWholeFile(IXMLDOMDocument& document, const std::wstring& path) {
    // While this is open nobody writes or replaces the file. Where it cannot be opened, neither can it be
    // loaded.
    UniqueFile held;
    RetryWhileInUse([&] { return Open(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING, held); });
    return LoadXml(document, path);
}

void SaveWholeFile(IXMLDOMDocument& document, const std::wstring& path) {
    if (IsReadOnly(path))
        ThrowIfFailed(E_ACCESSDENIED);
    RemoveLeftOvers(path);
    const std::wstring neighbour = NeighbourOf(path);
    const Remover remover(neighbour);
    const DWORD error = CreationError(neighbour);
    if (error == ERROR_ACCESS_DENIED) {
        // Who may write the file but make no other beside it can only write the file itself.
        SaveXml(document, path);
        return;
    }
    ThrowIfFailed(HRESULT_FROM_WIN32(error));
    SaveXml(document, neighbour);
    CheckReadable(neighbour);
    CopyAccessRights(path, neighbour);
    ThrowIfFailed(HRESULT_FROM_WIN32(RetryWhileInUse([&] { return Replace(path, neighbour); })));
}

} // namespace Zuvan::Lumeq::Core::Utils
