#include "LumeqC/CallMemory.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace Zuvan::Lumeq {

namespace {

constexpr std::size_t Alignment = 16;   // what operator new promises
constexpr std::size_t BlockSize = 1024; // a click with two fields of context takes half of it

/// More than a block has pieces. Stands for the scope that may take more.
constexpr std::size_t OpenScope = BlockSize;

struct Block {
    /// The pieces in use. While a scope is open: OpenScope, less the pieces that other threads returned.
    std::atomic<std::size_t> users{0};
    bool isOfHeap = false;
    alignas(Alignment) char room[BlockSize]{};
};

/// Precedes each piece of memory; null for a piece of the heap's own.
struct alignas(Alignment) Header {
    Block* block;
};

void Leave(Block* block, std::size_t users) noexcept {
    const bool isOfHeap = block->isOfHeap;
    if (block->users.fetch_sub(users, std::memory_order_acq_rel) == users && isOfHeap)
        std::free(block);
}

} // namespace

/// What one thread takes from. Slots of thread-local storage would be the host's.
struct Slot {
    std::atomic<DWORD> thread{0};
    Block* block = nullptr;
    std::size_t used = 0;
    /// Pieces of the block that this thread took and did not return. Apart from those of other threads,
    /// because counting across threads is most of what a piece costs.
    std::size_t pieces = 0;
    /// Saves a direct call the heap. A queued call may still hold pieces of it, so the next takes one of the
    /// heap.
    Block own;
};

namespace {

constexpr std::size_t SlotCount = 32;
constinit Slot slots[SlotCount];

/// Null if there is no memory. Only the slot's thread asks, so nobody else takes its own block meanwhile.
Block* FreeBlock(Slot& slot) noexcept {
    if (slot.own.users.load(std::memory_order_acquire) == 0)
        return &slot.own;
    void* const memory = std::malloc(sizeof(Block));
    if (memory == nullptr)
        return nullptr;
    auto* const block = new (memory) Block;
    block->isOfHeap = true;
    return block;
}

/// Identifiers of threads are multiples of four.
Slot& SlotOf(DWORD thread) noexcept { return slots[thread / 4 % SlotCount]; }

/// Null while the thread has no scope.
Slot* OwnSlot() noexcept {
    const DWORD thread = GetCurrentThreadId();
    Slot& slot = SlotOf(thread);
    // A thread finds its own identifier only if it wrote that itself.
    return slot.thread.load(std::memory_order_relaxed) == thread ? &slot : nullptr;
}

void* TakeFromBlock(std::size_t size) noexcept {
    Slot* const slot = OwnSlot();
    if (slot == nullptr || size > BlockSize)
        return nullptr;
    const std::size_t room = sizeof(Header) + (size + Alignment - 1) / Alignment * Alignment;
    if (room > BlockSize - slot->used)
        return nullptr;
    auto* const header = reinterpret_cast<Header*>(slot->block->room + slot->used);
    slot->used += room;
    ++slot->pieces;
    header->block = slot->block;
    return header + 1;
}

void ReturnToBlock(Block* block) noexcept {
    Slot* const slot = OwnSlot();
    if (slot != nullptr && slot->block == block)
        --slot->pieces;
    else
        Leave(block, 1);
}

} // namespace

CallMemory::CallMemory() noexcept {
    const DWORD thread = GetCurrentThreadId();
    Slot& slot = SlotOf(thread);
    DWORD nobody = 0;
    if (!slot.thread.compare_exchange_strong(nobody, thread, std::memory_order_acquire))
        return;
    slot.block = FreeBlock(slot);
    if (slot.block == nullptr) {
        slot.thread.store(0, std::memory_order_release);
        return;
    }
    slot.block->users.store(OpenScope, std::memory_order_relaxed);
    slot.used = 0;
    slot.pieces = 0;
    _slot = &slot;
}

CallMemory::~CallMemory() {
    if (_slot == nullptr)
        return;
    Block* const block = _slot->block;
    const std::size_t pieces = _slot->pieces;
    _slot->thread.store(0, std::memory_order_release);
    Leave(block, OpenScope - pieces);
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
        ReturnToBlock(header->block);
    else
        std::free(header);
}

} // namespace Zuvan::Lumeq
