// Memory that runs out at a chosen moment, and a count of allocated blocks.
#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Testing {

/// Whose allocations count.
enum class AllocatingThreads { Own, Others };

/// While one lives, the `nth` allocation of those threads, counted from 1, fails: this program's operator
/// new, in any form, throws std::bad_alloc, or what a new handler throws if one is set. Later allocations
/// succeed. One at a time.
class FailingAllocation {
public:
    explicit FailingAllocation(int nth, AllocatingThreads threads = AllocatingThreads::Own);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether there were that many allocations.
    bool Happened() const;
};

/// Number of blocks of this program's operator new that all threads hold. A block allocated in another module
/// and deleted here counts too, and the other way round.
std::int64_t LiveBlocks();

} // namespace Zuvan::Lumeq::Testing
