#include "LumeqC/CallFrame.h"
#include "LumeqC/EveryCall.h"
#include "LumeqC/StandInExports.h"
#include "LumeqC/StandInState.h"

#include <gtest/gtest.h>

#include <cstring>

namespace Zuvan::Lumeq {

MachineState ReadMachineState(const wchar_t* subfolder) noexcept {
    Testing::StandIn::readSubfolder = subfolder;
    return Testing::StandIn::machineState;
}

bool IsSubfolder(const wchar_t* subpath) noexcept { return *subpath != L'!'; }

namespace Testing {

namespace {

constexpr MachineState Paused{true, true, LUMEQ_CHOICE_YES, LUMEQ_ROAD_MANAGED};

class StateOfTelemetry : public testing::Test {
protected:
    ~StateOfTelemetry() override { StandIn::machineState = {}; }
};

TEST_F(StateOfTelemetry, ShowsWhatTheMachineSays) {
    lumeq_state state = LUMEQ_STATE_INIT;
    ASSERT_EQ(1, lumeq_get_state(&state));
    EXPECT_EQ(sizeof(lumeq_state), state.size);
    EXPECT_EQ(0, state.is_disabled);
    EXPECT_EQ(LUMEQ_CHOICE_UNKNOWN, state.choice);
    EXPECT_EQ(0, state.is_paused);
    EXPECT_EQ(LUMEQ_ROAD_UNKNOWN, state.road);
    StandIn::machineState = Paused;
    ASSERT_EQ(1, lumeq_get_state(&state));
    EXPECT_EQ(1, state.is_disabled);
    EXPECT_EQ(LUMEQ_CHOICE_YES, state.choice);
    EXPECT_EQ(1, state.is_paused);
    EXPECT_EQ(LUMEQ_ROAD_MANAGED, state.road);
    EXPECT_EQ(lumeq_dropped_count(), state.dropped_count);
    EXPECT_EQ(0, state.queued_calls);
}

TEST_F(StateOfTelemetry, RefusesNullAndAStructWithoutSize) {
    EXPECT_EQ(0, lumeq_get_state(nullptr));
    lumeq_state state{};
    state.road = 7;
    EXPECT_EQ(0, lumeq_get_state(&state));
    EXPECT_EQ(7, state.road);
}

TEST_F(StateOfTelemetry, WritesAsMuchAsTheSizeSaysAndKeepsTheSize) {
    StandIn::machineState = Paused;
    lumeq_state whole = LUMEQ_STATE_INIT;
    lumeq_get_state(&whole);
    for (std::size_t size = 8; size <= sizeof whole + 24; ++size) {
        SCOPED_TRACE(size);
        unsigned char written[sizeof whole + 32];
        std::memset(written, 0xCD, sizeof written);
        std::memcpy(written, &size, sizeof size);
        ASSERT_EQ(1, lumeq_get_state(reinterpret_cast<lumeq_state*>(written)));
        unsigned char expected[sizeof written];
        std::memset(expected, 0xCD, sizeof expected);
        std::memcpy(expected, &whole, std::min(size, sizeof whole) / 8 * 8);
        std::memcpy(expected, &size, sizeof size);
        EXPECT_EQ(0, std::memcmp(expected, written, sizeof written));
    }
}

TEST_F(StateOfTelemetry, IsOfTheLastSubfolderThatTheLibraryAccepts) {
    lumeq_state state = LUMEQ_STATE_INIT;
    lumeq_set_local_subfolder(L"a\\b");
    lumeq_get_state(&state);
    EXPECT_EQ(L"a\\b", StandIn::readSubfolder);
    lumeq_set_local_subfolder(L"!");
    lumeq_get_state(&state);
    EXPECT_EQ(L"a\\b", StandIn::readSubfolder);
    lumeq_set_local_subfolder(std::wstring(1000, L'x').c_str());
    lumeq_get_state(&state);
    EXPECT_EQ(std::wstring(261, L'x'), StandIn::readSubfolder);
    lumeq_set_local_subfolder(L"c");
    lumeq_get_state(&state);
    EXPECT_EQ(L"c", StandIn::readSubfolder);
}

} // namespace
} // namespace Testing
} // namespace Zuvan::Lumeq
