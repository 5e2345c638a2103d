// A machine for one test: registry, common application data, temporary folder and host folder belong to this
// process.
#pragma once

#include "Common/SystemHandles.h"
#include "support/HostExecutable.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// While one lives, HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE are empty keys of this process, the folders
/// below are new and empty, and the executable appears to be in one of them. The destructor removes
/// everything. One at a time.
class IsolatedMachine {
public:
    IsolatedMachine();
    ~IsolatedMachine();
    IsolatedMachine(const IsolatedMachine&) = delete;
    IsolatedMachine& operator=(const IsolatedMachine&) = delete;

    /// The result of GetTempPathW.
    const std::filesystem::path& TemporaryFolder() const { return _temporary; }
    /// The common application data of all users.
    const std::filesystem::path& ProgramData() const { return _programData; }
    /// The folder of the log files; created by the first line.
    std::filesystem::path LogFolder() const { return _temporary / "Zuvan" / "LUMEQ"; }
    /// The folder of the local settings file without a subfolder; created by the library.
    std::filesystem::path LocalSettingsFile() const;
    /// The apparent folder of the executable, which keeps its own name.
    const std::filesystem::path& HostFolder() const { return _host; }
    /// Path of this test program's factory settings file, where it is searched first. At first there is none;
    /// then nothing is logged and the settings cannot be loaded.
    static std::filesystem::path FactorySettingsFile();
    /// Writes that file with `settings` as its elements; the default logs everything.
    void WriteFactorySettings(const std::string& settings = "<Log>on</Log><LogLevel>debug</LogLevel>");
    /// The log file with the lines of all severities.
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

/// The whole contents of a file, byte for byte; empty if there is none.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& content);

} // namespace Zuvan::Lumeq::Testing
