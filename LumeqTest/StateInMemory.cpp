// What LumeqC.dll shows as the state of telemetry above the double: what the test has set there.
#include "LumeqC/MachineState.h"

#include <Lumeq/lumeq_test.h>

static_assert(LUMEQ_TEST_OPT_IN_UNSET == int{LUMEQ_CHOICE_UNSET} &&
              LUMEQ_TEST_OPT_IN_NO == int{LUMEQ_CHOICE_NO} && LUMEQ_TEST_OPT_IN_YES == int{LUMEQ_CHOICE_YES});

namespace Zuvan::Lumeq {

MachineState ReadMachineState(const wchar_t*) noexcept {
    MachineState state;
    state.isTrackingDisabled = lumeq_test_is_tracking_disabled() != 0;
    state.isPaused = lumeq_test_is_paused() != 0;
    state.choice = lumeq_test_opt_in();
    state.road = LUMEQ_ROAD_MANAGED;
    return state;
}

/// The double keeps the subfolder itself.
bool IsSubfolder(const wchar_t*) noexcept { return false; }

} // namespace Zuvan::Lumeq
