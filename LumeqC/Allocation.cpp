// Replaces libstdc++'s operator new and delete in the DLL. Apart, because tests have operators of their own.
#include "LumeqC/CallMemory.h"

#include <new>

using namespace Zuvan::Lumeq;

// The array and nothrow forms reach these through the standard library's own.

void* operator new(std::size_t size) {
    if (void* const memory = AllocateForCall(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { FreeForCall(memory); }
void operator delete(void* memory, std::size_t) noexcept { FreeForCall(memory); }
