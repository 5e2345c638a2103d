// The debugger channel, which receives the failures that cannot be logged.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// Stops in an attached debugger; does nothing without one.
void BreakIfDebugged();

/// Sends the two texts and a line feed, then stops in an attached debugger.
void ReportToDebugger(const wchar_t* prefix, const char* failure);

/// In a catch clause: reports the exception that is being handled.
void ReportCaughtToDebugger(const wchar_t* prefix);

/// Sends one text.
void TraceToDebugger(const std::wstring& text);

} // namespace Zuvan::Lumeq::Common
