// Every allocation of every export fails once.
#include "faults/ExportCalls.h"
#include "faults/ExportRun.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

namespace Zuvan::Lumeq::Testing {

namespace {

using Parameter = std::tuple<Road, ExportCase>;

std::string NameOf(const testing::TestParamInfo<Parameter>& info) {
    const auto& [road, exported] = info.param;
    return std::string(road == Road::Managed ? "ManagedRoad_" : "BasicRoad_") + exported.name;
}

class EveryAllocation : public ExportTest, public testing::WithParamInterface<Parameter> {};

/// Returns how many there were.
int FailEachAllocationOf(ExportRun& run, ExportCall call) {
    run.ExpectNextCallWorks(call);
    run.ExpectNextCallWorks(call);
    const std::int64_t blocks = run.Library().Control().liveBlocks();
    bool happened = true;
    int nth = 0;
    while (happened && !testing::Test::HasFailure()) {
        SCOPED_TRACE("allocation " + std::to_string(++nth));
        run.Prepare();
        run.Library().Control().arm(nth, AllocatingThreads::Own);
        run.Call(call);
        happened = run.Library().Control().disarm();
        run.ExpectUndisturbed(call);
        run.ExpectNextCallWorks(call);
        EXPECT_EQ(run.Library().Control().liveBlocks(), blocks);
        EXPECT_EQ(FailingLibrary::OpenApartments(), 0);
    }
    return nth - 1;
}

/// Writing log lines is slow, and most lines appear on both roads. So the second road logs only for exports
/// whose lines differ.
std::string LogLevelOf(Road road, const ExportCase& exported) {
    if (road == Road::Managed)
        return "debug";
    if (!exported.usesSettings)
        return "";
    return exported.isPaused ? "trace" : "debug";
}

/// Runs with the log cover the allocations of runs without it, so those run only on request.
std::vector<std::string> LogLevels(Road road, const ExportCase& exported) {
    const std::string level = LogLevelOf(road, exported);
    if (level.empty() || !std::getenv("LUMEQ_ENDURANCE"))
        return {level};
    return {"", level};
}

} // namespace

TEST_P(EveryAllocation, FailsOnce) {
    const auto& [road, exported] = GetParam();
    int failures = 0;
    for (const std::string& logLevel : LogLevels(road, exported)) {
        SCOPED_TRACE("log level: " + logLevel);
        ExportRun run(_machine, exported, road, logLevel);
        for (const ExportCall call : {exported.accepted, exported.refused})
            if (call) {
                SCOPED_TRACE(call == exported.accepted ? "accepted" : "refused");
                failures += FailEachAllocationOf(run, call);
            }
    }
    EXPECT_EQ(GetModuleHandleW(L"LumeqShim.Managed.dll") != nullptr,
              road == Road::Managed && exported.delivered != nullptr);
    RecordProperty("failures", failures);
}

INSTANTIATE_TEST_SUITE_P(Export, EveryAllocation,
                         testing::Combine(testing::Values(Road::Managed, Road::Basic),
                                          testing::ValuesIn(ExportCases().begin(), ExportCases().end())),
                         NameOf);

} // namespace Zuvan::Lumeq::Testing
