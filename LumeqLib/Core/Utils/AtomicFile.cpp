#include "LumeqLib/Core/Utils/AtomicFile.h"

#include "Common/CompiledPattern.h"
#include "Common/Guid.h"
#include "Common/Logger.h"
#include "Common/Paths.h"
#include "Common/SystemHandles.h"

#include <aclapi.h>
#include <cstdint>
#include <utility>

namespace Zuvan::Lumeq::Core::Utils {

using Common::InFolderOf;
using Common::UniqueFile;

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Removes the file at the end. Usually the file has taken its new name by then, and there is none to remove.
class Remover {
public:
    explicit Remover(const std::wstring& path) : _path(path) {}
    ~Remover() { DeleteFileW(_path.c_str()); }
    Remover(const Remover&) = delete;
    Remover& operator=(const Remover&) = delete;

private:
    const std::wstring& _path;
};

/// No longer than the name of any settings file, so that the path stays within the system's limit; that
/// leaves room for 12 digits of the GUID. Everybody can write to the folder, so nobody may be able to guess
/// the name.
std::wstring TemporaryOf(const std::wstring& path) {
    return InFolderOf(path, L"Lumeq" + Common::NewGuidString().substr(1, 13) + L".tmp");
}

bool IsTemporaryName(const std::wstring& name) {
    return Common::CompiledPattern<LR"(^Lumeq[0-9A-F]{8}-[0-9A-F]{4}\.tmp$)">.Matches(name);
}

bool IsLeftover(const WIN32_FIND_DATAW& file) {
    constexpr std::uint64_t Minute = 60ULL * 10'000'000;
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& time) {
        return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    };
    return ticks(now) > ticks(file.ftLastWriteTime) + Minute && IsTemporaryName(file.cFileName);
}

void RemoveLeftovers(const std::wstring& path) {
    // Anybody may fill the folder with undeletable files of such names, and saving must not slow down.
    constexpr int MostAtOnce = 64;
    WIN32_FIND_DATAW found{};
    const Common::UniqueFileSearch search(FindFirstFileW(InFolderOf(path, L"Lumeq*.tmp").c_str(), &found));
    if (!search)
        return;
    int count = 0;
    do {
        if (IsLeftover(found))
            DeleteFileW(InFolderOf(path, found.cFileName).c_str());
    } while (++count < MostAtOnce && FindNextFileW(search.Get(), &found));
}

/// The system reports denied access for an attempt to replace an open file.
bool IsDenied(DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED; }

/// Retries for up to 200 ms while the file is in use; loading or saving holds it only briefly. Returns the
/// attempt's last error code.
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

/// Returns the error code, or ERROR_SUCCESS.
DWORD Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition, DWORD flags,
           UniqueFile& file) {
    file.Reset(CreateFileW(path.c_str(), access, sharing, nullptr, disposition, flags, nullptr));
    return file ? ERROR_SUCCESS : GetLastError();
}

/// The error of opening the file for writing; none if there is no file. Replacing a file needs fewer rights
/// than writing it, but a file that must not be written has to stay.
DWORD WritingError(const std::wstring& path) {
    UniqueFile file;
    const DWORD error = Open(path, GENERIC_WRITE, ShareAll, OPEN_EXISTING, 0, file);
    return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
}

DWORD Replace(const std::wstring& path, const std::wstring& temporary) {
    if (const DWORD error = WritingError(path); error != ERROR_SUCCESS)
        return error;
    // Not ReplaceFileW: it moves the old file away first, so for a moment there would be no file.
    return MoveFileExW(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
               ? ERROR_SUCCESS
               : GetLastError();
}

/// Takes a handle, because the path, in a folder open to everybody, may lead to another file by now. Does
/// nothing if there is no file or the system refuses: the rights inherited from the folder usually suffice.
void CopyAccessRights(const std::wstring& from, HANDLE to) {
    UniqueFile file;
    if (Open(from, READ_CONTROL, ShareAll, OPEN_EXISTING, 0, file) != ERROR_SUCCESS)
        return;
    Common::UniqueLocalMemory<PSECURITY_DESCRIPTOR> descriptor;
    if (GetSecurityInfo(file.Get(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, nullptr,
                        nullptr, descriptor.Receive()) != ERROR_SUCCESS)
        return;
    SetKernelObjectSecurity(to, DACL_SECURITY_INFORMATION, descriptor.Get());
}

/// Flushes to the disk; otherwise a power failure could leave an empty file instead of the old one.
DWORD Write(HANDLE file, const std::string& content) {
    DWORD written = 0;
    if (!WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) ||
        !FlushFileBuffers(file))
        return GetLastError();
    return written == content.size() ? ERROR_SUCCESS : ERROR_DISK_FULL;
}

/// Closes the file.
DWORD Fill(UniqueFile file, const std::string& content, const std::wstring& path) {
    CopyAccessRights(path, file.Get());
    return Write(file.Get(), content);
}

/// Waits for a virus scanner that opens the new file and locks others out for a moment.
void CheckReadable(const std::wstring& path) {
    if (!LoadWithRetry(*CreateXmlDocument().Get(), path))
        ThrowIfFailed(E_FAIL);
}

/// Returns the error code, or ERROR_SUCCESS. After an error the file is unchanged.
DWORD SaveByReplacing(IXMLDOMDocument& document, const std::wstring& path) {
    const std::string content = XmlContent(document);
    const std::wstring temporary = TemporaryOf(path);
    UniqueFile file;
    DWORD error = Open(temporary, GENERIC_WRITE | WRITE_DAC, FILE_SHARE_READ, CREATE_NEW,
                       FILE_FLAG_OPEN_REPARSE_POINT, file);
    if (error != ERROR_SUCCESS)
        return error;
    const Remover remover(temporary);
    error = Fill(std::move(file), content, path);
    if (error != ERROR_SUCCESS)
        return error;
    CheckReadable(temporary);
    return RetryWhileInUse([&] { return Replace(path, temporary); });
}

} // namespace

bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool LoadWithRetry(IXMLDOMDocument& document, const std::wstring& path) {
    if (LoadXml(document, path))
        return true;
    // While this is open, nobody else can open the file for writing. If a writer keeps the file for longer
    // than the wait, the file is loaded as it is.
    UniqueFile held;
    RetryWhileInUse([&] {
        return Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, OPEN_EXISTING, 0, held);
    });
    return LoadXml(document, path);
}

void SaveAtomically(IXMLDOMDocument& document, const std::wstring& path) {
    if (IsReadOnly(path))
        ThrowIfFailed(E_ACCESSDENIED);
    RemoveLeftovers(path);
    const DWORD error = SaveByReplacing(document, path);
    // A user who may write the file, but neither create one beside it nor replace it, can only write it
    // directly.
    if (IsDenied(error) && WritingError(path) == ERROR_SUCCESS)
        SaveXml(document, path);
    else
        ThrowIfFailed(HRESULT_FROM_WIN32(error));
}

} // namespace Zuvan::Lumeq::Core::Utils
