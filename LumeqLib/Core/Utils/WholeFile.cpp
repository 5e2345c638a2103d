#include "LumeqLib/Core/Utils/WholeFile.h"

#include "Common/Guid.h"
#include "Common/Logger.h"
#include "Common/Pattern.h"
#include "Common/SystemHandles.h"

#include <aclapi.h>
#include <cstdint>
#include <memory>
#include <utility>

namespace Zuvan::Lumeq::Core::Utils {

using Common::UniqueFile;

namespace {

struct FindTraits {
    using Value = HANDLE;
    static Value None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Value search) noexcept { FindClose(search); }
};
using UniqueFind = Common::UniqueHandle<FindTraits>;

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

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

/// No longer than the name of any settings file, so that the path does not grow past what the system takes:
/// that leaves room for 12 digits of the GUID. The folder is everybody's, so the name must not be known in
/// advance.
std::wstring NeighbourOf(const std::wstring& path) {
    return InFolderOf(path, L"Lumeq" + Common::NewGuidString().substr(1, 13) + L".tmp");
}

bool IsNeighbourName(const std::wstring& name) {
    static const Common::Pattern pattern(LR"(^Lumeq[0-9A-F]{8}-[0-9A-F]{4}\.tmp$)");
    return pattern.Matches(name);
}

bool IsLeftOver(const WIN32_FIND_DATAW& file) {
    constexpr std::uint64_t Minute = 60ULL * 10'000'000;
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& time) {
        return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    };
    return ticks(now) > ticks(file.ftLastWriteTime) + Minute && IsNeighbourName(file.cFileName);
}

void RemoveLeftOvers(const std::wstring& path) {
    // Anybody may have filled the folder with files of such names that cannot be deleted.
    constexpr int MostAtOnce = 64;
    WIN32_FIND_DATAW found{};
    const UniqueFind search(FindFirstFileW(InFolderOf(path, L"Lumeq*.tmp").c_str(), &found));
    if (!search)
        return;
    int count = 0;
    do {
        if (IsLeftOver(found))
            DeleteFileW(InFolderOf(path, found.cFileName).c_str());
    } while (++count < MostAtOnce && FindNextFileW(search.Get(), &found));
}

/// A file that is open cannot be replaced, which is told as denied access.
bool IsDenied(DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED; }

/// Tries until it gives something else than that the file is in use, which takes a process no time that loads
/// or saves it.
template <class Attempt>
DWORD RetryWhileInUse(Attempt attempt) {
    constexpr std::uint32_t LimitMilliseconds = 200;
    const DWORD start = GetTickCount();
    for (;;) {
        const DWORD error = attempt();
        if (!IsDenied(error) || Common::ElapsedTicks(start, GetTickCount()) >= LimitMilliseconds)
            return error;
        Sleep(1);
    }
}

/// The error code, or ERROR_SUCCESS.
DWORD Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition, DWORD flags,
           UniqueFile& file) {
    file.Reset(CreateFileW(path.c_str(), access, sharing, nullptr, disposition, flags, nullptr));
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
    const DWORD error = Open(path, GENERIC_WRITE, ShareAll, OPEN_EXISTING, 0, file);
    return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
}

DWORD Replace(const std::wstring& path, const std::wstring& neighbour) {
    if (const DWORD error = WritingError(path); error != ERROR_SUCCESS)
        return error;
    // ReplaceFileW is no substitute: it moves the old file away first, so that for a moment there is none.
    return MoveFileExW(neighbour.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
               ? ERROR_SUCCESS
               : GetLastError();
}

/// By handle: behind a path in everybody's folder there may be another file by now. As far as the system lets
/// us, and if there is a file: what the new one inherits from its folder is the usual case.
void CopyAccessRights(const std::wstring& from, HANDLE to) {
    UniqueFile file;
    if (Open(from, READ_CONTROL, ShareAll, OPEN_EXISTING, 0, file) != ERROR_SUCCESS)
        return;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(file.Get(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, nullptr,
                        nullptr, &descriptor) != ERROR_SUCCESS)
        return;
    const std::unique_ptr<void, decltype(&LocalFree)> owner(descriptor, &LocalFree);
    SetKernelObjectSecurity(to, DACL_SECURITY_INFORMATION, descriptor);
}

/// Onto the disk: else a power failure could leave an empty file in the place of the old one.
DWORD Write(HANDLE file, const std::string& content) {
    DWORD written = 0;
    if (!WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) ||
        !FlushFileBuffers(file))
        return GetLastError();
    return written == content.size() ? ERROR_SUCCESS : ERROR_DISK_FULL;
}

/// Closes the file.
DWORD FillNeighbour(UniqueFile file, const std::string& content, const std::wstring& path) {
    CopyAccessRights(path, file.Get());
    return Write(file.Get(), content);
}

/// What was just written is what a scanner opens next, and may have to itself for a moment.
void CheckReadable(const std::wstring& path) {
    if (!LoadWholeFile(*CreateXmlDocument().Get(), path))
        ThrowIfFailed(E_FAIL);
}

/// The error code, or ERROR_SUCCESS. The file is as it was after an error.
DWORD SaveByReplacing(IXMLDOMDocument& document, const std::wstring& path) {
    const std::string content = XmlContent(document);
    const std::wstring neighbour = NeighbourOf(path);
    UniqueFile file;
    DWORD error = Open(neighbour, GENERIC_WRITE | WRITE_DAC, FILE_SHARE_READ, CREATE_NEW,
                       FILE_FLAG_OPEN_REPARSE_POINT, file);
    if (error != ERROR_SUCCESS)
        return error;
    const Remover remover(neighbour);
    error = FillNeighbour(std::move(file), content, path);
    if (error != ERROR_SUCCESS)
        return error;
    CheckReadable(neighbour);
    return RetryWhileInUse([&] { return Replace(path, neighbour); });
}

} // namespace

bool LoadWholeFile(IXMLDOMDocument& document, const std::wstring& path) {
    if (LoadXml(document, path))
        return true;
    // While this is open nobody writes the file. Where it cannot be opened, neither can it be loaded.
    UniqueFile held;
    RetryWhileInUse([&] {
        return Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, OPEN_EXISTING, 0, held);
    });
    return LoadXml(document, path);
}

void SaveWholeFile(IXMLDOMDocument& document, const std::wstring& path) {
    if (IsReadOnly(path))
        ThrowIfFailed(E_ACCESSDENIED);
    RemoveLeftOvers(path);
    const DWORD error = SaveByReplacing(document, path);
    // Who may write the file but neither make another beside it nor replace it can only write the file
    // itself.
    if (IsDenied(error) && WritingError(path) == ERROR_SUCCESS)
        SaveXml(document, path);
    else
        ThrowIfFailed(HRESULT_FROM_WIN32(error));
}

} // namespace Zuvan::Lumeq::Core::Utils
