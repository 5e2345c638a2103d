#include "Common/Debugger.h"

#include <windows.h>

namespace Zuvan::Lumeq::Common {

void BreakIfDebugged() {
    if (IsDebuggerPresent())
        DebugBreak();
}

void ReportToDebugger(const wchar_t* prefix, const char* failure) {
    OutputDebugStringW(prefix);
    OutputDebugStringA(failure);
    OutputDebugStringW(L"\n");
    BreakIfDebugged();
}

void TraceToDebugger(const std::wstring& text) { OutputDebugStringW(text.c_str()); }

} // namespace Zuvan::Lumeq::Common
