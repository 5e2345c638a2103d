#include "Common/Clock.h"

#include <gtest/gtest.h>

#include <chrono>

namespace Zuvan::Lumeq::Common {

TEST(UtcMilliseconds, AgreesWithTheSystemClock) {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    EXPECT_NEAR(static_cast<double>(UtcMilliseconds()), static_cast<double>(now), 5000.0);
}

} // namespace Zuvan::Lumeq::Common
