#include "samples/host/Steps.h"

#include "samples/host/Ending.h"
#include "samples/host/ProcessCounts.h"

#include <chrono>
#include <cstdio>
#include <limits>
#include <thread>
#include <vector>

namespace SampleHost {

namespace {

using Steps = std::vector<Step>;

/// Loading and unloading affect all threads at once, so only the main thread may do it.
enum class Place { MainThread, OtherThread };

Step ReadStepAt(const Json& json, Place place);

Steps ReadSteps(const Json& json, Place place) {
    if (!json.is_array())
        throw BadLine("expected an array of steps");
    Steps steps;
    for (const Json& step : json)
        steps.push_back(ReadStepAt(step, place));
    return steps;
}

void Play(const Steps& steps, Session& session) {
    for (const Step& step : steps)
        step(session);
}

Step ReadSleep(const Json& json) {
    RequireMembers(json, {"sleepMsec"});
    const std::chrono::milliseconds time(
        ReadNumber(json["sleepMsec"], 0, std::numeric_limits<std::int32_t>::max()));
    return [time](Session&) { std::this_thread::sleep_for(time); };
}

Step ReadRepetition(const Json& json, Place place) {
    RequireMembers(json, {"times", "calls"});
    if (!json.contains("times") || !json.contains("calls"))
        throw BadLine("\"times\" and \"calls\" go together");
    const std::int64_t times = ReadNumber(json["times"], 0, std::numeric_limits<std::int32_t>::max());
    return [times, steps = ReadSteps(json["calls"], place)](Session& session) {
        for (std::int64_t i = 0; i < times; ++i)
            Play(steps, session);
    };
}

Step ReadThreads(const Json& json) {
    RequireMembers(json, {"threads"});
    if (!json["threads"].is_array())
        throw BadLine("expected an array of arrays of steps");
    std::vector<Steps> lists;
    for (const Json& list : json["threads"])
        lists.push_back(ReadSteps(list, Place::OtherThread));
    return [lists](Session& session) {
        std::vector<std::thread> threads;
        for (const Steps& steps : lists)
            threads.emplace_back([&steps, &session] { Play(steps, session); });
        for (std::thread& thread : threads)
            thread.join();
    };
}

/// The thread runs alongside the following steps. The session, and with it the library, lives until it is
/// done.
Step ReadBackground(const Json& json) {
    RequireMembers(json, {"background"});
    return [steps = ReadSteps(json["background"], Place::OtherThread)](Session& session) {
        std::thread([steps, kept = session.shared_from_this()] { Play(steps, *kept); }).detach();
    };
}

Step ReadMeasurement(const Json& json) {
    RequireMembers(json, {"measure"});
    if (!ReadFlag(json["measure"]))
        throw BadLine("expected true");
    return [](Session& session) {
        const ProcessCounts counts = CountThisProcess();
        session.Print({{"handles", counts.handles},
                       {"threads", counts.threads},
                       {"slots", counts.slots},
                       {"bytes", counts.bytes}});
    };
}

void RequireTrueOnMainThread(const Json& json, const char* name, Place place) {
    if (!ReadFlag(json[name]))
        throw BadLine("expected true");
    if (place != Place::MainThread)
        throw BadLine("a thread cannot load or unload the library");
}

Step ReadLoad(const Json& json, Place place) {
    RequireMembers(json, {"load"});
    RequireTrueOnMainThread(json, "load", place);
    return [](Session& session) { session.library.Load(); };
}

Step ReadUnload(const Json& json, Place place) {
    RequireMembers(json, {"unload", "waitMsec"});
    RequireTrueOnMainThread(json, "unload", place);
    const std::chrono::milliseconds wait(
        json.contains("waitMsec") ? ReadNumber(json["waitMsec"], 0, std::numeric_limits<std::int32_t>::max())
                                  : 0);
    return [wait](Session& session) {
        session.library.Unload();
        session.library.WaitUntilGone(wait);
    };
}

/// A note for the reader of the session.
Step ReadComment(const Json& json) {
    RequireMembers(json, {"comment"});
    ReadText(json["comment"]);
    return [](Session&) {};
}

Step ReadStepAt(const Json& json, Place place) {
    if (!json.is_object())
        throw BadLine("expected an object");
    if (json.contains("call"))
        return ReadCall(json);
    if (json.contains("sleepMsec"))
        return ReadSleep(json);
    if (json.contains("times") || json.contains("calls"))
        return ReadRepetition(json, place);
    if (json.contains("threads"))
        return ReadThreads(json);
    if (json.contains("background"))
        return ReadBackground(json);
    if (json.contains("measure"))
        return ReadMeasurement(json);
    if (json.contains("end"))
        return ReadEnding(json, place == Place::MainThread);
    if (json.contains("load"))
        return ReadLoad(json, place);
    if (json.contains("unload"))
        return ReadUnload(json, place);
    if (json.contains("comment"))
        return ReadComment(json);
    throw BadLine("no known step");
}

} // namespace

Zuvan::Lumeq::API::TaskHandle& Session::Handle(const std::string& name) {
    const std::scoped_lock lock(_handlesLock);
    return _handles[name];
}

void Session::Print(const Json& line) {
    const std::string text = line.dump() + '\n';
    const std::scoped_lock lock(_outputLock);
    std::fwrite(text.data(), 1, text.size(), stdout);
    // A killed process must not lose output.
    std::fflush(stdout);
}

Step ReadStep(const Json& json) { return ReadStepAt(json, Place::MainThread); }

} // namespace SampleHost
