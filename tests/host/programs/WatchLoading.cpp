// A host that prints what a library does while it is loaded and freed.
//   lumeq-watch-loading FILE
// For each imported function that FILE called, prints "load library.dll!function" and the number of calls
// during loading, and the same with "unload". Also prints "threads" and how many more threads there are while
// the library is loaded.
#include "host/programs/ImportWatch.h"

#include <cstdio>
#include <string>
#include <tlhelp32.h>

namespace {

using Zuvan::Lumeq::Testing::ImportCounts;
using Zuvan::Lumeq::Testing::ImportWatch;

void Print(const char* phase, const ImportCounts& counts) {
    for (const auto& [name, count] : counts)
        std::printf("%s %s %lu\n", phase, name.c_str(), count);
}

int CountThreads() {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    int count = 0;
    for (BOOL found = Thread32First(snapshot, &thread); found; found = Thread32Next(snapshot, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    return count;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2)
        return 1;
    const std::wstring path = arguments[1];
    ImportWatch watch(path.substr(path.find_last_of(L"\\/") + 1));
    const int threadsBefore = CountThreads();
    const HMODULE library = LoadLibraryW(path.c_str());
    if (library == nullptr)
        return 2;
    Print("load", watch.Take());
    std::printf("threads %d\n", CountThreads() - threadsBefore);
    FreeLibrary(library);
    Print("unload", watch.Take());
    return 0;
}
