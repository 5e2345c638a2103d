#include "LumeqLib/Core/Utils/SettingsPaths.h"

#include "Common/Debugger.h"
#include "Common/Exceptions.h"
#include "Common/HostFile.h"
#include "Common/Paths.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/SharedFolder.h"

#include <cwchar>
#include <shlwapi.h>

namespace Zuvan::Lumeq::Core::Utils {

std::wstring factorySettingsPathOverride;
std::wstring localSettingsPathOverride;
std::wstring localSubfolder;

namespace {

constexpr wchar_t FactorySuffix[] = L".LumeqConfig.xml";
constexpr wchar_t FactoryName[] = L"LumeqConfig.xml";
std::wstring WithoutExtension(std::wstring path) {
    PathRemoveExtensionW(path.data());
    path.resize(std::wcslen(path.c_str()));
    return path;
}

std::wstring FolderOf(std::wstring path) {
    PathRemoveFileSpecW(path.data());
    path.resize(std::wcslen(path.c_str()));
    return path;
}

std::wstring FactoryPath() {
    if (!Common::IsBlank(factorySettingsPathOverride))
        return factorySettingsPathOverride;
    const std::wstring host = Common::GetHostFilePath();
    // A bare file name would lead into the current folder, which anybody may own.
    return host.empty() ? std::wstring() : FactoryPathOf(host);
}

std::wstring MakeSharedLocalPath() {
    const std::wstring path = SharedLocalPath();
    EnsureSharedFolder(path);
    return path;
}

} // namespace

std::wstring OwnFactoryPathOf(const std::wstring& host) { return WithoutExtension(host) + FactorySuffix; }

std::wstring SharedFactoryPathOf(const std::wstring& host) {
    return CombinePath(FolderOf(host), FactoryName);
}

std::wstring FactoryPathOf(const std::wstring& host) {
    const std::wstring path = OwnFactoryPathOf(host);
    return Common::Exists(path) ? path : SharedFactoryPathOf(host);
}

std::wstring SharedLocalPath() { return SharedLocalPathOf(localSubfolder); }

std::wstring FindFactorySettingsPath() {
    const std::wstring path = FactoryPath();
    Common::TraceToDebugger(L"TRACE: FactorySettingsPath is '" + path + L"'\n");
    if (!Common::Exists(path))
        throw Common::FileNotFoundException(path, L"No factory settings file found");
    return path;
}

std::wstring FindLocalSettingsPath() {
    const std::wstring path =
        Common::IsBlank(localSettingsPathOverride) ? MakeSharedLocalPath() : localSettingsPathOverride;
    Common::TraceToDebugger(L"TRACE: LocalSettingsPath is '" + path + L"'\n");
    return path;
}

} // namespace Zuvan::Lumeq::Core::Utils
