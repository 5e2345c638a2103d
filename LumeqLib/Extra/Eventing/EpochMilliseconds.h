// The time that events carry.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <cstdint>

namespace Zuvan::Lumeq::Extra::Eventing {

/// Milliseconds since 1970-01-01 UTC by the machine's clock, or InvalidTime.
std::uint64_t EpochMilliseconds();

/// `milliseconds` as it stands from 0 to 2147483647000, the last second of 31 bits; InvalidTime otherwise.
std::uint64_t ValidTimeOrInvalid(std::int64_t milliseconds);

} // namespace Zuvan::Lumeq::Extra::Eventing
