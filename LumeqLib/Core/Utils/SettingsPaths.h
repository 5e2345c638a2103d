// Where the two settings files are. Includes windows.h: for source files only.
#pragma once

#include "Common/SystemHandles.h"

#include <shlobj.h>
#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Replace the files below unless empty or white space. Nothing in the library sets them.
extern std::wstring factorySettingsPathOverride;
extern std::wstring localSettingsPathOverride;

/// The subfolder of the all users' data that the host chose; empty until then. Written under the API lock.
extern std::wstring localSubfolder;

/// The system calls that find the folder for all users' data.
class AllUsersFolderSystem {
public:
    using KnownFolderFunction = HRESULT WINAPI(const GUID& folder, DWORD flags, HANDLE token, wchar_t** path);

    virtual ~AllUsersFolderSystem() = default;

    virtual bool IsVistaOrLater() const;
    /// None on failure.
    virtual Common::UniqueModule LoadShell() const;
    /// Null on failure.
    virtual KnownFolderFunction* FindKnownFolderFunction(HMODULE shell) const;
    /// For systems older than Vista. False on failure.
    virtual bool GetSpecialFolder(wchar_t (&path)[MAX_PATH + 1]) const;
};

/// Throws VestoException.
std::wstring FindAllUsersFolder(const AllUsersFolderSystem& system = AllUsersFolderSystem());

/// Returns the joined path, shorter than 261 characters, or throws ArgumentException.
std::wstring CombinePath(const std::wstring& left, const std::wstring& right);

/// The file beside the host's executable. Throws FileNotFoundException if there is none, or if the system
/// does not know where the executable is.
std::wstring FindFactorySettingsPath();

/// The file under all users' data. Creates its folder if necessary; the file need not exist.
std::wstring FindLocalSettingsPath();

} // namespace Zuvan::Lumeq::Core::Utils
