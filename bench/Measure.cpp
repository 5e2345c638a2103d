#include "bench/Measure.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace LumeqBench {

namespace {

// Short enough to fall between two switches to another process more often than not.
constexpr double BatchMicroseconds = 1'000;
constexpr std::size_t FewestBatches = 5;
constexpr std::size_t MostBatches = 101;
constexpr double EnoughMicroseconds = 500'000;

double Ticks() {
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    return static_cast<double>(ticks.QuadPart);
}

double TicksPerMicrosecond() {
    LARGE_INTEGER ticksPerSecond;
    QueryPerformanceFrequency(&ticksPerSecond);
    return static_cast<double>(ticksPerSecond.QuadPart) / 1e6;
}

double MicrosecondsOfBatch(const Action& action, int calls) {
    return MicrosecondsOnce([&] {
        for (int call = 0; call < calls; ++call)
            action();
    });
}

/// Finding out is the warming up.
int CallsPerBatch(const Action& action) {
    int calls = 1;
    while (MicrosecondsOfBatch(action, calls) < BatchMicroseconds)
        calls *= 2;
    return calls;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

double MicrosecondsPerCall(const Action& action) {
    const int calls = CallsPerBatch(action);
    std::vector<double> batches;
    double total = 0;
    while (batches.size() < FewestBatches || (batches.size() < MostBatches && total < EnoughMicroseconds)) {
        batches.push_back(MicrosecondsOfBatch(action, calls));
        total += batches.back();
    }
    return Median(batches) / calls;
}

double MicrosecondsOnce(const Action& action) {
    const double start = Ticks();
    action();
    return (Ticks() - start) / TicksPerMicrosecond();
}

Turns MicrosecondsPerTurn(const Action& first, const Action& second) {
    constexpr int TurnsInAll = 101;
    std::vector<double> firsts;
    std::vector<double> seconds;
    for (int turn = 0; turn < TurnsInAll; ++turn) {
        firsts.push_back(MicrosecondsOnce(first));
        seconds.push_back(MicrosecondsOnce(second));
    }
    return {Median(firsts), Median(seconds)};
}

void Report(const char* name, const char* circumstances, double microseconds) {
    std::printf("%s\t%s\t%.3f\n", name, circumstances, microseconds);
    std::fflush(stdout);
}

} // namespace LumeqBench
