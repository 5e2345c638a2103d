// Memory for what one call allocates: its arguments are some ten small pieces, and the system's heap is most
// of what copying them costs.
#pragma once

#include <cstddef>

namespace Zuvan::Lumeq {

/// While one exists, operator new takes what this thread allocates from one block, while it has room. The
/// block is used again when all of it has been returned, on whichever thread. One inside another, or
/// beside that of an unlucky other thread, does nothing.
class CallMemory {
public:
    CallMemory() noexcept;
    ~CallMemory();
    CallMemory(const CallMemory&) = delete;
    CallMemory& operator=(const CallMemory&) = delete;

private:
    struct Slot* _slot = nullptr;
};

/// For operator new: from the block of the thread, or from the heap. Null if there is no memory.
void* AllocateForCall(std::size_t size) noexcept;

/// For operator delete.
void FreeForCall(void* memory) noexcept;

} // namespace Zuvan::Lumeq
