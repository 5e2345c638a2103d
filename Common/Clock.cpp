#include "Common/Clock.h"

#include <windows.h>

namespace Zuvan::Lumeq::Common {

std::int64_t UtcMilliseconds() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return UtcMillisecondsOf(std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime);
}

std::int64_t UtcMillisecondsOf(std::uint64_t fileTime) {
    constexpr std::int64_t Epoch = 11'644'473'600'000'000; // 1970-01-01, in microseconds since 1601-01-01
    return (static_cast<std::int64_t>(fileTime / 10) - Epoch) / 1000;
}

std::tm UtcCalendar(std::int64_t epochSeconds) {
    const __time64_t seconds = epochSeconds;
    std::tm utc{};
    _gmtime64_s(&utc, &seconds);
    return utc;
}

} // namespace Zuvan::Lumeq::Common
