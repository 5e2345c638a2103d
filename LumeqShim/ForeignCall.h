// Calls into the managed runtime and into code that runs on it.
//
// What the managed runtime fails to catch leaves it as a structured exception of its own. The compiler's
// catch clauses do not see those everywhere, so one would end the host.
#pragma once

#include <type_traits>

namespace Zuvan::LumeqShim {

/// Thrown in place of an exception of the managed runtime. Deliberately no std::exception: all that is known
/// of such a failure is that it happened.
struct ManagedException {};

/// Calls `function` with `argument`. Returns false if an exception of the managed runtime left it. C++
/// exceptions pass through, and so does every other structured exception.
extern "C" bool LumeqCallGuarded(void (*function)(void*), void* argument);

/// Returns what `call` returns, or throws ManagedException. A managed exception runs no destructors between
/// its origin and this function, so `call` does nothing but call foreign code, and owns nothing.
template <class Call>
std::invoke_result_t<Call&> CallForeign(Call call) {
    using Result = std::invoke_result_t<Call&>;
    if constexpr (std::is_void_v<Result>) {
        if (!LumeqCallGuarded([](void* context) { (*static_cast<Call*>(context))(); }, &call))
            throw ManagedException();
    } else {
        static_assert(std::is_scalar_v<Result>);
        Result result{};
        CallForeign([&call, &result]() -> void { result = call(); });
        return result;
    }
}

} // namespace Zuvan::LumeqShim
