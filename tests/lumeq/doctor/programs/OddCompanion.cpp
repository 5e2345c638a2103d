// A companion library with all operations that behaves, when it is loaded, as LUMEQ_TEST_LOADING says: it
// crashes, refuses, or never returns.
#include <windows.h>

#include <cwchar>

#define OPERATION(name)                                                                                      \
    extern "C" __declspec(dllexport) void name() {}
OPERATION(StartupInternal)
OPERATION(ShutdownInternal)
OPERATION(FlushInternal)
OPERATION(GetUserOptInInternal)
OPERATION(SetUserOptInInternal)
OPERATION(SetLocalValueInternal)
OPERATION(LocalSettingsSubfolderInternal)
OPERATION(PostEventInternal)
OPERATION(PostDataInternal)
OPERATION(TrackPrintQueueInfoInternal)
OPERATION(TrackSystemInformationInternal)

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    wchar_t behaviour[16] = {};
    GetEnvironmentVariableW(L"LUMEQ_TEST_LOADING", behaviour, 16);
    if (std::wcscmp(behaviour, L"crash") == 0)
        TerminateProcess(GetCurrentProcess(), 0xC0000005);
    if (std::wcscmp(behaviour, L"hang") == 0)
        Sleep(INFINITE);
    return std::wcscmp(behaviour, L"refuse") != 0;
}
