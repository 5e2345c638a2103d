// The frame of the operations that use the settings on the basic road: COM for their duration, and a report
// of what they throw. Includes windows.h: for source files only.
#pragma once

#include "Common/ComScope.h"
#include "Common/Logger.h"
#include "LumeqShim/FailureLines.h"

#include <optional>
#include <string>

namespace Zuvan::LumeqShim {

/// The fixed texts of one operation. Those that its frame does not use are null.
struct BasicOperation {
    Lumeq::Common::LogSource log;
    const wchar_t* name;
    const wchar_t* comLine = nullptr;
    const wchar_t* durationLabel = nullptr;
};

/// Runs `work`, which returns the operation's result. If it throws, logs that and returns false. A report
/// that fails as well is dropped.
template <class Work>
bool RunReported(const BasicOperation& operation, Work work) noexcept {
    try {
        return work();
    } catch (...) {
        LogCaughtFailure(FailureLines{operation.log, operation.name});
        return false;
    }
}

/// The same with COM initialised for the work. Returns false, without the work, if that fails.
template <class Work>
bool RunInCom(const BasicOperation& operation, Work work) noexcept {
    using Lumeq::Common::SeverityLevel;
    std::optional<Lumeq::Common::ComScope> com; // Outlives the report, whose line comes first.
    return RunReported(operation, [&] {
        com.emplace(std::wstring(L"Zuvan::LumeqShim::") + operation.name);
        operation.log(SeverityLevel::DEBUG, operation.comLine, com->Result());
        if (com->Result() >= 0)
            return work();
        operation.log(SeverityLevel::WARNING, L"ComInitialize failed 0x%08lx", com->Result());
        return false;
    });
}

/// The same without COM, and logs how long the work took; `labelArguments` belong to the duration label.
template <class Work, class... LabelArguments>
bool RunTimed(const BasicOperation& operation, Work work, LabelArguments... labelArguments) noexcept {
    std::optional<Lumeq::Common::ScopedDurationLog> duration; // Outlives the report, whose line comes first.
    return RunReported(operation, [&] {
        duration.emplace(operation.durationLabel, labelArguments...);
        return work();
    });
}

} // namespace Zuvan::LumeqShim
