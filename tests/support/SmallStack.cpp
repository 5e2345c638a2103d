#include "support/SmallStack.h"

#include "Common/SystemHandles.h"

#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

DWORD WINAPI Run(void* body) {
    (*static_cast<const std::function<void()>*>(body))();
    return 0;
}

} // namespace

void OnSmallStack(const std::function<void()>& body) {
    constexpr std::size_t StackBytes = 256 * 1024;
    const Common::UniqueKernelObject thread(CreateThread(nullptr, StackBytes, &Run,
                                                         const_cast<std::function<void()>*>(&body),
                                                         STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
    if (!thread)
        throw std::runtime_error("no thread");
    WaitForSingleObject(thread.Get(), INFINITE);
}

} // namespace Zuvan::Lumeq::Testing
