// A machine with an opted-in or opted-out user and settings for the basic road's message.
#pragma once

#include "LumeqShim/Basic/BasicOptIn.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace Zuvan::LumeqShim {

// Nothing listens at this address.
inline constexpr char Deployment[] =
    "<Log>on</Log><LogLevel>debug</LogLevel><LUMServerUri>https://127.0.0.99</LUMServerUri>"
    "<AppDeployedId>deployed</AppDeployedId>"
    "<AuthenticationToken>gbxra9</AuthenticationToken>";
inline constexpr char Project[] = "<ProjectId>P1</ProjectId>";

class BasicRoadTest : public testing::Test {
protected:
    BasicRoadTest() { Factory(Project); }

    void Factory(const std::string& settings) { _machine.WriteFactorySettings(Deployment + settings); }
    void OptIn(bool userHasOptedIn) { BasicSetUserOptIn(userHasOptedIn, UserOptInKey); }

    std::vector<std::string> Logged(const std::string& severity) const {
        return Lumeq::Testing::LogMessages(_machine.LogFile(), severity);
    }
    /// The messages as the post received them.
    std::vector<std::string> Messages() const {
        constexpr std::string_view Head = "->/projects/P1/queues/sys_info_base/messages ";
        std::vector<std::string> messages;
        for (const std::string& line : Logged("DATA"))
            if (line.starts_with(Head))
                messages.push_back(line.substr(Head.size()));
        return messages;
    }
    std::string OnlyMessage() const {
        const std::vector<std::string> messages = Messages();
        return messages.size() == 1 ? messages.front() : std::to_string(messages.size()) + " messages";
    }

    Lumeq::Testing::IsolatedMachine _machine;
};

} // namespace Zuvan::LumeqShim
