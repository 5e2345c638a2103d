#include "LumeqLib/Extra/Eventing/TaskGuid.h"

#include "support/ImportedFunction.h"

#include <gtest/gtest.h>
#include <rpc.h>

namespace Zuvan::Lumeq::Extra::Eventing {

TEST(TaskGuid, IsRenderedInLowerCaseWithHyphens) {
    const TaskGuid guid{0x04, 0x03, 0x02, 0x01, 0x06, 0x05, 0x08, 0x07,
                        0xA9, 0xBA, 0xCB, 0xDC, 0xED, 0xFE, 0x0F, 0x10};
    EXPECT_EQ(RenderTaskGuid(guid), L"01020304-0506-0708-a9ba-cbdcedfe0f10");
    EXPECT_EQ(RenderTaskGuid({}), L"00000000-0000-0000-0000-000000000000");
}

TEST(TaskGuid, IsNewEachTime) {
    const TaskGuid first = NewTaskGuid();
    EXPECT_NE(first, TaskGuid{});
    EXPECT_NE(first, NewTaskGuid());
}

TEST(TaskGuid, RenderingThatFailedReadsError) {
    EXPECT_EQ(TaskGuidText(std::nullopt), L"Error!");
    EXPECT_EQ(TaskGuidText(L"01020304-0506-0708-a9ba-cbdcedfe0f10"), L"01020304-0506-0708-a9ba-cbdcedfe0f10");
}

TEST(TaskGuid, ThatTheSystemDoesNotRenderReadsError) {
    const Testing::ImportedFunction<decltype(UuidToStringW)> failing(
        "rpcrt4.dll", "UuidToStringW", [](UUID*, RPC_WSTR*) -> RPC_STATUS { return RPC_S_OUT_OF_MEMORY; });
    EXPECT_EQ(TaskGuidText(RenderTaskGuid(NewTaskGuid())), L"Error!");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
