// A library of a host's that still makes calls while the process ends, when the worker thread is gone. The
// process then ends with code 42 if every call returned at once and with nothing.
#include <Lumeq/lumeq.h>

#include <windows.h>

namespace {

bool CallsReturnNothing() {
    const lumeq_screen screen = LUMEQ_SCREEN_INIT;
    lumeq_screen_displayed(&screen);
    lumeq_pause();
    const bool nothing = !lumeq_get_opt_in() && lumeq_scan_acquire_begin(nullptr, nullptr) == 0 &&
                         !lumeq_task_is_open(1) && lumeq_get_biid("1c85", nullptr, 0) == 0;
    lumeq_task_abandon(1);
    lumeq_shutdown(20'000);
    lumeq_dropped_count();
    return nothing;
}

} // namespace

extern "C" __declspec(dllexport) void Occupy() {
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    options.use_worker_thread = 1;
    lumeq_configure(&options);
    const lumeq_screen screen = LUMEQ_SCREEN_INIT;
    for (int i = 0; i < 500; ++i)
        lumeq_screen_displayed(&screen);
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* isProcessEnd) {
    if (reason != DLL_PROCESS_DETACH || isProcessEnd == nullptr)
        return TRUE;
    const ULONGLONG start = GetTickCount64();
    const bool nothing = CallsReturnNothing();
    if (nothing && GetTickCount64() - start < 10'000)
        TerminateProcess(GetCurrentProcess(), 42);
    return TRUE;
}
