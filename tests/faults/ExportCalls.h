// Every export with representative arguments, and what comes of it.
#pragma once

#include "support/FailingLibrary.h"

#include <Lumeq/LumeqApi.h>

#include <iosfwd>
#include <span>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// What a host keeps between its calls.
struct HostState {
    API::TaskHandle task = nullptr;
    std::wstring text;
    bool userHasOptedIn = false;
};

using ExportCall = void (*)(const FailingLibrary& library, HostState& host);

/// One export. Lines of the log are messages, in which a task's address reads "<task>".
struct ExportCase {
    const char* name;
    /// Opens the task that a Completed export wants; null for the others.
    ExportCall open = nullptr;
    ExportCall accepted;
    /// Completes what an Initiated export has opened; null for the others.
    ExportCall close = nullptr;
    const char* trace; ///< A line at TRACE of the accepted call, its last where it gives something back.
    /// What the companion library is given last: an operation with its arguments, or an event as
    /// CompanionEvents gives it; null for nothing.
    const wchar_t* delivered = nullptr;
    /// What stands in the local settings on the basic road afterwards; null for nothing in particular.
    const char* stored = nullptr;
    /// Whether the export uses the local settings, which are an opted-in user's, and whether they hold the
    /// mark of a pause then.
    bool usesSettings = false;
    bool isPaused = false;
    /// With an argument that is refused, and the line at ERROR, without the executable's name in front and
    /// the place behind it; null where nothing is refused.
    ExportCall refused = nullptr;
    const char* complaint = nullptr;
};
std::ostream& operator<<(std::ostream& stream, const ExportCase& exported);

/// In the order of their names.
std::span<const ExportCase> ExportCases();

const ExportCase& FindExportCase(const std::string& name);

} // namespace Zuvan::Lumeq::Testing
