// Questions about paths and modules that more than one layer asks.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// Whether there is a file or a folder.
bool Exists(const std::wstring& path);

/// Whether there is a file.
bool IsFile(const std::wstring& path);

/// The path of `name` in the folder of the file `path`; `name` alone if `path` has no folder.
std::wstring InFolderOf(const std::wstring& path, const std::wstring& name);

/// Full path of a loaded module, however long. `module` is its handle, null for the host's executable. Empty
/// if the system does not know.
std::wstring ModulePath(void* module);

/// Full path of the module that contains this code.
std::wstring OwnModulePath();

} // namespace Zuvan::Lumeq::Common
