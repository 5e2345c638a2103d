#include "LumeqShim/Basic/BasicConfiguration.h"

#include "Common/ComError.h"
#include "Common/ComScope.h"
#include "Common/Format.h"
#include "Common/Guid.h"
#include "Common/Logger.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/Settings.h"
#include "LumeqShim/Basic/BasicMessage.h"

#include <windows.h>

#include <comdef.h>
#include <exception>
#include <memory>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::SeverityLevel;
using Lumeq::Core::Utils::Settings;

constexpr wchar_t ProjectIdKey[] = L"ProjectId";
constexpr wchar_t ServerUrlKey[] = L"LUMServerUri";
constexpr wchar_t AppDeployedIdKey[] = L"AppDeployedId";
constexpr wchar_t AuthTokenKey[] = L"AuthenticationToken";
constexpr wchar_t AppDeployedUuidKey[] = L"AppDeployedUuid";

template <class... Arguments>
void Log(SeverityLevel level, const wchar_t* format, Arguments... arguments) {
    Lumeq::Common::LogMessage(level, L"LumeqShim\\BasicFunctionality", __LINE__, nullptr, format,
                              arguments...);
}

/// One for the life of the process.
const std::wstring& SessionGuid() {
    static const std::wstring guid = Lumeq::Common::NewGuidString();
    return guid;
}

std::wstring MakeAppDeployedUuid(Settings& settings) {
    const std::wstring uuid = UuidFromGuid(Lumeq::Common::NewGuidString());
    settings.SetLocalSetting(AppDeployedUuidKey, uuid);
    settings.SaveLocalSettings();
    Log(SeverityLevel::DEBUG, L"Genereated KeyAppDeployedUuid %s", uuid.c_str());
    return uuid;
}

bool ReadConfiguration(Settings& settings, BasicConfiguration& configuration) {
    const auto factory = [&settings](const wchar_t* key) { return settings.GetFactorySetting(key, L""); };
    configuration.projectId = factory(ProjectIdKey);
    if (Lumeq::Common::IsBlank(configuration.projectId)) {
        Log(SeverityLevel::WARNING, L"Project ID is empty. Ensure *LumeqConfig.xml is in path!");
        return false;
    }
    configuration.appDeployedId = factory(AppDeployedIdKey);
    configuration.serverUrl = factory(ServerUrlKey);
    configuration.appDeployedUuid = settings.GetLocalSetting(AppDeployedUuidKey, L"");
    if (configuration.appDeployedUuid.empty())
        configuration.appDeployedUuid = MakeAppDeployedUuid(settings);
    configuration.sessionUuid = UuidFromGuid(SessionGuid());

    // Some of these for the second time: the debugger channel shows each missing key as often as it is read.
    configuration.appDeployedId = factory(AppDeployedIdKey);
    configuration.authToken = factory(AuthTokenKey);
    configuration.projectId = factory(ProjectIdKey);
    configuration.serverUrl = factory(ServerUrlKey);
    Log(SeverityLevel::DEBUG,
        L"GetConfigFileData: appDeployedId=%s, appDeployedUuid=%s, serverUrl=%s, projectId=%s, authToken=%s",
        configuration.appDeployedId.c_str(), configuration.appDeployedUuid.c_str(),
        configuration.serverUrl.c_str(), configuration.projectId.c_str(), configuration.authToken.c_str());
    return true;
}

/// `complete` tells how far it came also when something is thrown; the shared instance stays then.
void LoadConfiguration(BasicConfiguration& configuration, bool& complete) {
    const std::shared_ptr<Settings> settings = Settings::GetInstance();
    complete = ReadConfiguration(*settings, configuration);
    Lumeq::Core::Utils::DropSharedInstance();
}

bool LoadConfigurationGuarded(BasicConfiguration& configuration) {
    bool complete = false;
    try {
        LoadConfiguration(configuration, complete);
    } catch (const _com_error& failure) {
        Log(SeverityLevel::WARNING, L"GetConfigFileData failed with _com_error exception 0x%08lx, %s",
            failure.Error(), Lumeq::Common::ComErrorText(failure.Error()).c_str());
    } catch (const std::exception& failure) {
        Log(SeverityLevel::WARNING, L"GetConfigFileData exception with %S",
            Lumeq::Common::NarrowArgument(failure.what()).Text());
    } catch (...) {
        Log(SeverityLevel::WARNING, L"GetConfigFileData failed with unknown exception");
    }
    return complete;
}

bool LoadConfigurationInCom(BasicConfiguration& configuration) {
    const Lumeq::Common::ComScope com(L"Zuvan::LumeqShim::GetConfigFileData");
    Log(SeverityLevel::DEBUG, L"GetConfigFileData CoInitialize returns 0x%08lx", com.Result());
    if (com.Result() >= 0)
        return LoadConfigurationGuarded(configuration);
    Log(SeverityLevel::WARNING, L"ComInitialize failed 0x%08lx", com.Result());
    return false;
}

} // namespace

bool GetConfigFileData(BasicConfiguration& configuration) {
    Log(SeverityLevel::DEBUG, L"GetConfigFileData()");
    const bool complete = LoadConfigurationInCom(configuration);
    Log(SeverityLevel::DEBUG, L"GetConfigFileData returns %s:", complete ? L"true" : L"false");
    return complete;
}

} // namespace Zuvan::LumeqShim
