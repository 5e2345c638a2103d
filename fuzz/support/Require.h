#pragma once

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace Zuvan::Lumeq::Fuzzing {

/// Reports the broken promise and ends the run; libFuzzer keeps the input.
inline void Require(bool holds, const char* promise) {
    if (holds)
        return;
    std::fprintf(stderr, "Broken: %s\n", promise);
    std::abort();
}

/// The text of the exception of exactly this type that `action` throws; none if it throws nothing. Any other
/// exception passes through.
template <class Exception, class Action>
std::optional<std::string> Thrown(Action action) {
    try {
        action();
    } catch (const Exception& failure) {
        return failure.what();
    }
    return std::nullopt;
}

} // namespace Zuvan::Lumeq::Fuzzing
