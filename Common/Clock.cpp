#include "Common/Clock.h"

#include <windows.h>

#include <boost/date_time/posix_time/posix_time.hpp>

namespace Zuvan::Lumeq::Common {

std::int64_t UtcMilliseconds() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return UtcMillisecondsOf(std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime);
}

std::int64_t UtcMillisecondsOf(std::uint64_t fileTime) {
    using namespace boost::posix_time;
    static const ptime epoch = time_from_string("1970-01-01 00:00:00.000");
    // Not Boost's own clock, because it counts seconds in 32 bits with this toolchain.
    const FILETIME time{static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
    return (from_ftime<ptime>(time) - epoch).total_milliseconds();
}

std::tm UtcCalendar(std::int64_t epochSeconds) {
    const __time64_t seconds = epochSeconds;
    std::tm utc{};
    _gmtime64_s(&utc, &seconds);
    return utc;
}

} // namespace Zuvan::Lumeq::Common
