#include "LumeqShim/Basic/BasicConfiguration.h"

#include "Common/Guid.h"
#include "Common/Logger.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/Settings.h"
#include "LumeqShim/Basic/BasicMessage.h"
#include "LumeqShim/Basic/BasicOperation.h"

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::SeverityLevel;
using Lumeq::Core::Utils::Settings;

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\BasicFunctionality");
constexpr BasicOperation ReadConfigFileData{Log, L"GetConfigFileData",
                                            L"GetConfigFileData CoInitialize returns 0x%08lx"};

constexpr wchar_t ProjectIdKey[] = L"ProjectId";
constexpr wchar_t ServerUrlKey[] = L"LUMServerUri";
constexpr wchar_t AppDeployedIdKey[] = L"AppDeployedId";
constexpr wchar_t AuthTokenKey[] = L"AuthenticationToken";

/// The same for the life of the process.
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

std::wstring AppDeployedUuidOf(Settings& settings) {
    const std::wstring uuid = settings.GetLocalSetting(AppDeployedUuidKey, L"");
    return uuid.empty() ? MakeAppDeployedUuid(settings) : uuid;
}

ConfigurationSource SourceIn(Settings& settings) {
    return {[&settings](const wchar_t* key) { return settings.GetFactorySetting(key, L""); },
            [&settings] { return AppDeployedUuidOf(settings); }};
}

} // namespace

bool ReadConfiguration(const ConfigurationSource& source, BasicConfiguration& configuration) {
    const auto& factory = source.factory;
    configuration.projectId = factory(ProjectIdKey);
    if (Lumeq::Common::IsBlank(configuration.projectId)) {
        Log(SeverityLevel::WARNING, L"Project ID is empty. Ensure *LumeqConfig.xml is in path!");
        return false;
    }
    configuration.appDeployedId = factory(AppDeployedIdKey);
    configuration.serverUrl = factory(ServerUrlKey);
    configuration.appDeployedUuid = source.appDeployedUuid();
    configuration.sessionUuid = UuidFromGuid(SessionGuid());

    // Some of these are read for the second time, because the debugger channel shows each missing key as
    // often.
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

bool GetConfigFileData(BasicConfiguration& configuration) {
    Log(SeverityLevel::DEBUG, L"GetConfigFileData()");
    // Not the frame's result, because a failure after the last value leaves the configuration complete.
    bool complete = false;
    RunInCom(ReadConfigFileData, [&] {
        return Lumeq::Core::Utils::WithSettings([&](Settings& settings) {
            return complete = ReadConfiguration(SourceIn(settings), configuration);
        });
    });
    Log(SeverityLevel::DEBUG, L"GetConfigFileData returns %s:", complete ? L"true" : L"false");
    return complete;
}

} // namespace Zuvan::LumeqShim
