// Where the two settings files are. Includes windows.h: for source files only.
#pragma once

#include "Common/SystemHandles.h"

#include <shlobj.h>
#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Used in place of the files that are found, unless empty or blank. Nothing in the library sets them.
extern std::wstring factorySettingsPathOverride;
extern std::wstring localSettingsPathOverride;

/// Subfolder of the data of all users' that the host chose; empty until then. Written under the API lock.
extern std::wstring localSubfolder;

/// What finding the folder for the data of all users asks of the system.
class AllUsersFolderSystem {
public:
    using KnownFolderFunction = HRESULT WINAPI(const GUID& folder, DWORD flags, HANDLE token, wchar_t** path);

    virtual ~AllUsersFolderSystem() = default;

    virtual bool IsVistaOrLater() const;
    /// None on failure.
    virtual Common::UniqueModule LoadShell() const;
    /// Null on failure.
    virtual KnownFolderFunction* FindKnownFolderFunction(HMODULE shell) const;
    /// The older road. False on failure.
    virtual bool GetSpecialFolder(wchar_t (&path)[MAX_PATH + 1]) const;
};

/// Throws VestoException.
std::wstring FindAllUsersFolder(const AllUsersFolderSystem& system = AllUsersFolderSystem());

/// The joined path, shorter than 261 characters, or ArgumentException.
std::wstring CombinePath(const std::wstring& left, const std::wstring& right);

/// Beside the host's executable. Throws FileNotFoundException if there is none, or if the system does not
/// tell where the executable is.
std::wstring FindFactorySettingsPath();

/// Under the data of all users. Makes the file's folder if need be; the file need not exist.
std::wstring FindLocalSettingsPath();

} // namespace Zuvan::Lumeq::Core::Utils
