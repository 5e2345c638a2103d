// The frame of the operations that use the settings on the basic road: COM for their duration, and a report
// of what they throw. Includes windows.h: for source files only.
#pragma once

#include "Common/CaughtFailure.h"
#include "Common/ComScope.h"
#include "Common/Logger.h"
#include "LumeqShim/FailureLines.h"

#include <string>

namespace Zuvan::LumeqShim {

/// The fixed texts of one operation. Those that its frame does not use are null.
struct BasicOperation {
    Lumeq::Common::LogSource log;
    const wchar_t* name;
    const wchar_t* comLine = nullptr;
    const wchar_t* durationLabel = nullptr;
};

/// Runs `work`, which returns the operation's result. If it throws, logs that and returns false. Throws only
/// if the failure cannot be logged.
template <class Work>
bool RunReported(const BasicOperation& operation, Work work) {
    try {
        return work();
    } catch (...) {
        Lumeq::Common::VisitCaughtFailure(FailureLines{operation.log, operation.name});
        return false;
    }
}

/// The same with COM initialised for the work. Returns false, without the work, if that fails.
template <class Work>
bool RunInCom(const BasicOperation& operation, Work work) {
    using Lumeq::Common::SeverityLevel;
    const Lumeq::Common::ComScope com(std::wstring(L"Zuvan::LumeqShim::") + operation.name);
    operation.log(SeverityLevel::DEBUG, operation.comLine, com.Result());
    if (com.Result() >= 0)
        return RunReported(operation, work);
    operation.log(SeverityLevel::WARNING, L"ComInitialize failed 0x%08lx", com.Result());
    return false;
}

/// Logs how long the work took; `labelArguments` belong to the duration label. Returns false if the work
/// throws, and does not log that: an exception comes here only if memory does not suffice for its report.
template <class Work, class... LabelArguments>
bool RunTimed(const BasicOperation& operation, Work work, LabelArguments... labelArguments) noexcept {
    try {
        const Lumeq::Common::ScopedDurationLog duration(operation.durationLabel, labelArguments...);
        return work();
    } catch (...) {
        return false;
    }
}

} // namespace Zuvan::LumeqShim
