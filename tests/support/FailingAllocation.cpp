#include "support/FailingAllocation.h"

#include <cstdlib>
#include <new>

namespace {

constinit int allocationsUntilFailure = 0; // 0: none is to fail, or it has happened

} // namespace

void* operator new(std::size_t size) {
    if (allocationsUntilFailure > 0 && --allocationsUntilFailure == 0)
        throw std::bad_alloc();
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace Zuvan::Lumeq::Testing {

FailingAllocation::FailingAllocation(int nth) { allocationsUntilFailure = nth; }
FailingAllocation::~FailingAllocation() { allocationsUntilFailure = 0; }
bool FailingAllocation::Happened() const { return allocationsUntilFailure == 0; }

} // namespace Zuvan::Lumeq::Testing
