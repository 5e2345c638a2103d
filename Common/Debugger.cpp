#include "Common/Debugger.h"

#include "Common/CaughtFailure.h"
#include "Common/ComError.h"
#include "Common/Utf.h"

namespace Zuvan::Lumeq::Common {

namespace {

struct DebuggerReport {
    void operator()(const _com_error& failure) const {
        ReportToDebugger(prefix, ToUtf8Lossy(ComErrorText(failure.Error())).c_str());
    }
    void operator()(const std::exception& failure) const { ReportToDebugger(prefix, failure.what()); }
    void operator()() const { ReportToDebugger(prefix, "???"); }

    const wchar_t* prefix;
};

} // namespace

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

void ReportCaughtToDebugger(const wchar_t* prefix) { VisitCaughtFailure(DebuggerReport{prefix}); }

void TraceToDebugger(const std::wstring& text) { OutputDebugStringW(text.c_str()); }

} // namespace Zuvan::Lumeq::Common
