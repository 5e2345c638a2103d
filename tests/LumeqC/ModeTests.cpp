// How calls are made is chosen once in a process, so each of these has its own.
#include "LumeqC/StandInExports.h"

#include <Lumeq/lumeq.h>

#include <gtest/gtest.h>

#include <windows.h>

namespace Zuvan::Lumeq::Testing {

namespace {

lumeq_options WorkerOptions() {
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    options.use_worker_thread = 1;
    return options;
}

bool MakesCallsHere() {
    lumeq_pause();
    lumeq_task_is_open(0);
    return StandIn::LastThread() == GetCurrentThreadId();
}

} // namespace

TEST(ChosenMode, WithoutOptionsIsDirect) { EXPECT_TRUE(MakesCallsHere()); }

TEST(ChosenMode, ComesTooLateAfterACall) {
    lumeq_pause();
    const lumeq_options options = WorkerOptions();
    EXPECT_EQ(0, lumeq_configure(&options));
    EXPECT_TRUE(MakesCallsHere());
}

TEST(ChosenMode, IsStillOpenAfterVersionAbiCountAndState) {
    lumeq_state state = LUMEQ_STATE_INIT;
    lumeq_get_state(&state);
    EXPECT_EQ(0, state.uses_worker_thread);
    lumeq_version();
    lumeq_abi();
    lumeq_dropped_count();
    const lumeq_options options = WorkerOptions();
    EXPECT_EQ(1, lumeq_configure(&options));
    EXPECT_FALSE(MakesCallsHere());
}

TEST(ChosenMode, RefusesNullAndNoSize) {
    lumeq_options options = WorkerOptions();
    options.size = 0;
    EXPECT_EQ(0, lumeq_configure(nullptr));
    EXPECT_EQ(0, lumeq_configure(&options));
    options.size = sizeof options;
    EXPECT_EQ(1, lumeq_configure(&options));
}

TEST(ChosenMode, CanBeDirectExplicitly) {
    const lumeq_options options = LUMEQ_OPTIONS_INIT;
    EXPECT_EQ(1, lumeq_configure(&options));
    EXPECT_TRUE(MakesCallsHere());
}

TEST(ChosenMode, QueueHoldsAThousandEventsByDefault) {
    const lumeq_options options = WorkerOptions();
    lumeq_configure(&options);
    StandIn::Block();
    lumeq_pause();
    StandIn::AwaitBlocked();
    for (int i = 0; i < 1001; ++i)
        lumeq_screen_displayed(nullptr);
    EXPECT_EQ(1u, lumeq_dropped_count());
    StandIn::Release();
    lumeq_shutdown(60'000);
}

} // namespace Zuvan::Lumeq::Testing
