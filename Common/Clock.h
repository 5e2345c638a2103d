#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Common {

/// Milliseconds since 1970-01-01 00:00:00.000 UTC by the machine's clock; negative before it.
std::int64_t UtcMilliseconds();

} // namespace Zuvan::Lumeq::Common
