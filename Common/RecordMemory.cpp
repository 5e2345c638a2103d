#include "Common/RecordMemory.h"

#include "Common/ThreadNumber.h"

#include <atomic>
#include <cstdint>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr std::size_t Size = 32 * 1024; // an event with two hundred pairs of context
constexpr std::size_t Alignment = 16;   // what operator new promises
constexpr std::uint32_t Nobody = 0;

alignas(Alignment) constinit std::byte block[Size] = {};
// The API lock guards both: whoever has memory of the block is the thread that holds it.
constinit std::size_t used = 0;
constinit std::size_t inUse = 0;
/// Relaxed is enough: a thread finds its own number only if it wrote that itself.
constinit std::atomic<std::uint32_t> thread{Nobody};

} // namespace

RecordMemoryScope::RecordMemoryScope() noexcept {
    if (inUse == 0)
        used = 0;
    thread.store(ThreadNumber(), std::memory_order_relaxed);
}

RecordMemoryScope::~RecordMemoryScope() { thread.store(Nobody, std::memory_order_relaxed); }

void* TakeRecordMemory(std::size_t size) noexcept {
    const std::uint32_t owner = thread.load(std::memory_order_relaxed);
    if (owner == Nobody || owner != ThreadNumber() || size > Size)
        return nullptr;
    const std::size_t room = (size + Alignment - 1) / Alignment * Alignment;
    if (room > Size - used)
        return nullptr;
    void* const memory = block + used;
    used += room;
    ++inUse;
    return memory;
}

bool ReturnRecordMemory(void* memory) noexcept {
    if (reinterpret_cast<std::uintptr_t>(memory) - reinterpret_cast<std::uintptr_t>(block) >= Size)
        return false;
    --inUse;
    return true;
}

} // namespace Zuvan::Lumeq::Common
