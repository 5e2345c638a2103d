#include "support/IsolatedMachine.h"

#include "Common/HostFile.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Testing {

TEST(IsolatedMachine, ExecutableSeemsToBeInItsHostFolder) {
    const std::filesystem::path original = ExecutablePath();
    {
        const IsolatedMachine machine;
        EXPECT_EQ(Common::GetHostFilePath(), (machine.HostFolder() / L"lumeq_machine_tests.exe").wstring());
        EXPECT_NE(ExecutablePath(), original);
    }
    EXPECT_EQ(ExecutablePath(), original);
}

TEST(IsolatedMachine, FactorySettingsFileBelongsToTheTest) {
    IsolatedMachine machine;
    EXPECT_FALSE(std::filesystem::exists(IsolatedMachine::FactorySettingsFile()));
    machine.WriteFactorySettings("<Log>off</Log>");
    EXPECT_EQ(ReadFile(machine.HostFolder() / L"lumeq_machine_tests.LumeqConfig.xml"),
              "<LumeqConfig version=\"4.0\"><Log>off</Log></LumeqConfig>");
}

} // namespace Zuvan::Lumeq::Testing
