/* lumeq-state [CALL...]: makes the calls, then prints what lumeq_get_state says, after each. A call is "start", "flush",
   "yes", "no", "pause", "resume", or the name of a subfolder after "in:". */
#include <Lumeq/lumeq.h>

#include <stdio.h>
#include <string.h>

static void make(const char* call) {
    if (strcmp(call, "start") == 0)
        lumeq_startup(L"State", LUMEQ_WHY_UNKNOWN, LUMEQ_HOW_UNKNOWN, 0, 0);
    else if (strcmp(call, "flush") == 0)
        lumeq_flush(0);
    else if (strcmp(call, "yes") == 0 || strcmp(call, "no") == 0)
        lumeq_set_opt_in(call[0] == 'y');
    else if (strcmp(call, "pause") == 0)
        lumeq_pause();
    else if (strcmp(call, "resume") == 0)
        lumeq_resume();
    else if (strncmp(call, "in:", 3) == 0) {
        wchar_t subfolder[64] = {0};
        size_t at;
        for (at = 0; call[at + 3] != 0 && at < 63; ++at)
            subfolder[at] = (wchar_t)call[at + 3];
        lumeq_set_local_subfolder(subfolder);
    }
}

static void print_state(void) {
    lumeq_state state = LUMEQ_STATE_INIT;
    const int32_t result = lumeq_get_state(&state);
    printf("%d: disabled %d, choice %d, paused %d, road %d\n", result, state.is_disabled, state.choice, state.is_paused,
           state.road);
}

int main(int count, char** arguments) {
    int number;
    print_state();
    for (number = 1; number < count; ++number) {
        make(arguments[number]);
        print_state();
    }
    return 0;
}
