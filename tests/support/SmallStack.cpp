#include "support/SmallStack.h"

#include "Common/SystemHandles.h"

#include <malloc.h>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr std::size_t StackBytes = 256 * 1024;

std::size_t StackLeft() {
    MEMORY_BASIC_INFORMATION region{};
    char here = 0;
    VirtualQuery(&here, &region, sizeof region);
    return static_cast<std::size_t>(&here - static_cast<char*>(region.AllocationBase));
}

DWORD WINAPI Run(void* body) {
    // The system may reserve more stack than requested; the surplus is used up here.
    const std::size_t left = StackLeft();
    volatile char* surplus = static_cast<volatile char*>(_alloca(left > StackBytes ? left - StackBytes : 1));
    *surplus = 0;
    (*static_cast<const std::function<void()>*>(body))();
    return 0;
}

} // namespace

void OnSmallStack(const std::function<void()>& body) {
    const Common::UniqueKernelObject thread(CreateThread(nullptr, StackBytes, &Run,
                                                         const_cast<std::function<void()>*>(&body),
                                                         STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
    if (!thread)
        throw std::runtime_error("no thread");
    WaitForSingleObject(thread.Get(), INFINITE);
}

} // namespace Zuvan::Lumeq::Testing
