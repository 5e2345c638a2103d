// The number of the running thread.
#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Common {

/// The system's number of the calling thread; never 0.
std::uint32_t ThreadNumber() noexcept;

} // namespace Zuvan::Lumeq::Common
