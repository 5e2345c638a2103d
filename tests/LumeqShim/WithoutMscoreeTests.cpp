#include "LumeqShim/LumeqNativeShim.h"

#include "Common/Logger.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::LogMessages;

/// A machine without mscoree.dll; an environment variable hides Wine's own from this program.
class WithoutMscoree : public testing::Test {
protected:
    void SetUp() override {
        if (const Lumeq::Common::UniqueModule library{LoadLibraryW(L"mscoree")})
            GTEST_SKIP() << "this machine has mscoree.dll";
        machine.WriteFactorySettings();
        LogMessage(Lumeq::Common::SeverityLevel::TRACE, L"", 0, nullptr, L"first use");
        _linesBefore = LogMessages(machine.LogFile(), "DEBUG").size();
    }

    std::vector<std::string> DebugLines() const {
        std::vector<std::string> lines = LogMessages(machine.LogFile(), "DEBUG");
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(_linesBefore));
        return lines;
    }

    Lumeq::Testing::IsolatedMachine machine;

private:
    std::size_t _linesBefore = 0;
};

} // namespace

TEST_F(WithoutMscoree, ProbeLogsThatItIsUnsupportedAndDoesNotTouchCom) {
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(DebugLines(),
                testing::ElementsAre("IsCLRCreateInstanceSupported()",
                                     "IsCLRCreateInstanceSupported() returns 0",
                                     "IsRequiredDotNetVersionInstalled() returns 0",
                                     testing::StartsWith("IsRequiredDotNetVersionInstalled took ")));
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
}

TEST_F(WithoutMscoree, OptInTakesTheBasicRoad) {
    EXPECT_FALSE(GetUserOptInXX());
    SetUserOptInXX(true);
    EXPECT_TRUE(GetUserOptInXX());
    EXPECT_TRUE(std::filesystem::exists(machine.LocalSettingsFile()));
    EXPECT_THAT(LogMessages(machine.LogFile(), "WARNING"), testing::IsEmpty());
}

} // namespace Zuvan::LumeqShim
