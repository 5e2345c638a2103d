// lumeq-bench-start: the steps of the first start on the basic road, in order, each for the first time in its
// process. A program of its own, because it links most of the library; lumeq-bench must load the library as a
// host does.
#include "LumeqLib/Extra/Collection/MachineIdentifier.h"
#include "LumeqLib/Extra/Collection/SystemInformation.h"
#include "LumeqShim/Basic/BasicConfiguration.h"
#include "LumeqShim/Basic/BasicMessage.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/PauseState.h"
#include "LumeqShim/Post/PostMessage.h"
#include "bench/Measure.h"

#include <utility>

using namespace Zuvan;
using LumeqBench::MicrosecondsOnce;

namespace {

const std::wstring AppId = L"Scan Station/1.0.0.0";

}

int main() {
    bool goesOn = false;
    double settings = MicrosecondsOnce([&] {
        goesOn = !LumeqShim::BasicDidUserOpted(LumeqShim::OptinBeforePauseKey) &&
                 LumeqShim::BasicGetUserOptIn(LumeqShim::UserOptInKey);
    });
    LumeqShim::MessageDictionary message;
    const double systemInformation = MicrosecondsOnce([&] {
        message = Lumeq::Extra::Collection::GetSysInfoBase();
        message[L"sys_uuid"] = Lumeq::Extra::Collection::GetMachineUuid();
    });
    LumeqShim::BasicConfiguration configuration;
    settings += MicrosecondsOnce([&] { goesOn = goesOn && LumeqShim::GetConfigFileData(configuration); });
    if (!goesOn)
        return 1;
    message[L"app_id"] = AppId;
    message[L"app_deployed_id"] = configuration.appDeployedId;
    message[L"app_deployed_uuid"] = configuration.appDeployedUuid;
    message[L"app_session_uuid"] = configuration.sessionUuid;
    const double post = MicrosecondsOnce([&] {
        std::wstring text = LumeqShim::SerializeFlatJson(std::move(message));
        LumeqShim::PostMessageAndForget(configuration.serverUrl, AppId, configuration.projectId,
                                        L"sys_info_base", text, configuration.authToken);
    });
    LumeqBench::Report("StartupEx", "settings", settings);
    LumeqBench::Report("StartupEx", "system information", systemInformation);
    LumeqBench::Report("StartupEx", "post", post);
    return 0;
}
