#include "LumeqC/CallMemory.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace Zuvan::Lumeq {

namespace {

constexpr std::size_t Alignment = 16;   // what operator new promises
constexpr std::size_t BlockSize = 1024; // a click with two fields of context takes half of it

/// Begins a block, and counts the pieces that are in use and the scope that may take more.
struct Block {
    std::atomic<std::size_t> users{1};
};

/// Precedes each piece of memory; null for a piece of the heap's own.
struct alignas(Alignment) Header {
    Block* block;
};

void Leave(Block* block) noexcept {
    if (block->users.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(block);
}

} // namespace

/// The block of one thread. Slots of thread-local storage would be the host's.
struct Slot {
    std::atomic<DWORD> thread{0};
    Block* block = nullptr;
    std::size_t used = 0;
};

namespace {

constexpr std::size_t SlotCount = 64;
constinit Slot slots[SlotCount];

/// Identifiers of threads are multiples of four.
Slot& SlotOf(DWORD thread) noexcept { return slots[thread / 4 % SlotCount]; }

void* TakeFromBlock(std::size_t size) noexcept {
    const DWORD thread = GetCurrentThreadId();
    Slot& slot = SlotOf(thread);
    // A thread finds its own identifier only if it wrote that itself.
    if (slot.thread.load(std::memory_order_relaxed) != thread || size > BlockSize)
        return nullptr;
    const std::size_t room = sizeof(Header) + (size + Alignment - 1) / Alignment * Alignment;
    if (room > BlockSize - slot.used)
        return nullptr;
    auto* const header = reinterpret_cast<Header*>(reinterpret_cast<char*>(slot.block) + slot.used);
    slot.used += room;
    header->block = slot.block;
    slot.block->users.fetch_add(1, std::memory_order_relaxed);
    return header + 1;
}

} // namespace

CallMemory::CallMemory() noexcept {
    const DWORD thread = GetCurrentThreadId();
    Slot& slot = SlotOf(thread);
    DWORD nobody = 0;
    if (!slot.thread.compare_exchange_strong(nobody, thread, std::memory_order_acquire))
        return;
    void* const memory = std::malloc(BlockSize);
    if (memory == nullptr) {
        slot.thread.store(0, std::memory_order_release);
        return;
    }
    slot.block = new (memory) Block;
    slot.used = Alignment;
    _slot = &slot;
}

CallMemory::~CallMemory() {
    if (_slot == nullptr)
        return;
    Block* const block = _slot->block;
    _slot->thread.store(0, std::memory_order_release);
    Leave(block);
}

void* AllocateForCall(std::size_t size) noexcept {
    if (void* const memory = TakeFromBlock(size))
        return memory;
    if (size > SIZE_MAX - sizeof(Header))
        return nullptr;
    auto* const header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (header == nullptr)
        return nullptr;
    header->block = nullptr;
    return header + 1;
}

void FreeForCall(void* memory) noexcept {
    if (memory == nullptr)
        return;
    Header* const header = static_cast<Header*>(memory) - 1;
    if (header->block != nullptr)
        Leave(header->block);
    else
        std::free(header);
}

} // namespace Zuvan::Lumeq
