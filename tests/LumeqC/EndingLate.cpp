// A library of a host's that still makes calls while the process ends, when all other threads are gone. It
// writes what came of them to the file ending.txt.
#include <Lumeq/lumeq.h>

#include <windows.h>

#include <cstring>

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

void Report(const char* text) {
    const HANDLE file =
        CreateFileW(L"ending.txt", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
    CloseHandle(file);
}

/// Makes calls until the process ends, so that it dies in one.
DWORD WINAPI CallForever(void*) {
    const lumeq_screen screen = LUMEQ_SCREEN_INIT;
    for (;;) {
        lumeq_screen_displayed(&screen);
        lumeq_task_abandon(lumeq_scan_acquire_begin(nullptr, nullptr));
    }
}

} // namespace

extern "C" __declspec(dllexport) void Occupy(bool usesWorker) {
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    options.use_worker_thread = usesWorker;
    lumeq_configure(&options);
    lumeq_get_opt_in(); // the first call reads files
    CloseHandle(CreateThread(nullptr, 0, CallForever, nullptr, 0, nullptr));
    Sleep(50); // so that it is in a call
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* isProcessEnd) {
    if (reason != DLL_PROCESS_DETACH || isProcessEnd == nullptr)
        return TRUE;
    Report("called");
    const ULONGLONG start = GetTickCount64();
    const bool nothing = CallsReturnNothing();
    const bool atOnce = GetTickCount64() - start < 10'000;
    Report(!nothing ? "something came" : atOnce ? "nothing came at once" : "nothing came late");
    return TRUE;
}
