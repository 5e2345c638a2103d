// The folder of the local settings, which all users of the machine share. Includes windows.h: for source
// files only.
#pragma once

#include <windows.h>

#include <aclapi.h>
#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// What EnsureSharedFolder asks of the system.
class SharedFolderSystem {
public:
    virtual ~SharedFolderSystem() = default;

    virtual bool FolderExists(const wchar_t* folder) const;
    /// With the folders above it. A failure is not told.
    virtual void CreateFolder(const wchar_t* folder) const;
    virtual bool AllocateSid(SID_IDENTIFIER_AUTHORITY& authority, BYTE count, DWORD subAuthority,
                             PSID* sid) const;
    /// The other two give ERROR_SUCCESS or an error code.
    virtual DWORD MakeAccessList(ULONG count, EXPLICIT_ACCESS_W* entries, ACL* oldList, ACL** list) const;
    virtual DWORD SetSecurity(wchar_t* name, SE_OBJECT_TYPE type, SECURITY_INFORMATION information,
                              PSID owner, PSID group, ACL* dacl, ACL* sacl) const;
};

/// Makes the folder of the file if there is none, and gives every user full control of the files in it. The
/// rights of an existing folder are not touched, nor those of a file in its place. A failure is not told: the
/// file's own tells it.
void EnsureSharedFolder(const std::wstring& filePath,
                        const SharedFolderSystem& system = SharedFolderSystem());

} // namespace Zuvan::Lumeq::Core::Utils
