// Counts in which a leak of this process would show.
#pragma once

#include <cstddef>

namespace SampleHost {

struct ProcessCounts {
    std::size_t handles; ///< Open.
    std::size_t threads; ///< Alive, including this one.
    std::size_t slots;   ///< Of thread-local storage, taken without a gap.
    std::size_t bytes;   ///< Of private memory.
};

/// Throws std::runtime_error if the system does not return a count.
ProcessCounts CountThisProcess();

} // namespace SampleHost
