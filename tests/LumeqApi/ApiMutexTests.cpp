#include "LumeqApi/ApiMutex.h"

#include <gtest/gtest.h>
#include <mutex>
#include <system_error>
#include <thread>

namespace Zuvan::Lumeq::API {

namespace {

std::error_code FailureOf(ApiMutex& mutex) {
    try {
        mutex.lock();
    } catch (const std::system_error& failure) {
        return failure.code();
    }
    return {};
}

bool IsFreeForOthers(ApiMutex& mutex) {
    bool isFree = false;
    std::thread([&] {
        isFree = mutex.try_lock();
        if (isFree)
            mutex.unlock();
    }).join();
    return isFree;
}

} // namespace

TEST(ApiMutex, IsHeldFromLockToUnlock) {
    ApiMutex mutex;
    EXPECT_TRUE(IsFreeForOthers(mutex));
    {
        const std::lock_guard lock(mutex);
        EXPECT_FALSE(IsFreeForOthers(mutex));
    }
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(ApiMutex, RefusesItsHolderAndStaysHeld) {
    ApiMutex mutex;
    mutex.lock();
    EXPECT_EQ(FailureOf(mutex), std::errc::resource_deadlock_would_occur);
    EXPECT_EQ(FailureOf(mutex), std::errc::resource_deadlock_would_occur);
    EXPECT_FALSE(mutex.try_lock());
    EXPECT_FALSE(IsFreeForOthers(mutex));
    mutex.unlock();
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(ApiMutex, RefusesWhoHoldsItByTrying) {
    ApiMutex mutex;
    ASSERT_TRUE(mutex.try_lock());
    EXPECT_EQ(FailureOf(mutex), std::errc::resource_deadlock_would_occur);
    mutex.unlock();
}

TEST(ApiMutex, IsLockedAgainByWhoHeldItBefore) {
    ApiMutex mutex;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(FailureOf(mutex), std::error_code());
        mutex.unlock();
    }
    EXPECT_TRUE(mutex.try_lock());
    mutex.unlock();
}

TEST(ApiMutex, LetsOtherThreadsWaitForTheirTurn) {
    constexpr int Threads = 4;
    constexpr int Turns = 20000;
    ApiMutex mutex;
    int turns = 0; // guarded
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i)
        threads.emplace_back([&] {
            for (int turn = 0; turn < Turns; ++turn) {
                const std::lock_guard lock(mutex);
                ++turns;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(turns, 80000);
}

} // namespace Zuvan::Lumeq::API
