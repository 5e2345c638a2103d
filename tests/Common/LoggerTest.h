// A machine with a log.
#pragma once

#include "Common/Logger.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace Zuvan::Lumeq::Common {

inline void Log(SeverityLevel level, const wchar_t* text) {
    LogMessage(level, L"file", 1, nullptr, L"%s", text);
}

/// A machine that logs at the given level, with the policy's own lines already written and removed.
class LoggerTest : public testing::Test {
protected:
    void StartLogging(const std::string& level) {
        machine.WriteFactorySettings("<Log>on</Log><LogLevel>" + level + "</LogLevel>");
        Log(SeverityLevel::DEBUG, L"first");
        std::filesystem::remove(machine.LogFile());
    }
    std::filesystem::path DataFile() const { return machine.LogFolder() / "Lumeq.Data.txt"; }
    std::filesystem::path ErrorFile() const { return machine.LogFolder() / "Lumeq.Error.txt"; }

    Testing::IsolatedMachine machine;
};

} // namespace Zuvan::Lumeq::Common
