#include "Common/Clock.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <chrono>
#include <random>
#include <vector>

namespace Zuvan::Lumeq::Common {

namespace {

/// From the year to the second, with month 1 as the first.
std::vector<int> FieldsOf(const std::tm& time) {
    return {time.tm_year + 1900, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec};
}

std::int64_t BoostMillisecondsOf(std::uint64_t fileTime) {
    using namespace boost::posix_time;
    static const ptime epoch = time_from_string("1970-01-01 00:00:00.000");
    const FILETIME time{static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
    return (from_ftime<ptime>(time) - epoch).total_milliseconds();
}

} // namespace

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

TEST(UtcMillisecondsOf, CutsPartsOfAMillisecondOffTowardsZeroBefore1970) {
    constexpr std::uint64_t Epoch = 116444736000000000;
    EXPECT_EQ(UtcMillisecondsOf(Epoch - 9'990), 0);
    EXPECT_EQ(UtcMillisecondsOf(Epoch - 10'000), -1);
    EXPECT_EQ(UtcMillisecondsOf(Epoch - 19'990), -1);
    EXPECT_EQ(UtcMillisecondsOf(Epoch - 20'000), -2);
}

TEST(UtcMillisecondsOf, AgreesWithBoost) {
    constexpr std::uint64_t Epoch = 116444736000000000;
    for (std::uint64_t fileTime = Epoch - 20'000; fileTime < Epoch + 20'000; ++fileTime)
        ASSERT_EQ(UtcMillisecondsOf(fileTime), BoostMillisecondsOf(fileTime)) << fileTime;
    constexpr std::uint64_t LastOf9999 = 2650467743999999999;
    ASSERT_EQ(UtcMillisecondsOf(LastOf9999), BoostMillisecondsOf(LastOf9999));
    std::mt19937_64 random(1);
    for (int i = 0; i < 1'000'000; ++i) {
        const std::uint64_t fileTime = random() % LastOf9999;
        ASSERT_EQ(UtcMillisecondsOf(fileTime), BoostMillisecondsOf(fileTime)) << fileTime;
    }
}

TEST(UtcCalendar, SplitsTheSecondsAsTheCalendarDoes) {
    EXPECT_EQ(FieldsOf(UtcCalendar(0)), (std::vector<int>{1970, 1, 1, 0, 0, 0}));
    EXPECT_EQ(FieldsOf(UtcCalendar(1709210096)), (std::vector<int>{2024, 2, 29, 12, 34, 56}));
}

TEST(UtcCalendar, GoesOnPast32BitsOfSeconds) {
    EXPECT_EQ(FieldsOf(UtcCalendar(4294967296)), (std::vector<int>{2106, 2, 7, 6, 28, 16}));
}

} // namespace Zuvan::Lumeq::Common
