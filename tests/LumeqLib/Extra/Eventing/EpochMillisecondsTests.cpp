#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"

#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Eventing {

TEST(EpochMilliseconds, KeepsATimeWithinTheLimit) {
    EXPECT_EQ(ValidTimeOrInvalid(0), 0U);
    EXPECT_EQ(ValidTimeOrInvalid(1700000000000), 1700000000000U);
    EXPECT_EQ(ValidTimeOrInvalid(2147483647000), 2147483647000U);
}

TEST(EpochMilliseconds, TimePastTheLimitIsInvalid) {
    EXPECT_EQ(ValidTimeOrInvalid(2147483647001), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(ValidTimeOrInvalid(INT64_MAX), 0xFFFFFFFFFFFFFFFFU);
}

TEST(EpochMilliseconds, TimeBeforeTheEpochIsInvalid) {
    EXPECT_EQ(ValidTimeOrInvalid(-1), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(ValidTimeOrInvalid(INT64_MIN), 0xFFFFFFFFFFFFFFFFU);
}

TEST(EpochMilliseconds, InvalidTimeIsAllOnes) { EXPECT_EQ(InvalidTime, 0xFFFFFFFFFFFFFFFFU); }

TEST(EpochMilliseconds, CountsFromTheUnixEpoch) {
    using namespace std::chrono;
    const auto milliseconds = [] {
        return static_cast<std::uint64_t>(
            duration_cast<std::chrono::milliseconds>(system_clock::now().time_since_epoch()).count());
    };
    // Two clocks of one machine, which may step differently.
    const std::uint64_t before = milliseconds() - 1000;
    const std::uint64_t now = EpochMilliseconds();
    EXPECT_GE(now, before);
    EXPECT_LE(now, milliseconds() + 1000);
}

} // namespace Zuvan::Lumeq::Extra::Eventing
