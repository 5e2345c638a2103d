#pragma once

#include <cstdint>
#include <ctime>

namespace Zuvan::Lumeq::Common {

/// Milliseconds since 1970-01-01 00:00:00.000 UTC by the machine's clock; negative before that.
std::int64_t UtcMilliseconds();

/// The same for a time in the system's unit, 100 ns since 1601-01-01 UTC, up to the year 9999. Pure.
std::int64_t UtcMillisecondsOf(std::uint64_t fileTime);

/// Year, month, day, hour, minute and second in UTC, counted like std::tm. `epochSeconds` counts from
/// 1970-01-01, up to the year 3000.
std::tm UtcCalendar(std::int64_t epochSeconds);

} // namespace Zuvan::Lumeq::Common
