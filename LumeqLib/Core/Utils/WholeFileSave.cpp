#include "LumeqLib/Core/Utils/WholeFileSave.h"

#include "Common/Format.h"
#include "Common/SystemHandles.h"

#include <aclapi.h>
#include <memory>
#include <shlwapi.h>

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

[[noreturn]] void ThrowLastError() { throw _com_error(HRESULT_FROM_WIN32(GetLastError())); }

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

/// Replacing a file asks less of it than writing to it does: a file that must not be written stays.
void CheckWritable(const std::wstring& path) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    if (!file)
        ThrowLastError();
}

/// As far as the system lets us: what the new file inherits from its folder is the usual case.
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

void SaveWholeFile(IXMLDOMDocument& document, const std::wstring& path) {
    const bool existed = PathFileExistsW(path.c_str()) != FALSE;
    if (existed)
        CheckWritable(path);
    RemoveLeftOvers(path);
    const std::wstring neighbour = NeighbourOf(path);
    const Remover remover(neighbour);
    const HRESULT saved = document.save(_variant_t(neighbour.c_str()));
    if (saved == E_ACCESSDENIED) {
        // Who may write the file but make no other beside it can only write the file itself.
        SaveXml(document, path);
        return;
    }
    ThrowIfFailed(saved);
    if (existed)
        CopyAccessRights(path, neighbour);
    if (!MoveFileExW(neighbour.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        ThrowLastError();
}

} // namespace Zuvan::Lumeq::Core::Utils
