// What the one lock of the library costs hosts with several threads.
#pragma once

#include "samples/host/Library.h"

namespace LumeqBench {

/// Accepted clicks from 1, 2, 4 and 8 threads at once. Reports the time per event of all threads together,
/// and the longest call of any thread.
void MeasureThreads(const SampleHost::Library& library);

} // namespace LumeqBench
