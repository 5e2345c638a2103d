// Replaces libstdc++'s operator new and delete: the same heap, but the records of an event come from memory
// of their own, because the heap's price for them is most of what an accepted event costs. Memory that a host
// gets to own is the heap's, as before.
//
// No longer needed once the rows of accepted events in the benchmark are the same without this file.
#include "Common/RecordMemory.h"

#include <cstdlib>
#include <new>

using namespace Zuvan::Lumeq::Common;

// The array and nothrow forms reach these through the standard library's own.

void* operator new(std::size_t size) {
    if (void* const memory = TakeRecordMemory(size))
        return memory;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    if (!ReturnRecordMemory(memory))
        std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
