// The local settings file as the companion library sees it: the same file that Lumeq.dll reads and writes.
#pragma once

#include <string>

namespace Companion {

/// Each reads the file afresh. Throws _com_error or std::exception if the file cannot be read or written, and
/// then leaves it unchanged. No lock, because Lumeq.dll makes one call at a time.

/// The file's folder from now on; empty for the default folder.
void UseSubfolder(const std::wstring& path);

/// Empty if the setting or the file does not exist.
std::wstring ReadSetting(const std::wstring& key);

void WriteSetting(const std::wstring& key, const std::wstring& value);

} // namespace Companion
