// The memory that the library takes in a host's process.
#pragma once

namespace LumeqBench {

/// Reports the kilobytes that the process commits more for a load and for the first event, and that an open
/// task takes from the heap.
void MeasureMemory();

} // namespace LumeqBench
