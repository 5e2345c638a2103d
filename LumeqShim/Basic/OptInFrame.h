// What the operations of the opt-in store have in common. Includes windows.h: for source files only.
#pragma once

#include "Common/ComScope.h"
#include "Common/Logger.h"

#include <string>

namespace Zuvan::LumeqShim {

/// The fixed texts of one operation.
struct OptInOperation {
    const wchar_t* name;
    const wchar_t* durationLabel;
    const wchar_t* comLine;
};

template <class... Arguments>
void LogOptIn(Lumeq::Common::SeverityLevel level, const wchar_t* format, Arguments... arguments) {
    Lumeq::Common::LogMessage(level, L"LumeqShim\\BasicOptIn", __LINE__, nullptr, format, arguments...);
}

/// For a handler: logs the exception that is being handled.
void LogCaughtInOptIn(const OptInOperation& operation);

/// Logs whatever the work throws and gives false then. Throws only if that cannot be logged.
template <class Work>
bool RunGuarded(const OptInOperation& operation, Work work) {
    try {
        return work();
    } catch (...) {
        LogCaughtInOptIn(operation);
        return false;
    }
}

/// Logs how long the work took. Gives false for whatever it throws: not even a report could be made of that.
template <class Work, class... LabelArguments>
bool RunTimed(const OptInOperation& operation, Work work, LabelArguments... labelArguments) noexcept {
    try {
        const Lumeq::Common::ScopedDurationLog duration(operation.durationLabel, labelArguments...);
        return work();
    } catch (...) {
        return false;
    }
}

/// Runs the work, which gives the operation's result. `labelArguments` are those of the duration label.
/// Nothing escapes.
template <class Work, class... LabelArguments>
bool RunOptInWithoutCom(const OptInOperation& operation, Work work,
                        LabelArguments... labelArguments) noexcept {
    return RunTimed(
        operation, [&] { return RunGuarded(operation, work); }, labelArguments...);
}

/// The same with COM initialised for the work. The work is not run where that fails.
template <class Work, class... LabelArguments>
bool RunOptIn(const OptInOperation& operation, Work work, LabelArguments... labelArguments) noexcept {
    using Lumeq::Common::SeverityLevel;
    const auto workInCom = [&] {
        const Lumeq::Common::ComScope com(std::wstring(L"Zuvan::LumeqShim::") + operation.name);
        LogOptIn(SeverityLevel::DEBUG, operation.comLine, com.Result());
        if (com.Result() >= 0)
            return RunGuarded(operation, work);
        LogOptIn(SeverityLevel::WARNING, L"ComInitialize failed 0x%08lx", com.Result());
        return false;
    };
    return RunTimed(operation, workInCom, labelArguments...);
}

} // namespace Zuvan::LumeqShim
