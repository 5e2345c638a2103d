// Times of things too fast for one reading of the clock, whose steps are 100 ns under Wine.
#pragma once

#include <functional>
#include <vector>

namespace LumeqBench {

using Action = std::function<void()>;

/// Microseconds per call of each action. Warms up, then goes round the actions, a batch of calls each, so
/// that whatever else keeps the machine busy falls on all of them alike; gives the medians of the batches.
std::vector<double> MicrosecondsPerCall(const std::vector<Action>& actions);

/// Of one call, for what can happen only once.
double MicrosecondsOnce(const Action& action);

/// Of actions that can only be called in turn: medians of single calls.
std::vector<double> MicrosecondsInTurn(const std::vector<Action>& actions);

/// Prints one line: what was measured, under which circumstances, microseconds.
void Report(const char* name, const char* circumstances, double microseconds);

} // namespace LumeqBench
