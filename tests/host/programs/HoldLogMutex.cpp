// Holds the log's mutex from another program.
//   lumeq-hold-log-mutex MSEC
// Takes the mutex when it reads a line, prints "held" and the time, keeps the mutex for MSEC, and prints
// "released" and the time. Times are milliseconds since midnight UTC.
#include <windows.h>

#include <cstdio>
#include <cstdlib>

namespace {

void Print(const char* what) {
    SYSTEMTIME now{};
    GetSystemTime(&now);
    std::printf("%s %d\n", what,
                ((now.wHour * 60 + now.wMinute) * 60 + now.wSecond) * 1000 + now.wMilliseconds);
    std::fflush(stdout);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2)
        return 1;
    std::getchar();
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, L"Global\\LumeqLoggingMutex");
    if (WaitForSingleObject(mutex, INFINITE) == WAIT_FAILED)
        return 2;
    Print("held");
    Sleep(static_cast<DWORD>(std::atoi(arguments[1])));
    Print("released");
    ReleaseMutex(mutex);
    return 0;
}
