// The failing library's interface for tests, besides the exports.
#pragma once

#include "support/FailingAllocation.h"

#include <cstdint>

namespace Zuvan::Lumeq::Testing {

struct FailingLibraryControl {
    /// FailingAllocation on the library's own operator new, until `disarm`, which returns whether it failed.
    void (*arm)(int nth, AllocatingThreads threads);
    bool (*disarm)();
    std::int64_t (*liveBlocks)();
    /// Whether neither the API lock nor the settings lock is held.
    bool (*areLocksFree)();
};

/// Exported as "FailingLibrary_Control".
extern "C" using FailingLibraryControlFunction = const FailingLibraryControl * ();

} // namespace Zuvan::Lumeq::Testing
