#include "bench/Memory.h"

#include "bench/Calls.h"
#include "bench/Exports.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <psapi.h>
#include <stdexcept>

namespace LumeqBench {

namespace {

constexpr int Tasks = 10'000;

double CommittedBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
        throw std::runtime_error("the process cannot see its memory");
    return static_cast<double>(counters.PagefileUsage);
}

double BytesFor(const Action& action) {
    const double before = CommittedBytes();
    action();
    return CommittedBytes() - before;
}

double BusyBytesOf(HANDLE heap) {
    double bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry))
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
            bytes += entry.cbData + entry.cbOverhead;
    return bytes;
}

/// What is allocated, because the heaps take memory from the system in large pieces.
double HeapBytes() {
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(heaps.size(), heaps.data());
    return std::accumulate(heaps.begin(), heaps.begin() + std::min<std::size_t>(count, heaps.size()), 0.0,
                           [](double bytes, HANDLE heap) { return bytes + BusyBytesOf(heap); });
}

} // namespace

void MeasureMemory() {
    SampleHost::Library library;
    Report("load", "kilobytes", BytesFor([&] { library.Load(); }) / 1024);
    Report("first event", "kilobytes", BytesFor([&] { AcceptedEvents(library).front().action(); }) / 1024);
    const auto initiate = Export<decltype(API::ScanAcquireInitiated)>(library, "ScanAcquireInitiated");
    const API::StringDictionary context = {{L"pages_waiting", L"4"}};
    initiate(&context, L"Tarvik 3000");
    const double before = HeapBytes();
    for (int task = 0; task < Tasks; ++task)
        initiate(&context, L"Tarvik 3000");
    Report("open task", "kilobytes", (HeapBytes() - before) / Tasks / 1024);
}

} // namespace LumeqBench
