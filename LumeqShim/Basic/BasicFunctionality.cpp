#include "LumeqShim/Basic/BasicFunctionality.h"

#include "Common/HostFile.h"
#include "Common/Logger.h"
#include "Common/Text.h"
#include "LumeqLib/Extra/Collection/MachineIdentifier.h"
#include "LumeqLib/Extra/Collection/SystemInformation.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/Post/PostMessage.h"

#include <utility>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::SeverityLevel;

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\BasicFunctionality");

// Both are used only under the API lock, and a shutdown resets neither.
constinit bool BasicMessageSent = false;
std::wstring BasicAppName; // The last basic start's. Only a debugger reads it.

void SendMessageAsConfigured(MessageDictionary message, const std::wstring& userAgent,
                             std::wstring& deployedId) {
    BasicConfiguration configuration;
    if (!GetConfigFileData(configuration))
        return;
    if (deployedId.empty())
        deployedId = configuration.appDeployedId;
    std::wstring text = MessageText(std::move(message), configuration, deployedId);
    PostMessageAndForget(configuration.serverUrl, userAgent, configuration.projectId, BasicQueueName, text,
                         Lumeq::Common::Rot13Wide(configuration.authToken));
}

} // namespace

std::wstring AppId(const std::wstring& appName, const std::wstring& host) {
    return appName + L"/" + Lumeq::Common::GetHostFileVersion(host);
}

MessageDictionary CollectMessage(const std::wstring& appName, const std::wstring& host) {
    MessageDictionary message = Lumeq::Extra::Collection::GetSysInfoBase();
    message[L"app_id"] = AppId(appName, host);
    message[L"sys_uuid"] = Lumeq::Extra::Collection::GetMachineUuid();
    return message;
}

std::wstring MessageText(MessageDictionary message, const BasicConfiguration& configuration,
                         const std::wstring& deployedId) {
    message[L"app_deployed_id"] = deployedId.empty() ? configuration.appDeployedId : deployedId;
    message[L"app_deployed_uuid"] = configuration.appDeployedUuid;
    message[L"app_session_uuid"] = configuration.sessionUuid;
    return SerializeFlatJson(std::move(message));
}

void BasicStart(const std::wstring& appName) {
    BasicAppName = appName;
    const bool userHasOptedIn = BasicGetUserOptIn(UserOptInKey);
    if (!userHasOptedIn || BasicMessageSent)
        return;
    std::wstring deployedId;
    BasicImplementation(appName, deployedId);
    BasicMessageSent = true;
}

void BasicImplementation(const std::wstring& appName, std::wstring& deployedId) {
    const Lumeq::Common::ScopedDurationLog duration(L"BasicImplementation(\"%s\", \"%s\")", appName.c_str(),
                                                    deployedId.c_str());
    Log(SeverityLevel::DEBUG, L"Executing Basic Functionality %s", appName.c_str());
    Log(SeverityLevel::DEBUG, L"------------------------------");

    const std::wstring host = Lumeq::Common::GetHostFilePath();
    const std::wstring userAgent = AppId(appName, host);
    SendMessageAsConfigured(CollectMessage(appName, host), userAgent, deployedId);

    Log(SeverityLevel::DEBUG, L"Executing Basic Functionality");
    Log(SeverityLevel::DEBUG, L"------------------------------");
}

} // namespace Zuvan::LumeqShim
