#pragma once

namespace Zuvan::Lumeq::Core::Utils {

/// For a handler: sends the prefix and the text of the exception that is being handled to the debugger
/// channel.
void ReportCaughtToDebugger(const wchar_t* prefix);

} // namespace Zuvan::Lumeq::Core::Utils
