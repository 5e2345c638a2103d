#include "support/IsolatedMachine.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

void Check(LSTATUS status) {
    if (status != ERROR_SUCCESS)
        throw std::runtime_error("registry: error " + std::to_string(status));
}

Common::UniqueRegistryKey MakeKey(HKEY root, const std::wstring& path) {
    Common::UniqueRegistryKey key;
    Check(RegCreateKeyExW(root, path.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                          key.Receive(), nullptr));
    return key;
}

} // namespace

IsolatedMachine::IsolatedMachine() {
    const std::wstring id = std::to_wstring(GetCurrentProcessId());
    _registryPath = L"Software\\LumeqTest\\" + id;
    const std::filesystem::path executable = ExecutablePath();
    _folder = executable.parent_path() / "isolated" / id;
    _temporary = _folder / "Temp";
    _programData = _folder / "ProgramData";
    _host = _folder / "Host";
    std::filesystem::remove_all(_folder);
    for (const std::filesystem::path& folder : {_temporary, _programData, _host})
        std::filesystem::create_directories(folder);
    _executable.emplace(_host / executable.filename());

    RegDeleteTreeW(HKEY_CURRENT_USER, _registryPath.c_str());
    const Common::UniqueRegistryKey user = MakeKey(HKEY_CURRENT_USER, _registryPath + L"\\User");
    const Common::UniqueRegistryKey machine = MakeKey(HKEY_CURRENT_USER, _registryPath + L"\\Machine");
    Check(RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine.Get()));
    Check(RegOverridePredefKey(HKEY_CURRENT_USER, user.Get()));

    for (const wchar_t* folders : {L"User Shell Folders", L"Shell Folders"})
        SetText(HKEY_LOCAL_MACHINE,
                std::wstring(L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\") + folders,
                L"Common AppData", _programData.wstring());
    SetEnvironmentVariableW(L"TMP", _temporary.c_str());
}

IsolatedMachine::~IsolatedMachine() {
    _executable.reset();
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, _registryPath.c_str());
    std::error_code ignored;
    std::filesystem::remove_all(_folder, ignored);
}

std::filesystem::path IsolatedMachine::LocalSettingsFile() const {
    return _programData / "Zuvan" / "LUMEQ" / "LumeqLocalSettings.xml";
}

std::filesystem::path IsolatedMachine::FactorySettingsFile() {
    return ExecutablePath().replace_extension(L".LumeqConfig.xml");
}

void IsolatedMachine::WriteFactorySettings(const std::string& settings) {
    WriteFile(FactorySettingsFile(), "<LumeqConfig version=\"4.0\">" + settings + "</LumeqConfig>");
}

void IsolatedMachine::SetDword(HKEY root, const std::wstring& subKey, const std::wstring& name, DWORD value) {
    SetValue(root, subKey, name, REG_DWORD, &value, sizeof value);
}

void IsolatedMachine::SetText(HKEY root, const std::wstring& subKey, const std::wstring& name,
                              const std::wstring& value) {
    SetValue(root, subKey, name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

void IsolatedMachine::SetValue(HKEY root, const std::wstring& subKey, const std::wstring& name, DWORD type,
                               const void* data, std::size_t size) {
    const Common::UniqueRegistryKey key = MakeKey(root, subKey);
    Check(RegSetValueExW(key.Get(), name.c_str(), 0, type, static_cast<const BYTE*>(data),
                         static_cast<DWORD>(size)));
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::filesystem::path& path, const std::string& content) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

} // namespace Zuvan::Lumeq::Testing
