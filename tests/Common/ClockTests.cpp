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

TEST(UtcCalendar, SplitsTheSecondsAsTheCalendarDoes) {
    const std::tm leapDay = UtcCalendar(1709210096); // 2024-02-29 12:34:56
    EXPECT_EQ(leapDay.tm_year, 124);
    EXPECT_EQ(leapDay.tm_mon, 1);
    EXPECT_EQ(leapDay.tm_mday, 29);
    EXPECT_EQ(leapDay.tm_hour, 12);
    EXPECT_EQ(leapDay.tm_min, 34);
    EXPECT_EQ(leapDay.tm_sec, 56);
}

TEST(UtcCalendar, GoesOnPast32BitsOfSeconds) {
    const std::tm late = UtcCalendar(4294967296); // 2106-02-07 06:28:16
    EXPECT_EQ(late.tm_year, 206);
    EXPECT_EQ(late.tm_mon, 1);
    EXPECT_EQ(late.tm_mday, 7);
    EXPECT_EQ(late.tm_hour, 6);
}

} // namespace Zuvan::Lumeq::Common
