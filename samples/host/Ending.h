// The ways in which a host application ends before its session does.
#pragma once

#include "samples/host/Steps.h"

namespace SampleHost {

/// Thrown by the main thread, which then returns the code from its main function.
struct SessionEnd {
    int exitCode;
};

/// Reads {"end": way, "code": number}. Only the main thread may take the way "return".
Step ReadEnding(const Json& json, bool isMainThread);

} // namespace SampleHost
