// lumeq-ending WAY: occupies the worker thread through ending-late.dll and ends the process: "return" or
// "thread", by ExitProcess on another thread.
#include <windows.h>

#include <cstring>

int main(int count, char** arguments) {
    const HMODULE late = LoadLibraryW(L"ending-late.dll");
    if (late == nullptr || count != 2)
        return 2;
    reinterpret_cast<void (*)()>(reinterpret_cast<void*>(GetProcAddress(late, "Occupy")))();
    if (std::strcmp(arguments[1], "thread") == 0) {
        CreateThread(
            nullptr, 0,
            [](void*) -> DWORD {
                ExitProcess(7);
                return 0;
            },
            nullptr, 0, nullptr);
        Sleep(INFINITE);
    }
    return 7;
}
