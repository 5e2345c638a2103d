#include "LumeqC/CallMemory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

namespace Zuvan::Lumeq::Testing {

namespace {

/// Pieces of one block follow each other at a distance of their size and their header.
bool AreNeighbours(const void* one, const void* other) {
    return static_cast<const char*>(other) - static_cast<const char*>(one) == 32;
}

} // namespace

TEST(CallMemoryTest, TakesPiecesFromOneBlockWhileTheScopeLasts) {
    void* pieces[3];
    {
        const CallMemory memory;
        for (void*& piece : pieces)
            piece = AllocateForCall(16);
    }
    EXPECT_TRUE(AreNeighbours(pieces[0], pieces[1]));
    EXPECT_TRUE(AreNeighbours(pieces[1], pieces[2]));
    void* const later = AllocateForCall(16);
    EXPECT_FALSE(AreNeighbours(pieces[2], later));
    FreeForCall(later);
    for (void* piece : pieces) {
        std::memset(piece, 0xAB, 16); // they outlive the scope
        FreeForCall(piece);
    }
}

TEST(CallMemoryTest, LeavesOtherThreadsToTheHeap) {
    const CallMemory memory;
    void* const own = AllocateForCall(16);
    void* other = nullptr;
    std::thread([&other] { other = AllocateForCall(16); }).join();
    void* const next = AllocateForCall(16);
    EXPECT_TRUE(AreNeighbours(own, next));
    EXPECT_NE(nullptr, other);
    std::thread([=] {
        for (void* piece : {own, next, other})
            FreeForCall(piece);
    }).join();
}

TEST(CallMemoryTest, LeavesThreadsThatShareItsSlotToTheHeap) {
    // Identifiers of threads that live at the same time take every slot more than once.
    constexpr std::size_t Threads = 64;
    const CallMemory memory;
    void* const own = AllocateForCall(16);
    std::atomic<std::size_t> live = 0;
    void* pieces[Threads];
    std::vector<std::thread> threads;
    for (void*& piece : pieces)
        threads.emplace_back([&live, &piece] {
            for (++live; live < Threads;)
                std::this_thread::yield();
            piece = AllocateForCall(16);
        });
    for (std::thread& thread : threads)
        thread.join();
    void* const next = AllocateForCall(16);
    EXPECT_TRUE(AreNeighbours(own, next));
    for (void* piece : {own, next})
        FreeForCall(piece);
    for (void* piece : pieces)
        FreeForCall(piece);
}

TEST(CallMemoryTest, TakesTheHeapWhenTheBlockIsFull) {
    const CallMemory memory;
    std::vector<void*> pieces;
    for (int i = 0; i < 100; ++i) {
        pieces.push_back(AllocateForCall(100));
        ASSERT_NE(nullptr, pieces.back());
        EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(pieces.back()) % 16);
        std::memset(pieces.back(), i, 100);
    }
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(i, static_cast<char*>(pieces[static_cast<std::size_t>(i)])[99]);
        FreeForCall(pieces[static_cast<std::size_t>(i)]);
    }
}

TEST(CallMemoryTest, OneInsideAnotherEndsNothing) {
    const CallMemory memory;
    void* const first = AllocateForCall(16);
    { const CallMemory inner; }
    void* const second = AllocateForCall(16);
    EXPECT_TRUE(AreNeighbours(first, second));
    FreeForCall(first);
    FreeForCall(second);
}

TEST(CallMemoryTest, UsesABlockAgainOnceAllOfItWasReturned) {
    const auto take = [] {
        const CallMemory memory;
        return AllocateForCall(16);
    };
    void* const first = take();
    void* const second = take();
    EXPECT_NE(first, second);
    std::thread([=] { FreeForCall(first); }).join();
    void* const third = take();
    EXPECT_EQ(first, third);
    FreeForCall(second);
    FreeForCall(third);
}

TEST(CallMemoryTest, CountsWhatItsOwnThreadAndOthersReturnMeanwhile) {
    void* last = nullptr;
    void* first = nullptr;
    {
        const CallMemory memory;
        first = AllocateForCall(16);
        void* const own = AllocateForCall(16);
        last = AllocateForCall(16);
        FreeForCall(own);
        std::thread([=] { FreeForCall(first); }).join();
    }
    const CallMemory whileLastIsUsed;
    void* const other = AllocateForCall(16);
    EXPECT_NE(first, other);
    FreeForCall(other);
    FreeForCall(last);
}

TEST(CallMemoryTest, RefusesASizeThatNoHeaderFitsBefore) {
    EXPECT_EQ(nullptr, AllocateForCall(SIZE_MAX));
    FreeForCall(nullptr);
}

} // namespace Zuvan::Lumeq::Testing
