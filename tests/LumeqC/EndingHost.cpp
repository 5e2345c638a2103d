// lumeq-ending MODE WAY: occupies the library through ending-late.dll and ends the process with code 7. MODE
// is "direct" or "worker"; WAY is "return", from main, or "thread", by ExitProcess on another thread.
//
// It does so in a child and passes its exit code on, because Linux' own exit code of a process that Wine ends
// may be that of a kill.
#include <windows.h>

#include <cstring>
#include <string>

namespace {

constexpr DWORD LongestMilliseconds = 60'000;

DWORD WINAPI EndProcess(void*) { ExitProcess(7); }

int End(const char* mode, const char* way) {
    const HMODULE late = LoadLibraryW(L"ending-late.dll");
    if (late == nullptr)
        return 2;
    const auto occupy =
        reinterpret_cast<void (*)(bool)>(reinterpret_cast<void*>(GetProcAddress(late, "Occupy")));
    occupy(std::strcmp(mode, "worker") == 0);
    if (std::strcmp(way, "thread") == 0) {
        CreateThread(nullptr, 0, EndProcess, nullptr, 0, nullptr);
        Sleep(INFINITE);
    }
    return 7;
}

int EndInAChild() {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    std::wstring command = GetCommandLineW() + std::wstring(L" child");
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &child))
        return 3;
    DWORD exitCode = 4;
    if (WaitForSingleObject(child.hProcess, LongestMilliseconds) == WAIT_OBJECT_0)
        GetExitCodeProcess(child.hProcess, &exitCode);
    else
        TerminateProcess(child.hProcess, 1);
    return static_cast<int>(exitCode);
}

} // namespace

int main(int count, char** arguments) { return count == 4 ? End(arguments[1], arguments[2]) : EndInAChild(); }
