#include "Common/LogLine.h"

#include "Common/Clock.h"
#include "Common/Format.h"

#include <iomanip>
#include <sstream>

namespace Zuvan::Lumeq::Common {

namespace {

void ReplaceAll(std::wstring& text, wchar_t unit, const wchar_t* replacement) {
    for (std::size_t at = text.find(unit); at != std::wstring::npos; at = text.find(unit, at))
        text.replace(at, 1, replacement);
}

} // namespace

std::wstring SeverityText(SeverityLevel level) {
    switch (level) {
    case SeverityLevel::DATA:
        return L"DATA";
    case SeverityLevel::ERROR:
        return L"ERROR";
    case SeverityLevel::WARNING:
        return L"WARNING";
    case SeverityLevel::TRACE:
        return L"TRACE";
    case SeverityLevel::DEBUG:
        return L"DEBUG";
    }
    return L"[Undefined SeverityLevel value: " + std::to_wstring(static_cast<std::int32_t>(level)) + L"]";
}

std::wstring LogTimestamp(std::int64_t epochMilliseconds) {
    const std::tm utc = UtcCalendar(epochMilliseconds / 1000);
    // Readers of the log depend on the UTC hour plus one, 01 to 24, despite the Z.
    return FormatBounded(64, L"%.4d-%.2d-%.2dT%.2d:%.2d:%.2d.%.3dZ", utc.tm_year + 1900, utc.tm_mon + 1,
                         utc.tm_mday, utc.tm_hour + 1, utc.tm_min, utc.tm_sec,
                         static_cast<int>(epochMilliseconds % 1000))
        .text;
}

std::wstring LogLine(std::int64_t epochMilliseconds, SeverityLevel level, std::uint32_t threadId,
                     const std::wstring& functionName, const std::wstring& message) {
    std::wostringstream line;
    line.exceptions(std::ios::badbit); // out of memory: lose the line, do not cut it
    // The left alignment of the severity also applies to the thread number, so its zeros are to the right of
    // the digits. Readers of the log depend on that.
    line << LogTimestamp(epochMilliseconds) << L' ' << std::left << std::setw(8) << SeverityText(level)
         << L"0x" << std::hex << std::setw(8) << std::setfill(L'0') << threadId;
    if (functionName.empty())
        line << L" | ";
    else
        line << L" | <" << functionName << L"> ";
    line << message;

    std::wstring text = line.str();
    ReplaceAll(text, L'\n', L"\\n");
    ReplaceAll(text, L'\r', L"\\r");
    return text;
}

} // namespace Zuvan::Lumeq::Common
