#include "Common/RecordMemory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace Zuvan::Lumeq::Common {

namespace {

using Bytes = std::unique_ptr<unsigned char[]>;

/// As operator new and delete use it.
class Taken {
public:
    explicit Taken(std::size_t size) : _memory(TakeRecordMemory(size)) {}
    Taken(Taken&& other) noexcept : _memory(std::exchange(other._memory, nullptr)) {}
    ~Taken() {
        if (_memory) {
            EXPECT_TRUE(ReturnRecordMemory(_memory));
        }
    }

    unsigned char* Get() const { return static_cast<unsigned char*>(_memory); }

private:
    void* _memory;
};

constexpr std::size_t BlockSize = 32 * 1024;

} // namespace

TEST(RecordMemory, NothingComesFromItWithoutAScope) { EXPECT_EQ(TakeRecordMemory(1), nullptr); }

TEST(RecordMemory, ScopeServesItsOwnThreadAlone) {
    const RecordMemoryScope scope;
    EXPECT_NE(Taken(1).Get(), nullptr);
    std::thread([] { EXPECT_EQ(TakeRecordMemory(1), nullptr); }).join();
}

TEST(RecordMemory, EachAllocationIsApartAndAligned) {
    const RecordMemoryScope scope;
    std::vector<Taken> taken;
    for (std::size_t size = 0; size < 100; ++size) {
        taken.emplace_back(size);
        ASSERT_NE(taken.back().Get(), nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(taken.back().Get()) % 16, 0U);
        std::memset(taken.back().Get(), static_cast<int>(size), size);
    }
    for (std::size_t size = 0; size < 100; ++size)
        EXPECT_TRUE(std::all_of(taken[size].Get(), taken[size].Get() + size,
                                [size](unsigned char byte) { return byte == size; }));
}

TEST(RecordMemory, WhatDoesNotFitIsLeftToTheHeap) {
    const RecordMemoryScope scope;
    EXPECT_EQ(TakeRecordMemory(BlockSize + 1), nullptr);
    EXPECT_EQ(TakeRecordMemory(SIZE_MAX), nullptr);
    const Taken most(BlockSize - 16);
    EXPECT_NE(most.Get(), nullptr);
    EXPECT_EQ(TakeRecordMemory(17), nullptr);
    EXPECT_NE(Taken(16).Get(), nullptr);
    EXPECT_EQ(TakeRecordMemory(1), nullptr);
}

TEST(RecordMemory, OutlivesItsScopeUntilItIsReturned) {
    const Taken kept = InRecordMemory([] { return Taken(100); });
    std::memset(kept.Get(), 7, 100);
    for (int i = 0; i < 1000; ++i) {
        const RecordMemoryScope scope;
        if (const Taken next(1000); next.Get())
            std::memset(next.Get(), 8, 1000);
    }
    EXPECT_TRUE(std::all_of(kept.Get(), kept.Get() + 100, [](unsigned char byte) { return byte == 7; }));
}

TEST(RecordMemory, IsUsedAgainWhenAllOfItIsReturned) {
    for (int i = 0; i < 10; ++i) {
        const RecordMemoryScope scope;
        EXPECT_NE(Taken(BlockSize).Get(), nullptr);
    }
}

TEST(RecordMemory, HeapMemoryIsNotItsOwn) {
    int local = 0;
    const Bytes heap(new unsigned char[1]);
    EXPECT_FALSE(ReturnRecordMemory(&local));
    EXPECT_FALSE(ReturnRecordMemory(heap.get()));
    EXPECT_FALSE(ReturnRecordMemory(nullptr));
}

} // namespace Zuvan::Lumeq::Common
