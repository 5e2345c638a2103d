// The user's choices, stored as flags "True" and "False" in the local settings file, and that file's
// subfolder.
//
// Every operation reads the files afresh and throws nothing: a failure is logged, has no effect, and makes
// the operation return false. Only under the API lock.
#pragma once

#include "Common/Text.h"

#include <string>

namespace Zuvan::LumeqShim {

/// Whether the user opted in.
inline constexpr wchar_t UserOptInKey[] = L"UserOptIn";

/// What a stored value means: "True", and one of the two words, in any letter case. Pure.
inline bool IsTrueFlag(const std::wstring& value) { return Lumeq::Common::ToLower(value) == L"true"; }
inline bool IsFlag(const std::wstring& value) {
    return IsTrueFlag(value) || Lumeq::Common::ToLower(value) == L"false";
}

/// Returns false for anything but "True" in any letter case.
bool BasicGetUserOptIn(const std::wstring& key);

void BasicSetUserOptIn(bool value, const std::wstring& key);

/// Whether the key holds one of the two words, in any letter case.
bool BasicDidUserOpted(const std::wstring& key);

/// Removes the key whatever it holds. Returns false, without writing the file, if there is none.
bool BasicClearOptIn(const std::wstring& key);

/// Sets the subfolder from the next operation on. The caller has validated the path.
void BasicLocalSubfolderPath(const std::wstring& path);

} // namespace Zuvan::LumeqShim
