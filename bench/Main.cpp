// lumeq-bench WHAT: measures Lumeq.dll, loaded from the executable's folder as a host loads it, and prints
// one line per measurement. Road, log level and the registry's switch are fixed for the life of a process, so
// `run` in this folder starts this program once for each combination.
#include "bench/Calls.h"
#include "bench/Measure.h"
#include "bench/Memory.h"
#include "bench/PatternCosts.h"
#include "bench/Threads.h"

#include <cstdio>
#include <exception>
#include <functional>
#include <map>
#include <string>

namespace LumeqBench {

namespace {

using SampleHost::Library;
using CallList = std::vector<Call> (*)(const Library&);

void MeasureTogether(const std::vector<Call>& calls) {
    std::vector<Action> actions;
    for (const Call& call : calls)
        actions.push_back(call.action);
    const std::vector<double> microseconds = MicrosecondsPerCall(actions);
    for (std::size_t i = 0; i < calls.size(); ++i)
        Report(calls[i].name, "call", microseconds[i]);
}

void MeasureCalls(CallList calls) {
    Library library;
    library.Load();
    MeasureTogether(calls(library));
}

/// One batch each, one after the other: each changes the settings and with them the cost of the others.
void MeasureOptIn() {
    Library library;
    library.Load();
    for (const Call& call : OptInCalls(library))
        MeasureTogether({call});
}

void MeasureStart() {
    Library library;
    library.Load();
    Report("StartupEx", "first", MicrosecondsOnce(Start(library)));
}

void MeasureContention() {
    Library library;
    library.Load();
    MeasureThreads(library);
}

void MeasureLoading() {
    Library library;
    const auto load = [&] { library.Load(); };
    const auto unload = [&] { library.Unload(); };
    Report("load", "first", MicrosecondsOnce(load));
    unload();
    const std::vector<double> turns = MicrosecondsInTurn({load, unload});
    Report("load", "again", turns[0]);
    Report("unload", "again", turns[1]);
}

const std::map<std::string, std::function<void()>> Measurements = {
    {"accepted", [] { MeasureCalls(AcceptedEvents); }},
    {"refused", [] { MeasureCalls(RefusedEvents); }},
    {"long", [] { MeasureCalls(LongTexts); }},
    {"tasks", [] { MeasureCalls(TaskCalls); }},
    {"session", [] { MeasureCalls(SessionCalls); }},
    {"starts", [] { MeasureCalls(StartCalls); }},
    {"contexts", [] { MeasureCalls(GrowingContexts); }},
    {"texts", [] { MeasureCalls(GrowingTexts); }},
    {"threads", MeasureContention},
    {"memory", MeasureMemory},
    {"opt-in", MeasureOptIn},
    {"start", MeasureStart},
    {"loading", MeasureLoading},
    {"patterns", MeasurePatterns},
};

int Run(const std::string& what) {
    const auto found = Measurements.find(what);
    if (found == Measurements.end()) {
        std::fputs("usage: lumeq-bench WHAT, where WHAT is one of:\n", stderr);
        for (const auto& [name, measurement] : Measurements)
            std::fprintf(stderr, "  %s\n", name.c_str());
        return 2;
    }
    try {
        found->second();
        return 0;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "lumeq-bench: %s\n", problem.what());
        return 1;
    }
}

} // namespace
} // namespace LumeqBench

int main(int count, char** arguments) { return LumeqBench::Run(count == 2 ? arguments[1] : ""); }
