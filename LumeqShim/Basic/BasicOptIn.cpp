#include "LumeqShim/Basic/BasicOptIn.h"

#include "Common/Text.h"
#include "LumeqLib/Core/Utils/Settings.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqShim/Basic/OptInFrame.h"

#include <memory>

namespace Zuvan::LumeqShim {

using Lumeq::Common::SeverityLevel;
using Lumeq::Core::Utils::DropSharedInstance;
using Lumeq::Core::Utils::Settings;

namespace {

// The odd capitals of two of the COM lines are what readers of the log look for.
constexpr OptInOperation GetUserOptIn{L"BasicGetUserOptIn", L"BasicGetUserOptIn(%s)",
                                      L"BasicGetUserOptIn CoInitialize returns 0x%08lx"};
constexpr OptInOperation SetUserOptIn{L"BasicSetUserOptIn", L"BasicSetUserOptIn(%s,%s)",
                                      L"BasicSetuserOptin CoInitialize returns 0x%08lx"};
constexpr OptInOperation DidUserOpted{L"BasicDidUserOpted", L"BasicDidUserOpted(%s)",
                                      L"BasicDiduserOptin CoInitialize returns 0x%08lx"};
constexpr OptInOperation ClearOptIn{L"BasicClearOptIn", L"BasicClearOptIn(%s)",
                                    L"BasicClearOptIn CoInitialize returns 0x%08lx"};
constexpr OptInOperation LocalSubfolderPath{L"BasicLocalSubfolderPath", L"BasicLocalSubfolderPath(\"%s\")",
                                            nullptr};

bool IsTrue(const std::wstring& value) { return Lumeq::Common::ToLower(value) == L"true"; }
bool IsFalse(const std::wstring& value) { return Lumeq::Common::ToLower(value) == L"false"; }

bool GetUserOptInWork(const std::wstring& key) {
    const std::shared_ptr<Settings> settings = Settings::GetInstance();
    std::wstring value = settings->GetLocalSetting(key, L"");
    if (Lumeq::Common::IsBlank(value))
        value = L"False";
    DropSharedInstance();
    const bool result = IsTrue(value);
    // The value in the key's place is what this line has always shown.
    LogOptIn(SeverityLevel::DEBUG, L"Basic Get User Opt-In returns %d for key '%s'", result, value.c_str());
    return result;
}

bool SetUserOptInWork(bool value, const std::wstring& key) {
    const std::shared_ptr<Settings> settings = Settings::GetInstance();
    settings->SetLocalSetting(key, value ? L"True" : L"False");
    settings->SaveLocalSettings();
    DropSharedInstance();
    LogOptIn(SeverityLevel::DEBUG, L"Basic Set User Opt-In");
    return true;
}

bool DidUserOptedWork(const std::wstring& key) {
    const std::shared_ptr<Settings> settings = Settings::GetInstance();
    const std::wstring value = settings->GetLocalSetting(key, L"");
    DropSharedInstance();
    const bool result = IsTrue(value) || IsFalse(value);
    LogOptIn(SeverityLevel::DEBUG, L"Basic Did User Opted returns %d from %s", result, value.c_str());
    return result;
}

bool ClearOptInWork(const std::wstring& key) {
    const std::shared_ptr<Settings> settings = Settings::GetInstance();
    const bool removed = settings->RemoveLocalSetting(key);
    if (removed)
        settings->SaveLocalSettings();
    DropSharedInstance();
    LogOptIn(SeverityLevel::DEBUG, L"BasicClear Opt In returns %d", removed);
    return removed;
}

} // namespace

bool BasicGetUserOptIn(const std::wstring& key) {
    return RunOptIn(
        GetUserOptIn, [&key] { return GetUserOptInWork(key); }, key.c_str());
}

void BasicSetUserOptIn(bool value, const std::wstring& key) {
    RunOptIn(
        SetUserOptIn, [&] { return SetUserOptInWork(value, key); }, value ? L"true" : L"false", key.c_str());
}

bool BasicDidUserOpted(const std::wstring& key) {
    return RunOptIn(
        DidUserOpted, [&key] { return DidUserOptedWork(key); }, key.c_str());
}

bool BasicClearOptIn(const std::wstring& key) {
    return RunOptIn(
        ClearOptIn, [&key] { return ClearOptInWork(key); }, key.c_str());
}

void BasicLocalSubfolderPath(const std::wstring& path) {
    RunOptInWithoutCom(
        LocalSubfolderPath,
        [&path] {
            Lumeq::Core::Utils::localSubfolder = path;
            return true;
        },
        path.c_str());
}

} // namespace Zuvan::LumeqShim
