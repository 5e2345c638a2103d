// What code that is compiled with MinGW's stack protector asks for, in the place of libssp: that one reads
// the registry and loads libraries to make its secret, as a constructor and so whenever a host loads this
// library.
#include <windows.h>

#include <cstdint>
#include <initializer_list>
#include <intrin.h>

namespace {

/// Differs from process to process and from load to load; no more is asked of it, and the system's own
/// libraries make theirs in the same way.
__attribute__((no_stack_protector)) std::uintptr_t MakeSecret() noexcept {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    std::uint64_t secret = reinterpret_cast<std::uintptr_t>(&time); // where this thread's stack is
    for (const std::uint64_t part : {std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime,
                                     static_cast<std::uint64_t>(counter.QuadPart), std::uint64_t{__rdtsc()},
                                     std::uint64_t{GetCurrentProcessId()} << 32 | GetCurrentThreadId(),
                                     std::uint64_t{reinterpret_cast<std::uintptr_t>(&MakeSecret)}}) {
        secret = (secret ^ part) * 0x9E3779B97F4A7C15;
        secret ^= secret >> 29;
    }
    // A text that overruns its buffer ends at a zero byte, and so cannot bring one along.
    return secret & ~std::uintptr_t{0xFF};
}

} // namespace

extern "C" {

extern std::uintptr_t __stack_chk_guard;
std::uintptr_t __stack_chk_guard = 0;

/// The stack or a buffer is overrun: nothing that the process might still do can be trusted.
[[noreturn]] void __stack_chk_fail();
void __stack_chk_fail() {
    // __fastfail, which these headers lack: no handler of the host's is asked.
    constexpr unsigned StackCookieCheckFailure = 2;
    __asm__ volatile("int $0x29" : : "c"(StackCookieCheckFailure));
    __builtin_unreachable();
}
void __chk_fail() { __stack_chk_fail(); }

} // extern "C"

namespace {

// Before every other constructor: a protected function must not see the secret change.
__attribute__((constructor(101), no_stack_protector)) void SetSecret() { __stack_chk_guard = MakeSecret(); }

} // namespace
