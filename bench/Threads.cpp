#include "bench/Threads.h"

#include "bench/Calls.h"

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

namespace LumeqBench {

namespace {

constexpr int EventsInAll = 400'000;

struct Worker {
    std::thread thread;
    double longest = 0;
};

double LongestOf(const Action& action, int calls) {
    double longest = 0;
    for (int call = 0; call < calls; ++call)
        longest = std::max(longest, MicrosecondsOnce(action));
    return longest;
}

void MeasureWith(const Action& action, int threads) {
    std::vector<Worker> workers(static_cast<std::size_t>(threads));
    const double total = MicrosecondsOnce([&] {
        for (Worker& worker : workers)
            worker.thread = std::thread([&] { worker.longest = LongestOf(action, EventsInAll / threads); });
        for (Worker& worker : workers)
            worker.thread.join();
    });
    const std::string name = std::to_string(threads);
    Report(name.c_str(), "event", total / EventsInAll);
    Report(name.c_str(), "longest", std::ranges::max_element(workers, {}, &Worker::longest)->longest);
}

} // namespace

void MeasureThreads(const SampleHost::Library& library) {
    const Action click = AcceptedEvents(library).front().action;
    MicrosecondsPerCall({click}); // warms up
    for (const int threads : {1, 2, 4, 8})
        MeasureWith(click, threads);
}

} // namespace LumeqBench
