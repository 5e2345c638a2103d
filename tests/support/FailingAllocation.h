// Memory that runs out at a chosen moment, and a count of what is held.
#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Testing {

/// Whose allocations count.
enum class AllocatingThreads { Own, Others };

/// While it lives, one allocation of this program's operator new, of whatever form, throws std::bad_alloc, or
/// what a new handler throws where one is set: the `nth` of those threads, counted from 1. Those after it
/// succeed. One at a time.
class FailingAllocation {
public:
    explicit FailingAllocation(int nth, AllocatingThreads threads = AllocatingThreads::Own);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether that many were asked for.
    bool Happened() const;
};

/// How many blocks of this program's operator new are held, by all threads. What another module's code made
/// counts when it is deleted here, and the other way round.
std::int64_t LiveBlocks();

} // namespace Zuvan::Lumeq::Testing
