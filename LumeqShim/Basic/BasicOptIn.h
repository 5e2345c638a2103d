// The user's choices, as flags "True" and "False" in the local settings file, and the subfolder of that file.
//
// Every operation reads the files afresh and lets no failure out: what fails is logged, has no effect and
// gives false. All are called under the API lock.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

/// Whether the user opted in.
inline constexpr wchar_t UserOptInKey[] = L"UserOptIn";

/// False for anything but "True" in any letter case.
bool BasicGetUserOptIn(const std::wstring& key);

void BasicSetUserOptIn(bool value, const std::wstring& key);

/// Whether the key holds one of the two words, in any letter case.
bool BasicDidUserOpted(const std::wstring& key);

/// Removes the key whatever it holds. False if there is none, and the file is not written then.
bool BasicClearOptIn(const std::wstring& key);

/// The caller has validated the path. It takes effect with the next operation.
void BasicLocalSubfolderPath(const std::wstring& path);

} // namespace Zuvan::LumeqShim
