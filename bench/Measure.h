// Times of things too fast for one reading of the clock, whose steps are 100 ns under Wine.
#pragma once

#include <functional>

namespace LumeqBench {

using Action = std::function<void()>;

/// Warms up, then takes the median over several batches of calls.
double MicrosecondsPerCall(const Action& action);

/// Of one call, for what can happen only once or takes long.
double MicrosecondsOnce(const Action& action);

/// Of two actions that can only be called in turn, as MicrosecondsPerCall.
struct Turns {
    double first;
    double second;
};
Turns MicrosecondsPerTurn(const Action& first, const Action& second);

/// Prints one line: what was measured, under which circumstances, microseconds.
void Report(const char* name, const char* circumstances, double microseconds);

} // namespace LumeqBench
