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

/// The factory file of one host, and the one that all hosts of a folder share. `host` is the full path of an
/// executable. The files need not exist. Throw ArgumentException for a path that is too long.
std::wstring OwnFactoryPathOf(const std::wstring& host);
std::wstring SharedFactoryPathOf(const std::wstring& host);

/// The one of the two that the host uses: its own if that exists.
std::wstring FactoryPathOf(const std::wstring& host);

/// The local file under all users' data. Neither it nor its folder need exist. Throws VestoException or
/// ArgumentException.
std::wstring SharedLocalPath();
/// The same in another subfolder than the one in force; empty for none.
std::wstring SharedLocalPathOf(const std::wstring& subfolder);

/// The file beside the host's executable. Throws FileNotFoundException if there is none, or if the system
/// does not know where the executable is.
std::wstring FindFactorySettingsPath();

/// The file under all users' data. Creates its folder if necessary; the file need not exist.
std::wstring FindLocalSettingsPath();

} // namespace Zuvan::Lumeq::Core::Utils
