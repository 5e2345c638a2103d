// Every allocation of a first call fails once. The library is loaded anew for each.
#include "faults/ExportRun.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Testing {

namespace {

struct FirstUse {
    const char* title;
    const char* exported;
    Road road;
    const char* logLevel;
};

const FirstUse FirstUses[] = {
    {"LineOfTheLog", "ToString", Road::Basic, "debug"},
    {"ProbeAndCompanion", "ButtonClicked", Road::Managed, ""},
    {"ProbeAndCompanionLogged", "TrackDiscoveredPrintersEx", Road::Managed, "debug"},
    {"ProbeAlone", "FlushEx", Road::Basic, ""},
    {"Settings", "GetUserOptInEx", Road::Basic, ""},
    {"Pause", "Pause", Road::Managed, ""},
    {"Message", "StartupEx", Road::Basic, ""},
};

using EveryAllocationOfTheWorker = ExportTest;

class EveryAllocationOfTheFirstCall : public ExportTest, public testing::WithParamInterface<FirstUse> {};

/// WMI is slower than everything else together, and has its own tests.
HRESULT STDAPICALLTYPE CreateAllButWmi(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid,
                                       void** instance) {
    constexpr CLSID WbemLocator = {
        0x4590f811, 0x1d3a, 0x11d0, {0x89, 0x1f, 0x00, 0xaa, 0x00, 0x4b, 0x2e, 0x24}};
    return IsEqualGUID(classId, WbemLocator) ? REGDB_E_CLASSNOTREG
                                             : CoCreateInstance(classId, outer, context, iid, instance);
}

struct Outcome {
    bool happened;
    std::int64_t blocks; ///< Allocated after the first call and one more.
};

/// `nth`: 0 for no failure.
Outcome RunFresh(IsolatedMachine& machine, const FirstUse& use, int nth,
                 AllocatingThreads threads = AllocatingThreads::Own) {
    const ExportCase& exported = FindExportCase(use.exported);
    ExportRun run(machine, exported, use.road, use.logLevel);
    const ImportedFunction<decltype(CoCreateInstance)> withoutWmi(run.Library().Module(), "ole32.dll",
                                                                  "CoCreateInstance", &CreateAllButWmi);
    run.Prepare();
    run.Library().Control().arm(nth, threads);
    run.Call(exported.accepted);
    const bool happened = run.Library().Control().disarm() && nth > 0;
    run.ExpectUndisturbed(exported.accepted);
    run.ExpectNextCallWorks(exported.accepted, happened);
    EXPECT_EQ(FailingLibrary::OpenApartments(), 0);
    return {happened, run.Library().Control().liveBlocks()};
}

/// Returns how many there were.
int FailEachAllocation(IsolatedMachine& machine, const FirstUse& use, AllocatingThreads threads) {
    const std::int64_t blocks = RunFresh(machine, use, 0).blocks;
    int nth = 0;
    for (bool happened = true; happened && !testing::Test::HasFailure();) {
        SCOPED_TRACE("allocation " + std::to_string(++nth));
        const Outcome outcome = RunFresh(machine, use, nth, threads);
        // A later call may no longer need what could not be created.
        EXPECT_LE(outcome.blocks, blocks);
        happened = outcome.happened;
    }
    return nth - 1;
}

} // namespace

TEST_P(EveryAllocationOfTheFirstCall, FailsOnce) {
    const int failures = FailEachAllocation(_machine, GetParam(), AllocatingThreads::Own);
    EXPECT_GT(failures, 0);
    RecordProperty("failures", failures);
}

TEST_F(EveryAllocationOfTheWorker, FailsOnce) {
    for (const char* logLevel : {"", "debug"}) {
        SCOPED_TRACE(logLevel);
        const FirstUse message{"", "StartupEx", Road::Basic, logLevel};
        const int failures = FailEachAllocation(_machine, message, AllocatingThreads::Others);
        EXPECT_GT(failures, 0);
        RecordProperty(std::string("failures") + logLevel, failures);
    }
}

INSTANTIATE_TEST_SUITE_P(FirstUse, EveryAllocationOfTheFirstCall, testing::ValuesIn(FirstUses),
                         [](const auto& info) { return std::string(info.param.title); });

} // namespace Zuvan::Lumeq::Testing
