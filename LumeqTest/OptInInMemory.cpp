// The user's choices, in memory instead of the local settings file. Each subfolder has its own, as its file
// would.
#include "Common/Text.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqTest/Recording.h"

#include <optional>

namespace Zuvan::LumeqShim {

using Lumeq::Double::LockedRecording;

namespace {

std::optional<bool> FlagOf(const std::wstring& key) {
    const LockedRecording recording;
    const auto& flags = recording->flags[recording->subfolder];
    const auto found = flags.find(key);
    return found == flags.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

bool BasicGetUserOptIn(const std::wstring& key) { return FlagOf(key).value_or(false); }

void BasicSetUserOptIn(bool value, const std::wstring& key) {
    const LockedRecording recording;
    recording->flags[recording->subfolder][key] = value;
}

bool BasicDidUserOpted(const std::wstring& key) { return FlagOf(key).has_value(); }

bool BasicClearOptIn(const std::wstring& key) {
    const LockedRecording recording;
    return recording->flags[recording->subfolder].erase(key) > 0;
}

/// Paths of one folder are one.
void BasicLocalSubfolderPath(const std::wstring& path) {
    std::wstring folder = Lumeq::Common::IsBlank(path) ? L"" : Lumeq::Common::ToLower(path);
    if (folder.ends_with(L'\\'))
        folder.pop_back();
    const LockedRecording recording;
    recording->subfolder = folder;
}

} // namespace Zuvan::LumeqShim
