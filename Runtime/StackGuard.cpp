// Works around libssp, which serves -fstack-protector on MinGW: its constructor opens the system's random
// number provider to make the secret, so loading the DLL would read the registry and load further libraries
// under the loader lock. After an overrun it raises an exception, which a handler of the host may catch. This
// file makes the secret from what the process has at hand, and ends an overrun process at once.
//
// No longer needed once host.quiet_load_tests and host.runtime_tests pass without this file.
#include <windows.h>

#include <cstdint>
#include <initializer_list>
#include <intrin.h>

namespace {

/// Differs from process to process and from load to load, which is all that a stack cookie needs. The
/// system's own libraries make theirs in the same way.
__attribute__((no_stack_protector)) std::uintptr_t MakeSecret() noexcept {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    std::uint64_t secret = reinterpret_cast<std::uintptr_t>(&time); // the address of this thread's stack
    for (const std::uint64_t part : {std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime,
                                     static_cast<std::uint64_t>(counter.QuadPart), std::uint64_t{__rdtsc()},
                                     std::uint64_t{GetCurrentProcessId()} << 32 | GetCurrentThreadId(),
                                     std::uint64_t{reinterpret_cast<std::uintptr_t>(&MakeSecret)}}) {
        secret = (secret ^ part) * 0x9E3779B97F4A7C15;
        secret ^= secret >> 29;
    }
    // The zero byte stops an overrun by a text function: to write the cookie's true value, the text would
    // have to contain its own end.
    return secret & ~std::uintptr_t{0xFF};
}

} // namespace

extern "C" {

extern std::uintptr_t __stack_chk_guard;
std::uintptr_t __stack_chk_guard = 0;

/// The stack or a buffer has been overrun, so nothing in the process can be trusted any more.
[[noreturn]] void __stack_chk_fail();
void __stack_chk_fail() {
    // This is __fastfail, which these headers lack. It ends the process without asking the host's handlers.
    constexpr unsigned StackCookieCheckFailure = 2;
    __asm__ volatile("int $0x29" : : "c"(StackCookieCheckFailure));
    __builtin_unreachable();
}
void __chk_fail() { __stack_chk_fail(); }

} // extern "C"

namespace {

// Runs before every other constructor, because the secret must not change while a protected function runs.
__attribute__((constructor(101), no_stack_protector)) void SetSecret() { __stack_chk_guard = MakeSecret(); }

} // namespace
