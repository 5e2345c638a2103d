// The host's executable, and the versions of files.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// Full path of the host's executable, cut after 260 characters; empty if the system does not know.
std::wstring GetHostFilePath();

/// Last component of GetHostFilePath.
std::wstring GetExecutableName();

/// Four-part file version of a host's executable; "0.0.0.0" if it has none or the path is empty.
std::wstring GetHostFileVersion(const std::wstring& path = GetHostFilePath());

/// Four-part file version of any file. Returns `fallback` if the file has no version resource, and "0.0.0.0"
/// if the resource has no valid fixed block.
std::wstring GetFileVersion(const std::wstring& path, const std::wstring& fallback);

} // namespace Zuvan::Lumeq::Common
