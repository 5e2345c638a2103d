// A settings file as the library reads it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool::Doctor {

struct Setting {
    std::wstring key;
    std::wstring value;
};

struct SettingsFile {
    std::wstring path; ///< Empty if it is not known.
    bool exists = false;
    std::string refusal; ///< The library's words if it refuses the file; empty if it accepts it.
    std::vector<Setting> settings;

    bool IsAccepted() const { return exists && refusal.empty(); }
    /// Nothing if there is no such key. Of several, the first.
    std::optional<std::wstring> Find(const std::wstring& key) const;
    /// The library's default for a missing key.
    std::wstring TextOf(const std::wstring& key) const { return Find(key).value_or(L""); }
};

/// COM must be initialised on the calling thread.
SettingsFile ReadFactoryFile(const std::wstring& path);
SettingsFile ReadLocalFile(const std::wstring& path);

} // namespace Zuvan::Lumeq::Tool::Doctor
