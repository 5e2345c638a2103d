#include "support/FailingAllocation.h"

#include "Common/RecordMemory.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

// The array and nothrow forms reach these through the standard library's defaults.

using Zuvan::Lumeq::Common::ReturnRecordMemory;
using Zuvan::Lumeq::Common::TakeRecordMemory;

namespace {

constinit std::atomic<int> allocationsUntilFailure{0}; // 0 and below: none is to fail, or it has happened
constinit std::atomic<DWORD> armingThread{0};
constinit std::atomic<bool> othersCount{false};
constinit std::atomic<std::int64_t> liveBlocks{0};

bool IsToFail() noexcept {
    if (allocationsUntilFailure <= 0)
        return false;
    const bool own = GetCurrentThreadId() == armingThread;
    return own != othersCount && --allocationsUntilFailure == 0;
}

template <class Allocate>
void* Take(Allocate allocate) {
    void* const memory = IsToFail() ? nullptr : allocate();
    if (!memory) {
        if (const std::new_handler handler = std::get_new_handler())
            handler();
        throw std::bad_alloc();
    }
    ++liveBlocks;
    return memory;
}

template <class Release>
void GiveBack(void* memory, Release release) noexcept {
    if (memory)
        --liveBlocks;
    release(memory);
}

void Free(void* memory) noexcept {
    if (!ReturnRecordMemory(memory))
        std::free(memory);
}

} // namespace

void* operator new(std::size_t size) {
    return Take([size] {
        void* const memory = TakeRecordMemory(size);
        return memory ? memory : std::malloc(size == 0 ? 1 : size);
    });
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Take([=] { return _aligned_malloc(size == 0 ? 1 : size, static_cast<std::size_t>(alignment)); });
}

void operator delete(void* memory) noexcept { GiveBack(memory, &Free); }
void operator delete(void* memory, std::size_t) noexcept { GiveBack(memory, &Free); }
void operator delete(void* memory, std::align_val_t) noexcept { GiveBack(memory, &_aligned_free); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    GiveBack(memory, &_aligned_free);
}

namespace Zuvan::Lumeq::Testing {

FailingAllocation::FailingAllocation(int nth, AllocatingThreads threads) {
    armingThread = GetCurrentThreadId();
    othersCount = threads == AllocatingThreads::Others;
    allocationsUntilFailure = nth;
}

FailingAllocation::~FailingAllocation() { allocationsUntilFailure = 0; }

bool FailingAllocation::Happened() const { return allocationsUntilFailure <= 0; }

std::int64_t LiveBlocks() { return liveBlocks; }

} // namespace Zuvan::Lumeq::Testing
