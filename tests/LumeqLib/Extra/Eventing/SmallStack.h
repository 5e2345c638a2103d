// Runs code where little stack is left.
#pragma once

#include <windows.h>

#include <cstddef>
#include <malloc.h>

namespace Zuvan::Lumeq::Testing {

namespace Detail {

inline std::size_t StackLeft() {
    MEMORY_BASIC_INFORMATION region{};
    char here = 0;
    VirtualQuery(&here, &region, sizeof region);
    return static_cast<std::size_t>(&here - static_cast<char*>(region.AllocationBase));
}

template <class Action>
DWORD WINAPI RunWithLittleStack(void* action) {
    // The system may give a thread more stack than it was asked for: the surplus is used up here.
    constexpr std::size_t wanted = 256 * 1024;
    const std::size_t left = StackLeft();
    volatile char* surplus = static_cast<volatile char*>(_alloca(left > wanted ? left - wanted : 1));
    *surplus = 0;
    (*static_cast<Action*>(action))();
    return 0;
}

} // namespace Detail

/// Runs `action` on a thread of its own with 256 KiB of stack. An overflow ends the test program.
template <class Action>
void OnSmallStack(Action action) {
    const HANDLE thread = CreateThread(nullptr, 256 * 1024, Detail::RunWithLittleStack<Action>, &action,
                                       STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

} // namespace Zuvan::Lumeq::Testing
