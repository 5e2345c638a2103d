// The ways in which a host application can end before its session does.
#pragma once

#include "samples/host/Steps.h"

namespace SampleHost {

/// Thrown on the main thread, whose main function then returns the code.
struct SessionEnd {
    int exitCode;
};

/// Reads {"end": way, "code": number}. Only the main thread may use the way "return".
Step ReadEnding(const Json& json, bool isMainThread);

} // namespace SampleHost
