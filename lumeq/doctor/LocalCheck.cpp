// The local settings file, and the rights of its folder.
#include "Common/Paths.h"
#include "Common/SystemHandles.h"
#include "LumeqLib/Core/Utils/AtomicFile.h"
#include "lumeq/doctor/Examination.h"
#include "lumeq/doctor/Texts.h"

#include <aclapi.h>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opening an existing file changes nothing in it, whatever the access.
bool CanOpen(const std::wstring& path, DWORD access) {
    return static_cast<bool>(
        Common::UniqueFile(CreateFileW(path.c_str(), access, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr)));
}

/// What the entries of the list allow everybody, or all ordinary users.
DWORD AllowedToAll(const ACL& list) {
    DWORD allowed = 0;
    for (WORD i = 0; i < list.AceCount; ++i) {
        void* entry = nullptr;
        if (!GetAce(const_cast<ACL*>(&list), i, &entry))
            break;
        auto* const allow = static_cast<ACCESS_ALLOWED_ACE*>(entry);
        auto* const sid = reinterpret_cast<PSID>(&allow->SidStart);
        if (allow->Header.AceType == ACCESS_ALLOWED_ACE_TYPE &&
            (allow->Header.AceFlags & INHERIT_ONLY_ACE) == 0 &&
            (IsWellKnownSid(sid, WinWorldSid) || IsWellKnownSid(sid, WinBuiltinUsersSid) ||
             IsWellKnownSid(sid, WinAuthenticatedUserSid)))
            allowed |= allow->Mask;
    }
    return allowed;
}

/// True also if the rights cannot be read: this reports only what it has seen.
bool AllMayAddFiles(const std::wstring& folder) {
    ACL* list = nullptr;
    Common::UniqueLocalMemory<PSECURITY_DESCRIPTOR> descriptor;
    if (GetNamedSecurityInfoW(folder.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                              &list, nullptr, descriptor.Receive()) != ERROR_SUCCESS ||
        !list)
        return true;
    constexpr DWORD Enough = FILE_ADD_FILE | GENERIC_WRITE | GENERIC_ALL;
    return (AllowedToAll(*list) & Enough) != 0;
}

void CheckLocalFolder(const std::wstring& file, Report& report) {
    const std::wstring folder = file.substr(0, file.find_last_of(L'\\'));
    if (Common::Exists(folder) && !AllMayAddFiles(folder))
        report.Wrong(Id::LocalNotShared, Utf8(folder));
}

/// Files of applications that chose a subfolder, one level deep.
std::vector<std::wstring> OtherFiles(const std::wstring& file) {
    std::vector<std::wstring> others;
    const std::wstring ending = L"\\LUMEQ\\LumeqLocalSettings.xml";
    const std::wstring parent = file.substr(0, file.size() - ending.size() + 1);
    WIN32_FIND_DATAW found{};
    const Common::UniqueFileSearch search(FindFirstFileW((parent + L"*").c_str(), &found));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.Get(), &found)) {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L".." && Common::IsFile(parent + name + ending))
            others.push_back(name);
    }
    return others;
}

void CheckOtherFiles(const std::wstring& file, Report& report) {
    for (const std::wstring& folder : OtherFiles(file))
        report.Wrong(Id::LocalElsewhere, "subfolder " + Utf8(folder));
}

void CheckFile(const SettingsFile& local, Report& report) {
    const std::string path = Utf8(local.path);
    if (!CanOpen(local.path, GENERIC_READ))
        report.Wrong(Id::LocalUnreadable, path);
    else if (!local.IsAccepted())
        report.Wrong(Id::LocalDamaged, path + ": " + local.refusal);
    else if (Core::Utils::IsReadOnly(local.path) || !CanOpen(local.path, GENERIC_WRITE))
        report.Wrong(Id::LocalReadOnly, path);
    else
        report.Well(Check::Local, path);
}

} // namespace

void CheckLocal(Examination& examination) {
    const SettingsFile& local = examination.local;
    if (local.exists)
        CheckFile(local, examination.report);
    else
        examination.report.Well(Check::Local, Utf8(local.path) + " does not exist yet");
    CheckLocalFolder(local.path, examination.report);
    CheckOtherFiles(local.path, examination.report);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
