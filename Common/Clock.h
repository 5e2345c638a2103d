#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Common {

/// Milliseconds since 1970-01-01 00:00:00.000 UTC by the machine's clock; negative before it.
std::int64_t UtcMilliseconds();

/// The same of a time in the system's own count, steps of 100 ns since 1601-01-01 UTC, to the year 9999.
/// Pure.
std::int64_t UtcMillisecondsOf(std::uint64_t fileTime);

} // namespace Zuvan::Lumeq::Common
