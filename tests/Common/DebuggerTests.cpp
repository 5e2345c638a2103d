#include "Common/Debugger.h"

#include "support/DebuggerStandIn.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::Common {

TEST(Debugger, WithoutOneNothingBreaks) {
    BreakIfDebugged();
    ReportToDebugger(L"prefix: ", "text");
}

TEST(Debugger, ReportIsThreeTextsAndABreak) {
    Testing::DebuggerStandIn debugger;
    ReportToDebugger(L"prefix: ", "text");
    EXPECT_THAT(debugger.Texts(), testing::ElementsAre("prefix: ", "text", "\n"));
    EXPECT_EQ(debugger.Breaks(), 1);
}

TEST(Debugger, TraceIsATextWithoutABreak) {
    Testing::DebuggerStandIn debugger;
    TraceToDebugger(L"TRACE: x\n");
    EXPECT_THAT(debugger.Texts(), testing::ElementsAre("TRACE: x\n"));
    EXPECT_EQ(debugger.Breaks(), 0);
}

} // namespace Zuvan::Lumeq::Common
