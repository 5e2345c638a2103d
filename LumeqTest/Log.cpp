// The log, in memory. Every line is kept, and so composed, whatever its level.
#include "Common/Logger.h"

#include "Common/Debugger.h"
#include "Common/Utf.h"
#include "LumeqTest/RecordedCall.h"
#include "LumeqTest/Recording.h"

#include <array>
#include <cstdarg>
#include <cwchar>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr std::size_t LongestMessage = 4096;

const wchar_t* LevelName(SeverityLevel level) {
    static constexpr std::array names{L"DATA", L"ERROR", L"WARNING", L"TRACE", L"DEBUG"};
    return names[static_cast<std::size_t>(level)];
}

/// A line break would begin a line of its own.
std::wstring OneLine(const std::wstring& text) {
    std::wstring line;
    for (const wchar_t unit : text)
        line += unit == L'\n' ? L"\\n" : unit == L'\r' ? L"\\r" : std::wstring(1, unit);
    return line;
}

/// The library reports each failure of a call as a line of this kind.
bool IsReport(SeverityLevel level, const wchar_t* sourceFile, const wchar_t* functionName) {
    return level == SeverityLevel::ERROR && functionName == nullptr &&
           std::wcscmp(sourceFile, L"LumeqApi") == 0;
}

} // namespace

void LogMessage(SeverityLevel level, const wchar_t* sourceFile, int, const wchar_t* functionName,
                const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::wstring message = FormatBoundedV(LongestMessage, format, arguments).text;
    va_end(arguments);
    Double::RecordedCall* const call = Double::RecordedCall::Current();
    if (call && IsReport(level, sourceFile, functionName))
        call->Report(message);
    WriteLogLine(level, functionName ? functionName : L"", message);
}

bool IsLogged(SeverityLevel) noexcept { return true; }

void WriteLogLine(SeverityLevel level, const std::wstring& functionName, const std::wstring& message) {
    const std::wstring line =
        LevelName(level) + (functionName.empty() ? L" " : L" " + functionName + L": ") + message;
    const Double::LockedRecording recording;
    recording->log.push_back(ToUtf8Lossy(OneLine(line)));
}

} // namespace Zuvan::Lumeq::Common
