// Does during loading what a library must not do, as the environment variable LOUD says. It proves that the
// tests would notice.
#include <winsock2.h>

#include <windows.h>

#include <cstring>
#include <objbase.h>

namespace {

DWORD WINAPI DoNothing(void*) { return 0; }

using Action = void (*)();

constexpr struct {
    const char* name;
    Action act;
} Actions[] = {
    {"file",
     [] {
         CloseHandle(CreateFileW(L"loud.txt", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                 FILE_FLAG_DELETE_ON_CLOSE, nullptr));
     }},
    {"key",
     [] {
         HKEY key = nullptr;
         if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &key) == ERROR_SUCCESS)
             RegCloseKey(key);
     }},
    {"thread", [] { CloseHandle(CreateThread(nullptr, 0, &DoNothing, nullptr, 0, nullptr)); }},
    {"com",
     [] {
         if (SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
             CoUninitialize();
     }},
    {"socket", [] { closesocket(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)); }},
    {"leaked handle", [] { CreateEventW(nullptr, FALSE, FALSE, nullptr); }},
    {"leaked memory", [] { std::memset(HeapAlloc(GetProcessHeap(), 0, 1024), 1, 1024); }},
    {"leaked thread-local storage", [] { TlsAlloc(); }},
};

} // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    char wanted[64] = {};
    if (reason == DLL_PROCESS_ATTACH && GetEnvironmentVariableA("LOUD", wanted, sizeof wanted) != 0)
        for (const auto& action : Actions)
            if (std::strcmp(action.name, wanted) == 0)
                action.act();
    return TRUE;
}
