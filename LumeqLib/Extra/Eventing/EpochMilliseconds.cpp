#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"

#include "Common/Clock.h"

namespace Zuvan::Lumeq::Extra::Eventing {

std::uint64_t EpochMilliseconds() { return ValidTimeOrInvalid(Common::UtcMilliseconds()); }

std::uint64_t ValidTimeOrInvalid(std::int64_t milliseconds) {
    constexpr std::uint64_t limit = 2147483647000;
    // Unsigned, so that a time before 1970 lies past the limit too.
    const auto time = static_cast<std::uint64_t>(milliseconds);
    return time > limit ? InvalidTime : time;
}

} // namespace Zuvan::Lumeq::Extra::Eventing
