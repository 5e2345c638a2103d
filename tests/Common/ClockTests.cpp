#include "Common/Clock.h"

#include <gtest/gtest.h>

#include <chrono>

namespace Zuvan::Lumeq::Common {

TEST(UtcMilliseconds, AgreesWithTheSystemClock) {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    EXPECT_NEAR(static_cast<double>(UtcMilliseconds()), static_cast<double>(now), 5000.0);
}

TEST(UtcMillisecondsOf, CountsFrom1970) {
    constexpr std::uint64_t Epoch = 116444736000000000; // 1970-01-01 in steps of 100 ns since 1601
    EXPECT_EQ(UtcMillisecondsOf(Epoch), 0);
    EXPECT_EQ(UtcMillisecondsOf(Epoch + 17000000000000000), 1700000000000);
    EXPECT_EQ(UtcMillisecondsOf(Epoch + 15679), 1) << "parts of a millisecond are cut off";
}

TEST(UtcMillisecondsOf, GoesOnPast32BitsOfSeconds) {
    constexpr std::uint64_t Epoch = 116444736000000000;
    EXPECT_EQ(UtcMillisecondsOf(Epoch + 21474836480000000), 2147483648000);
    EXPECT_EQ(UtcMillisecondsOf(Epoch + 42949672960000000), 4294967296000);
}

TEST(UtcMillisecondsOf, IsNegativeBefore1970) {
    EXPECT_EQ(UtcMillisecondsOf(116444735990000000), -1000);
    EXPECT_EQ(UtcMillisecondsOf(0), -11644473600000);
}

} // namespace Zuvan::Lumeq::Common
