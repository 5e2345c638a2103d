#include "LumeqLib/Core/Utils/SharedFolder.h"

#include "Common/Paths.h"
#include "Common/SystemHandles.h"

#include <shlobj.h>
#include <shlwapi.h>

namespace Zuvan::Lumeq::Core::Utils {

namespace {

using Common::UniqueSid;

constexpr DWORD EveryRight = 0x1FFFFF;

UniqueSid MakeEveryone(const SharedFolderSystem& system) {
    SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
    UniqueSid sid;
    if (!system.AllocateSid(world, 1, SECURITY_WORLD_RID, sid.Receive()))
        return {};
    return sid;
}

// Every user of the machine changes the same file, so its first writer must not lock out the others.
EXPLICIT_ACCESS_W FullControlOfFiles(PSID sid) {
    EXPLICIT_ACCESS_W entry{};
    entry.grfAccessPermissions = EveryRight;
    entry.grfAccessMode = SET_ACCESS;
    entry.grfInheritance = OBJECT_INHERIT_ACE;
    entry.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    entry.Trustee.TrusteeType = TRUSTEE_IS_WELL_KNOWN_GROUP;
    entry.Trustee.ptstrName = static_cast<wchar_t*>(sid);
    return entry;
}

void ShareFolder(wchar_t* folder, const SharedFolderSystem& system) {
    const UniqueSid everyone = MakeEveryone(system);
    if (!everyone)
        return;
    EXPLICIT_ACCESS_W entry = FullControlOfFiles(everyone.Get());
    Common::UniqueLocalMemory<ACL*> list;
    if (system.MakeAccessList(1, &entry, nullptr, list.Receive()) != ERROR_SUCCESS)
        return;
    system.SetSecurity(folder, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, list.Get(),
                       nullptr);
}

} // namespace

bool SharedFolderSystem::FolderExists(const wchar_t* folder) const {
    return PathIsDirectoryW(folder) != FALSE;
}

void SharedFolderSystem::CreateFolder(const wchar_t* folder) const {
    SHCreateDirectoryExW(nullptr, folder, nullptr);
}

bool SharedFolderSystem::AllocateSid(SID_IDENTIFIER_AUTHORITY& authority, BYTE count, DWORD subAuthority,
                                     PSID* sid) const {
    return AllocateAndInitializeSid(&authority, count, subAuthority, 0, 0, 0, 0, 0, 0, 0, sid) != FALSE;
}

DWORD SharedFolderSystem::MakeAccessList(ULONG count, EXPLICIT_ACCESS_W* entries, ACL* oldList,
                                         ACL** list) const {
    return SetEntriesInAclW(count, entries, oldList, list);
}

DWORD SharedFolderSystem::SetSecurity(wchar_t* name, SE_OBJECT_TYPE type, SECURITY_INFORMATION information,
                                      PSID owner, PSID group, ACL* dacl, ACL* sacl) const {
    return SetNamedSecurityInfoW(name, type, information, owner, group, dacl, sacl);
}

void EnsureSharedFolder(const std::wstring& filePath, const SharedFolderSystem& system) {
    wchar_t folder[MAX_PATH + 1] = {};
    filePath.copy(folder, MAX_PATH);
    PathRemoveFileSpecW(folder);
    if (system.FolderExists(folder))
        return;
    system.CreateFolder(folder);
    // If there is no folder now, the remaining steps fail by themselves. But a file here may be a planted
    // link to a more privileged host's file; do not open that to everyone.
    if (!Common::IsFile(folder))
        ShareFolder(folder, system);
}

} // namespace Zuvan::Lumeq::Core::Utils
