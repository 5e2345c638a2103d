// What the library knows of the host's executable and of files' versions.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// Full path of the host's executable, at most 260 characters; empty if the system does not tell.
std::wstring GetHostFilePath();

/// Last component of GetHostFilePath.
std::wstring GetExecutableName();

/// Four-part file version of the host's executable; "0.0.0.0" where it has none.
std::wstring GetHostFileVersion();

/// Four-part file version of any file. `fallback` is given where the file has no version resource at all;
/// one without a proper fixed block gives "0.0.0.0".
std::wstring GetFileVersion(const std::wstring& path, const std::wstring& fallback);

} // namespace Zuvan::Lumeq::Common
