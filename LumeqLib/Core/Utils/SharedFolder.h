// The folder of the local settings, which all users of the machine share. Includes windows.h: for source
// files only.
#pragma once

#include <windows.h>

#include <aclapi.h>
#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// The system calls of EnsureSharedFolder.
class SharedFolderSystem {
public:
    virtual ~SharedFolderSystem() = default;

    virtual bool FolderExists(const wchar_t* folder) const;
    /// Creates the folders above it as well. Does not report failure.
    virtual void CreateFolder(const wchar_t* folder) const;
    virtual bool AllocateSid(SID_IDENTIFIER_AUTHORITY& authority, BYTE count, DWORD subAuthority,
                             PSID* sid) const;
    /// The other two return ERROR_SUCCESS or an error code.
    virtual DWORD MakeAccessList(ULONG count, EXPLICIT_ACCESS_W* entries, ACL* oldList, ACL** list) const;
    virtual DWORD SetSecurity(wchar_t* name, SE_OBJECT_TYPE type, SECURITY_INFORMATION information,
                              PSID owner, PSID group, ACL* dacl, ACL* sacl) const;
};

/// Creates the folder of the file if there is none, and grants every user full control of the files in it.
/// Leaves the rights of an existing folder alone, and those of a file that has the folder's name. Does not
/// report failure, because using the file will.
void EnsureSharedFolder(const std::wstring& filePath,
                        const SharedFolderSystem& system = SharedFolderSystem());

} // namespace Zuvan::Lumeq::Core::Utils
