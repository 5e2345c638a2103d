// A machine with a log, and the two roads of delivery on it.
#pragma once

#include "support/DeliveryStandIns.h"
#include "support/FailingAllocation.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace Zuvan::LumeqShim {

class DeliveryTest : public testing::Test {
protected:
    DeliveryTest() { machine.WriteFactorySettings(); }
    ~DeliveryTest() override { Lumeq::Testing::FreeCompanion(); }

    void TakeManagedRoad() {
        Lumeq::Testing::UseFakeMscoree(L"v4.0.30319");
        Lumeq::Testing::PlaceCompanion(machine.HostFolder());
    }
    /// Provides the companion library, but not the runtime.
    void TakeBasicRoad() {
        Lumeq::Testing::UseFakeMscoree(L"v2.0.50727");
        Lumeq::Testing::PlaceCompanion(machine.HostFolder());
    }
    void ShutGate() {
        machine.SetDword(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", L"TrackingDisabled", 1);
    }

    /// The local settings file if the subfolder is "sub".
    std::filesystem::path SettingsFileInSubfolder() const {
        return machine.ProgramData() / "Zuvan" / "sub" / "LUMEQ" / "LumeqLocalSettings.xml";
    }
    std::vector<std::string> Warnings() const {
        return Lumeq::Testing::LogMessages(machine.LogFile(), "WARNING");
    }

    /// Starts for an opted-in user. Nothing is sent, because there is no project id.
    bool HasBasicStartRun() const {
        const std::vector<std::string> lines = Lumeq::Testing::LogMessages(machine.LogFile(), "DEBUG");
        return std::count(lines.begin(), lines.end(), "Executing Basic Functionality demo 1") == 1;
    }

    Lumeq::Testing::IsolatedMachine machine;
};

/// Repeats the call, letting the first, second, ... hundredth allocation fail. Returns how many it makes.
template <class Call>
int FailEachAllocationOf(Call call) {
    call();
    int failed = 0;
    for (bool happened = true; happened && failed < 100; failed += happened) {
        const Lumeq::Testing::FailingAllocation failure(failed + 1);
        call();
        happened = failure.Happened();
    }
    return failed;
}

} // namespace Zuvan::LumeqShim
