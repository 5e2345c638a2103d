// day-c [worker]: plays the day; with the worker thread if there is any argument. Then prints what telemetry is doing.
#include "day.h"

#include <Lumeq/lumeq.h>

#include <stdio.h>

static void print_state(void) {
    static const char* const choices[] = {"unknown", "unset", "no", "yes"};
    static const char* const roads[] = {"unknown", "managed", "basic"};
    lumeq_state state = LUMEQ_STATE_INIT;
    if (lumeq_get_state(&state))
        printf("telemetry: %s, choice %s%s, road %s, %d queued, %u dropped\n", state.is_disabled ? "disabled" : "enabled",
               choices[state.choice], state.is_paused ? " (paused)" : "", roads[state.road], (int)state.queued_calls,
               (unsigned)state.dropped_count);
}

int main(int count, char** arguments) {
    const int as_expected = play_day(count > 1);
    (void)arguments;
    print_state();
    return as_expected ? 0 : 1;
}
