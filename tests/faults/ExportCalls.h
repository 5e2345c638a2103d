// Every export with typical arguments and the expected results.
#pragma once

#include "support/FailingLibrary.h"

#include <Lumeq/LumeqApi.h>

#include <iosfwd>
#include <span>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// State that a host keeps between its calls.
struct HostState {
    API::TaskHandle task = nullptr;
    std::wstring text;
    bool userHasOptedIn = false;
};

using ExportCall = void (*)(const FailingLibrary& library, HostState& host);

/// One export. Log lines are messages; a task's address in them reads "<task>".
struct ExportCase {
    const char* name;
    /// Opens the task for a Completed export; null for all others.
    ExportCall open = nullptr;
    ExportCall accepted;
    /// Completes the task of an Initiated export; null for all others.
    ExportCall close = nullptr;
    const char* trace; ///< TRACE line of the accepted call, for an export with a result the second one.
    /// Last call to the companion library: an operation with its arguments, or an event as CompanionEvents
    /// returns it. Null if there is none.
    const wchar_t* delivered = nullptr;
    /// Contents of the local settings on the basic road afterwards; null if they do not matter.
    const char* stored = nullptr;
    /// Whether the export uses the local settings, which are those of an opted-in user, and whether these
    /// contain the mark of a pause.
    bool usesSettings = false;
    bool isPaused = false;
    /// Call with a bad argument, and its ERROR line without the executable's name at the start and the source
    /// position at the end; null if no argument can be bad.
    ExportCall refused = nullptr;
    const char* complaint = nullptr;
};
std::ostream& operator<<(std::ostream& stream, const ExportCase& exported);

/// Sorted by name.
std::span<const ExportCase> ExportCases();

const ExportCase& FindExportCase(const std::string& name);

} // namespace Zuvan::Lumeq::Testing
