// The firewall of delivery: a region of code out of which no failure comes.
#pragma once

#include <utility>

namespace Zuvan::LumeqShim {

/// Logs the exception that is being handled, at WARNING, as a failure of `logName`. What the report itself
/// raises is dropped. Only in a catch clause.
void ReportCaughtFailure(const wchar_t* logName) noexcept;

/// Runs `action`. Gives false if it raised something, which is then logged under `logName`.
template <class Action>
bool RunRegion(const wchar_t* logName, Action&& action) noexcept {
    try {
        std::forward<Action>(action)();
        return true;
    } catch (...) {
        ReportCaughtFailure(logName);
        return false;
    }
}

} // namespace Zuvan::LumeqShim
