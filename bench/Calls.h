// The measured calls, each with typical arguments.
#pragma once

#include "bench/Measure.h"
#include "samples/host/Library.h"

#include <vector>

namespace LumeqBench {

struct Call {
    const char* name;
    Action action;
};

/// Calls that the library accepts.
std::vector<Call> AcceptedEvents(const SampleHost::Library& library);

/// The same calls with one bad argument each.
std::vector<Call> RefusedEvents(const SampleHost::Library& library);

/// Calls that are refused for the last of 100,000 characters.
std::vector<Call> LongTexts(const SampleHost::Library& library);

/// Tasks. An action throws std::runtime_error if a task did not begin or end.
std::vector<Call> TaskCalls(const SampleHost::Library& library);

/// Identifiers, devices and the calls of a session that use no settings.
std::vector<Call> SessionCalls(const SampleHost::Library& library);

/// The start of an application whose user has not opted in.
std::vector<Call> StartCalls(const SampleHost::Library& library);

/// An accepted ButtonClicked with growing contexts, and for comparison an std::unordered_map of the fields of
/// its record.
std::vector<Call> GrowingContexts(const SampleHost::Library& library);

/// An accepted ButtonClicked with growing texts.
std::vector<Call> GrowingTexts(const SampleHost::Library& library);

/// Calls that change the settings. Measure them in this order, in a process without TaskCalls.
std::vector<Call> OptInCalls(const SampleHost::Library& library);

/// The start of an application, in a process of its own.
Action Start(const SampleHost::Library& library);

} // namespace LumeqBench
