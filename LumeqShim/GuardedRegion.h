// The firewall of delivery: nothing that is thrown in a region leaves it.
#pragma once

#include <utility>

namespace Zuvan::LumeqShim {

/// In a catch clause: logs the exception that is being handled, at WARNING, as a failure of `logName`. Drops
/// whatever the report itself throws.
void ReportCaughtFailure(const wchar_t* logName) noexcept;

/// Runs `action`. Returns false if it threw, which is then logged under `logName`.
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
