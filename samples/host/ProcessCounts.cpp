#include "samples/host/ProcessCounts.h"

#include <windows.h>

#include <cstdint>
#include <psapi.h>
#include <stdexcept>
#include <tlhelp32.h>

namespace SampleHost {

namespace {

/// Tries the numbers that handles have, because not every system that this runs on can count them.
std::size_t CountHandles() {
    constexpr std::uintptr_t Step = 4;
    constexpr std::uintptr_t Most = 8192;
    std::size_t count = 0;
    DWORD flags = 0;
    for (std::uintptr_t number = 1; number <= Most; ++number)
        count += GetHandleInformation(reinterpret_cast<HANDLE>(number * Step), &flags) != FALSE;
    return count;
}

std::size_t CountThreads() {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        throw std::runtime_error("the threads cannot be counted");
    std::size_t count = 0;
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL found = Thread32First(snapshot, &thread); found; found = Thread32Next(snapshot, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    return count;
}

/// The system takes the first free slot, so its number is the count if there are no gaps.
std::size_t CountSlots() {
    const DWORD plain = TlsAlloc();
    const DWORD withCallback = FlsAlloc(nullptr);
    if (plain == TLS_OUT_OF_INDEXES || withCallback == FLS_OUT_OF_INDEXES)
        throw std::runtime_error("no thread-local storage is left");
    TlsFree(plain);
    FlsFree(withCallback);
    return std::size_t{plain} + withCallback;
}

std::size_t CountBytes() {
    PROCESS_MEMORY_COUNTERS memory{};
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory))
        throw std::runtime_error("the memory cannot be measured");
    return memory.PagefileUsage;
}

} // namespace

ProcessCounts CountThisProcess() { return {CountHandles(), CountThreads(), CountSlots(), CountBytes()}; }

} // namespace SampleHost
