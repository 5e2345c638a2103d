#include "support/FailingAllocation.h"

#include <windows.h>

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <thread>

namespace Zuvan::Lumeq::Testing {

namespace {

struct alignas(64) Aligned {
    char bytes[64];
};

// The compiler may remove an allocation whose effects it can see.
void* volatile seen;
template <class Type>
void Keep(Type* memory) {
    seen = memory;
}

template <class Allocate>
bool Fails(Allocate allocate) {
    const FailingAllocation failing(1);
    try {
        return !allocate();
    } catch (const std::bad_alloc&) {
        return true;
    }
}

} // namespace

TEST(FailingAllocation, EveryFormFails) {
    const auto kept = [](auto* memory) {
        Keep(memory);
        return memory;
    };
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<int>(kept(new int)); }));
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<int[]>(kept(new int[3])); }));
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<int>(kept(new (std::nothrow) int)); }));
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<int[]>(kept(new (std::nothrow) int[3])); }));
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<Aligned>(kept(new Aligned)); }));
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<Aligned[]>(kept(new Aligned[3])); }));
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<Aligned>(kept(new (std::nothrow) Aligned)); }));
    EXPECT_TRUE(Fails([&] { return std::unique_ptr<Aligned[]>(kept(new (std::nothrow) Aligned[3])); }));
}

TEST(FailingAllocation, OnlyTheNthFails) {
    const FailingAllocation failing(2);
    const auto first = std::make_unique<int>(1);
    Keep(first.get());
    EXPECT_FALSE(failing.Happened());
    EXPECT_THROW(Keep(std::make_unique<int>(2).get()), std::bad_alloc);
    EXPECT_TRUE(failing.Happened());
    EXPECT_NO_THROW(Keep(std::make_unique<int>(3).get()));
}

TEST(FailingAllocation, OnlyTheChosenThreadsCount) {
    std::atomic<bool> begun = false;
    std::atomic<bool> failed = false;
    std::thread other([&] {
        while (!begun)
            Sleep(1);
        try {
            Keep(std::make_unique<int>(1).get());
        } catch (const std::bad_alloc&) {
            failed = true;
        }
    });
    const FailingAllocation failing(1, AllocatingThreads::Others);
    Keep(std::make_unique<int>(1).get());
    EXPECT_FALSE(failing.Happened());
    begun = true;
    other.join();
    EXPECT_TRUE(failing.Happened());
    EXPECT_TRUE(failed);
}

TEST(FailingAllocation, LiveBlocksCountsWhatIsHeld) {
    const std::int64_t before = LiveBlocks();
    auto one = std::make_unique<int>(1);
    auto other = std::make_unique<Aligned>();
    Keep(one.get());
    Keep(other.get());
    EXPECT_EQ(LiveBlocks(), before + 2);
    one.reset();
    other.reset();
    EXPECT_EQ(LiveBlocks(), before);
}

} // namespace Zuvan::Lumeq::Testing
