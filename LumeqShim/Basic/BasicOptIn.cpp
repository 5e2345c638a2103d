#include "LumeqShim/Basic/BasicOptIn.h"

#include "Common/Text.h"
#include "LumeqLib/Core/Utils/Settings.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqShim/Basic/BasicOperation.h"

namespace Zuvan::LumeqShim {

using Lumeq::Common::SeverityLevel;
using Lumeq::Core::Utils::Settings;
using Lumeq::Core::Utils::WithSettings;

namespace {

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\BasicOptIn");

// Readers of the log look for the odd capitals of two of the COM lines.
constexpr BasicOperation GetUserOptIn{
    Log, L"BasicGetUserOptIn", L"BasicGetUserOptIn CoInitialize returns 0x%08lx", L"BasicGetUserOptIn(%s)"};
constexpr BasicOperation SetUserOptIn{Log, L"BasicSetUserOptIn",
                                      L"BasicSetuserOptin CoInitialize returns 0x%08lx",
                                      L"BasicSetUserOptIn(%s,%s)"};
constexpr BasicOperation DidUserOpted{
    Log, L"BasicDidUserOpted", L"BasicDiduserOptin CoInitialize returns 0x%08lx", L"BasicDidUserOpted(%s)"};
constexpr BasicOperation ClearOptIn{Log, L"BasicClearOptIn", L"BasicClearOptIn CoInitialize returns 0x%08lx",
                                    L"BasicClearOptIn(%s)"};
constexpr BasicOperation LocalSubfolderPath{Log, L"BasicLocalSubfolderPath", nullptr,
                                            L"BasicLocalSubfolderPath(\"%s\")"};

/// Runs `work` on the settings in the frame of the operation. `finish` makes the operation's result of what
/// the work returns, and logs it.
template <class Work, class Finish, class... LabelArguments>
bool RunOnSettings(const BasicOperation& operation, Work work, Finish finish,
                   LabelArguments... labelArguments) {
    const auto inCom = [&] { return RunInCom(operation, [&] { return WithSettings(work, finish); }); };
    return RunTimed(operation, inCom, labelArguments...);
}

} // namespace

bool BasicGetUserOptIn(const std::wstring& key) {
    const auto read = [&key](const Settings& settings) { return settings.GetLocalSetting(key, L""); };
    const auto finish = [](std::wstring value) {
        if (Lumeq::Common::IsBlank(value))
            value = L"False";
        const bool result = IsTrueFlag(value);
        // Shows the value, not the key: readers of the log depend on it.
        Log(SeverityLevel::DEBUG, L"Basic Get User Opt-In returns %d for key '%s'", result, value.c_str());
        return result;
    };
    return RunOnSettings(GetUserOptIn, read, finish, key.c_str());
}

void BasicSetUserOptIn(bool value, const std::wstring& key) {
    const auto write = [&](Settings& settings) {
        settings.SetLocalSetting(key, value ? L"True" : L"False");
        return settings.SaveLocalSettings();
    };
    const auto finish = [](bool saved) {
        Log(SeverityLevel::DEBUG, L"Basic Set User Opt-In");
        return saved;
    };
    RunOnSettings(SetUserOptIn, write, finish, value ? L"true" : L"false", key.c_str());
}

bool BasicDidUserOpted(const std::wstring& key) {
    const auto read = [&key](const Settings& settings) { return settings.GetLocalSetting(key, L""); };
    const auto finish = [](const std::wstring& value) {
        const bool result = IsFlag(value);
        Log(SeverityLevel::DEBUG, L"Basic Did User Opted returns %d from %s", result, value.c_str());
        return result;
    };
    return RunOnSettings(DidUserOpted, read, finish, key.c_str());
}

bool BasicClearOptIn(const std::wstring& key) {
    const auto remove = [&key](Settings& settings) {
        return settings.RemoveLocalSetting(key) && settings.SaveLocalSettings();
    };
    const auto finish = [](bool removed) {
        Log(SeverityLevel::DEBUG, L"BasicClear Opt In returns %d", removed);
        return removed;
    };
    return RunOnSettings(ClearOptIn, remove, finish, key.c_str());
}

void BasicLocalSubfolderPath(const std::wstring& path) {
    const auto store = [&path] {
        Lumeq::Core::Utils::localSubfolder = path;
        return true;
    };
    RunTimed(LocalSubfolderPath, store, path.c_str());
}

} // namespace Zuvan::LumeqShim
