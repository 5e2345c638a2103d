// Times of actions that are too fast for one reading of the clock, which steps by 100 ns under Wine.
#pragma once

#include <functional>
#include <vector>

namespace LumeqBench {

using Action = std::function<void()>;

/// Microseconds per call of each action: the median of its batches. Warms up, then runs a batch of each
/// action in turn, so that other load on the machine affects all of them alike.
std::vector<double> MicrosecondsPerCall(const std::vector<Action>& actions);

/// Of one call, for actions that can happen only once.
double MicrosecondsOnce(const Action& action);

/// Of actions that must alternate: medians of single calls.
std::vector<double> MicrosecondsInTurn(const std::vector<Action>& actions);

/// Prints one line: the action, its circumstances, microseconds.
void Report(const char* name, const char* circumstances, double microseconds);

} // namespace LumeqBench
