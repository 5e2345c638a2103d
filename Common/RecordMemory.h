// Memory for the records of one event, taken one after the other from a block of our own. An event has some
// forty allocations that live for less than a call, and the system's heap is most of what they cost.
#pragma once

#include <cstddef>

namespace Zuvan::Lumeq::Common {

/// While one exists, what operator new returns to its thread comes from the block while there is room, and
/// from the heap as usual after that. Memory may outlive the scope: the block is used again only when all of
/// it has been returned. Under the API lock, never one inside another. A host must not get what is allocated
/// meanwhile, because it returns that to the heap.
class RecordMemoryScope {
public:
    RecordMemoryScope() noexcept;
    ~RecordMemoryScope();
    RecordMemoryScope(const RecordMemoryScope&) = delete;
    RecordMemoryScope& operator=(const RecordMemoryScope&) = delete;
};

/// What `make` returns, made in such a scope.
template <class Make>
auto InRecordMemory(Make make) {
    const RecordMemoryScope memory;
    return make();
}

/// For operator new: null if the calling thread has no scope or the block has no room.
void* TakeRecordMemory(std::size_t size) noexcept;

/// For operator delete: false if the memory is not the block's, so that it goes to the heap.
bool ReturnRecordMemory(void* memory) noexcept;

} // namespace Zuvan::Lumeq::Common
