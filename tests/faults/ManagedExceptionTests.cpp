// A companion library out of which an exception of the managed runtime comes, which is no C++ exception.
#include "faults/ExportRun.h"
#include "support/DeliveryStandIns.h"

#include <thread>

namespace Zuvan::Lumeq::Testing {

namespace {

class EveryManagedException : public ExportTest, public testing::WithParamInterface<ExportCase> {};

} // namespace

TEST_P(EveryManagedException, DisturbsNobody) {
    const ExportCase& exported = GetParam();
    ExportRun run(_machine, exported, Road::Managed, "");
    const auto callAndClose = [&run, &exported] {
        run.Prepare();
        run.Call(exported.accepted);
        run.ExpectUndisturbed(exported.accepted);
    };
    callAndClose(); // Allocates what stays for the life of the process.
    for (const wchar_t* const kind : {L"managed4", L"managed2"}) {
        LetCompanionRaise(kind);
        callAndClose();
        const std::int64_t before = run.Library().Control().liveBlocks();
        for (int i = 0; i < 20; ++i)
            callAndClose();
        std::thread(callAndClose).join();
        EXPECT_EQ(run.Library().Control().liveBlocks(), before);
    }
    LetCompanionReadEvents();
    run.ExpectNextCallWorks(exported.accepted);
}

INSTANTIATE_TEST_SUITE_P(Export, EveryManagedException,
                         testing::ValuesIn(ExportCases().begin(), ExportCases().end()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace Zuvan::Lumeq::Testing
