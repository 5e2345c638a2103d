// The local settings file as the companion library sees it: the same file that Lumeq.dll reads and writes.
#pragma once

#include <string>

namespace Companion {

/// All throw _com_error or std::exception if the file cannot be read or written, and leave it as it was. Each
/// reads the file afresh. No lock: Lumeq.dll makes one call at a time.

/// Where the file is looked for from now on; empty for the folder itself.
void UseSubfolder(const std::wstring& path);

/// Empty for a setting or a file that is not there.
std::wstring ReadSetting(const std::wstring& key);

void WriteSetting(const std::wstring& key, const std::wstring& value);

} // namespace Companion
