#include "bench/Measure.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace LumeqBench {

namespace {

// Longer than what the start of a process leaves running beside it, such as Wine's services.
constexpr double WarmUpMicroseconds = 500'000;
// Short enough that most batches see no switch to another process.
constexpr double BatchMicroseconds = 1'000;
constexpr int FewestRounds = 5;
constexpr int MostRounds = 51;
constexpr double EnoughMicroseconds = 1'000'000;

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

void WarmUp(const std::vector<Action>& actions) {
    for (double total = 0; total < WarmUpMicroseconds;)
        for (const Action& action : actions)
            total += MicrosecondsOnce(action);
}

/// A single long batch may have been interrupted, so it does not count.
int CallsPerBatch(const Action& action) {
    int calls = 1;
    for (int longBatches = 0; longBatches < 3;) {
        if (MicrosecondsOfBatch(action, calls) >= BatchMicroseconds) {
            ++longBatches;
        } else {
            calls *= 2;
            longBatches = 0;
        }
    }
    return calls;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::vector<double> Medians(const std::vector<std::vector<double>>& samples) {
    std::vector<double> medians;
    for (const std::vector<double>& ofOne : samples)
        medians.push_back(Median(ofOne));
    return medians;
}

} // namespace

std::vector<double> MicrosecondsPerCall(const std::vector<Action>& actions) {
    WarmUp(actions);
    std::vector<int> calls;
    for (const Action& action : actions)
        calls.push_back(CallsPerBatch(action));
    std::vector<std::vector<double>> batches(actions.size());
    double total = 0;
    for (int round = 0; round < FewestRounds || (round < MostRounds && total < EnoughMicroseconds); ++round)
        for (std::size_t i = 0; i < actions.size(); ++i) {
            const double batch = MicrosecondsOfBatch(actions[i], calls[i]);
            batches[i].push_back(batch / calls[i]);
            total += batch;
        }
    return Medians(batches);
}

double MicrosecondsOnce(const Action& action) {
    const double start = Ticks();
    action();
    return (Ticks() - start) / TicksPerMicrosecond();
}

std::vector<double> MicrosecondsInTurn(const std::vector<Action>& actions) {
    constexpr int Rounds = 51;
    std::vector<std::vector<double>> times(actions.size());
    for (int round = 0; round < Rounds; ++round)
        for (std::size_t i = 0; i < actions.size(); ++i)
            times[i].push_back(MicrosecondsOnce(actions[i]));
    return Medians(times);
}

void Report(const char* name, const char* circumstances, double microseconds) {
    std::printf("%s\t%s\t%.3f\n", name, circumstances, microseconds);
    std::fflush(stdout);
}

} // namespace LumeqBench
