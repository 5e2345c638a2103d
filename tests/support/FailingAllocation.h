// Memory that runs out at a chosen moment.
#pragma once

namespace Zuvan::Lumeq::Testing {

/// While it lives, one allocation of this program's operator new throws std::bad_alloc: the `nth`, counted
/// from 1. Those after it succeed. One at a time, and only where no other thread allocates.
class FailingAllocation {
public:
    explicit FailingAllocation(int nth);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether that many were asked for.
    bool Happened() const;
};

} // namespace Zuvan::Lumeq::Testing
