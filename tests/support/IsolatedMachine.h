// A machine of the test's own: registry, common application data, temporary folder and host folder of this
// process.
#pragma once

#include "Common/SystemHandles.h"
#include "support/HostExecutable.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// While it lives, HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE are empty keys of this process, and the folders
/// below are empty and new; the executable seems to be in one of them. Everything is removed at the end. One
/// at a time.
class IsolatedMachine {
public:
    IsolatedMachine();
    ~IsolatedMachine();
    IsolatedMachine(const IsolatedMachine&) = delete;
    IsolatedMachine& operator=(const IsolatedMachine&) = delete;

    /// What GetTempPathW gives.
    const std::filesystem::path& TemporaryFolder() const { return _temporary; }
    /// The data of all users.
    const std::filesystem::path& ProgramData() const { return _programData; }
    /// Where the log files go; made by the first line.
    std::filesystem::path LogFolder() const { return _temporary / "Zuvan" / "LUMEQ"; }
    /// Where the local settings file is without a subfolder; made by the library.
    std::filesystem::path LocalSettingsFile() const;
    /// Where the executable seems to be, under its own name.
    const std::filesystem::path& HostFolder() const { return _host; }
    /// Where the factory settings file of this test program is looked for first. There is none at first, and
    /// without one nothing is logged and the settings cannot be loaded.
    static std::filesystem::path FactorySettingsFile();
    /// Writes that file with `settings` as its elements, by default such that all is logged.
    void WriteFactorySettings(const std::string& settings = "<Log>on</Log><LogLevel>debug</LogLevel>");
    /// The log file that has the lines of every severity.
    std::filesystem::path LogFile() const { return LogFolder() / "Lumeq.Log.txt"; }

    void SetDword(HKEY root, const std::wstring& subKey, const std::wstring& name, DWORD value);
    void SetText(HKEY root, const std::wstring& subKey, const std::wstring& name, const std::wstring& value);

private:
    void SetValue(HKEY root, const std::wstring& subKey, const std::wstring& name, DWORD type,
                  const void* data, std::size_t size);

    std::wstring _registryPath;
    std::filesystem::path _folder;
    std::filesystem::path _temporary;
    std::filesystem::path _programData;
    std::filesystem::path _host;
    std::optional<HostExecutable> _executable;
};

/// The whole of a file, byte for byte; empty if there is none.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& content);

} // namespace Zuvan::Lumeq::Testing
