// The debugger channel: where failures go that cannot be logged.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// Stops in an attached debugger; without one nothing happens.
void BreakIfDebugged();

/// Sends the two texts and a line feed, then stops in an attached debugger.
void ReportToDebugger(const wchar_t* prefix, const char* failure);

/// Sends one text.
void TraceToDebugger(const std::wstring& text);

} // namespace Zuvan::Lumeq::Common
