// The paths under all users' data. Apart from SettingsPaths.cpp, because LumeqC.dll takes these and must have
// no static strings.
#include "Common/ComSession.h"
#include "Common/Exceptions.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"

#include <cwchar>
#include <iterator>
#include <memory>
#include <shlwapi.h>

namespace Zuvan::Lumeq::Core::Utils {

using Common::VestoException;

namespace {

/// FOLDERID_ProgramData. That one is in the toolchain's libuuid, a single object: using one GUID of it costs
/// the 40 KB of all.
constexpr KNOWNFOLDERID ProgramDataFolder = {
    0x62ab5d82, 0xfdc1, 0x4dc3, {0xa9, 0xdd, 0x07, 0x0d, 0x1d, 0x49, 0x5d, 0x97}};
constexpr wchar_t LocalName[] = L"LumeqLocalSettings.xml";

std::wstring FindKnownFolder(const AllUsersFolderSystem& system) {
    const Common::UniqueModule shell = system.LoadShell();
    if (!shell)
        throw VestoException(L"Unable to load shell32.dll");
    const auto getKnownFolderPath = system.FindKnownFolderFunction(shell.Get());
    if (!getKnownFolderPath)
        throw VestoException(L"Unable to get address of SHGetKnownFolderPath function");
    wchar_t* path = nullptr;
    const HRESULT result = getKnownFolderPath(ProgramDataFolder, 0, nullptr, &path);
    const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owner(path, &CoTaskMemFree);
    if (FAILED(result))
        throw VestoException(L"Call to SHGetKnownFolderPath failed");
    return path;
}

std::wstring FindSpecialFolder(const AllUsersFolderSystem& system) {
    wchar_t path[MAX_PATH + 1] = {};
    if (!system.GetSpecialFolder(path))
        throw VestoException(
            L"Unable to retrieve the directory that contains application data for all users.");
    return path;
}

/// Found once in an apartment, because the shell takes its time.
std::wstring AllUsersFolder() {
    Common::ApartmentCache* const cache = Common::ComSession::Cache();
    if (!cache)
        return FindAllUsersFolder();
    if (cache->allUsersFolder.empty())
        cache->allUsersFolder = FindAllUsersFolder();
    return cache->allUsersFolder;
}

} // namespace

bool AllUsersFolderSystem::IsVistaOrLater() const {
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof version;
    version.dwMajorVersion = 6;
    DWORDLONG conditions = 0;
    for (const DWORD field : {VER_MAJORVERSION, VER_MINORVERSION, VER_SERVICEPACKMAJOR})
        conditions = VerSetConditionMask(conditions, field, VER_GREATER_EQUAL);
    return VerifyVersionInfoW(&version, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR,
                              conditions) != FALSE;
}

Common::UniqueModule AllUsersFolderSystem::LoadShell() const {
    return Common::UniqueModule(LoadLibraryW(L"shell32"));
}

AllUsersFolderSystem::KnownFolderFunction*
AllUsersFolderSystem::FindKnownFolderFunction(HMODULE shell) const {
    return Common::FindFunction<KnownFolderFunction>(shell, "SHGetKnownFolderPath");
}

bool AllUsersFolderSystem::GetSpecialFolder(wchar_t (&path)[MAX_PATH + 1]) const {
    return SHGetSpecialFolderPathW(nullptr, path, CSIDL_COMMON_APPDATA, FALSE) != FALSE;
}

std::wstring FindAllUsersFolder(const AllUsersFolderSystem& system) {
    return system.IsVistaOrLater() ? FindKnownFolder(system) : FindSpecialFolder(system);
}

std::wstring CombinePath(const std::wstring& left, const std::wstring& right) {
    // Twice the longest path, because normalising may shorten the result.
    wchar_t combined[2 * MAX_PATH + 1] = {};
    if (left.size() + 1 + right.size() > std::size(combined) ||
        !PathCombineW(combined, left.c_str(), right.c_str()) || std::wcslen(combined) > MAX_PATH)
        throw Common::ArgumentException(
            L"pathIn", L"One or both arguments to CombinePath exceed the maximum path length.");
    return combined;
}

std::wstring SharedLocalPathOf(const std::wstring& subfolder) {
    std::wstring folder = CombinePath(AllUsersFolder(), L"Zuvan");
    if (!Common::IsBlank(subfolder))
        folder = CombinePath(folder, subfolder);
    return CombinePath(CombinePath(folder, L"LUMEQ"), LocalName);
}

} // namespace Zuvan::Lumeq::Core::Utils
