// What a leak of this process would show in.
#pragma once

#include <cstddef>

namespace SampleHost {

struct ProcessCounts {
    std::size_t handles; ///< Open ones.
    std::size_t threads; ///< Living ones, this one included.
    std::size_t slots;   ///< Of thread-local storage, taken in an unbroken row.
    std::size_t bytes;   ///< Of memory that is this process's own.
};

/// Throws std::runtime_error if the system does not tell.
ProcessCounts CountThisProcess();

} // namespace SampleHost
