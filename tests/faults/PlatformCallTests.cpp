// Every platform call fails once. The library is loaded anew for each.
#include "faults/PlatformCalls.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Testing {

namespace {

class EveryPlatformCall : public ExportTest, public testing::WithParamInterface<PlatformCall> {
protected:
    EveryPlatformCall() {
        _machine.SetDword(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", L"TrackingDisabled", 0);
        _machine.SetText(HKEY_LOCAL_MACHINE, L"HARDWARE\\DESCRIPTION\\System\\BIOS", L"SystemSKU",
                         L"SKU 8000");
    }

    /// Returns whether there were that many calls.
    bool FailCall(int nth) {
        std::filesystem::remove_all(_machine.ProgramData() / "Zuvan");
        const ExportCase& exported = FindExportCase(GetParam().exported);
        ExportRun run(_machine, exported, GetParam().road, GetParam().logLevel, "127.0.0.99");
        run.Prepare();
        // A leftover of a killed process, so that the search for such files finds one.
        if (exported.usesSettings)
            WriteFile(_machine.LocalSettingsFile().parent_path() / "Lumeq00000000-0000.tmp", "");
        bool happened = false;
        {
            const FailingPlatformCall failing(run.Library().Module(), GetParam(), nth);
            run.Call(exported.accepted);
            happened = failing.Happened();
        }
        run.ExpectUndisturbed(exported.accepted);
        run.ExpectNextCallWorks(exported.accepted, happened);
        _imbalance += FailingLibrary::OpenApartments();
        return happened;
    }

    int _imbalance = 0;
};

} // namespace

TEST_P(EveryPlatformCall, FailsOnce) {
    int failures = 0;
    while (!HasFailure()) {
        SCOPED_TRACE("call " + std::to_string(failures + 1));
        if (!FailCall(failures + 1))
            break;
        ++failures;
    }
    EXPECT_GT(failures, 0);
    // The probe uninitialises COM even if the initialisation failed. That is the agreed behaviour.
    EXPECT_EQ(_imbalance, std::string(GetParam().function) == "CoInitializeEx" ? -1 : 0);
    RecordProperty("failures", failures);
}

INSTANTIATE_TEST_SUITE_P(Platform, EveryPlatformCall,
                         testing::ValuesIn(PlatformCalls().begin(), PlatformCalls().end()),
                         [](const auto& info) { return std::string(info.param.function); });

} // namespace Zuvan::Lumeq::Testing
