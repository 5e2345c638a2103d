#include "Common/LogLine.h"

#include "Common/Clock.h"
#include "Common/Format.h"
#include "Common/Text.h"

#include <algorithm>

namespace Zuvan::Lumeq::Common {

namespace {

void ReplaceAll(std::wstring& text, wchar_t unit, const wchar_t* replacement) {
    for (std::size_t at = text.find(unit); at != std::wstring::npos; at = text.find(unit, at))
        text.replace(at, 1, replacement);
}

std::wstring LeftAligned(std::wstring text, wchar_t fill) {
    constexpr std::size_t Width = 8;
    text.resize(std::max(text.size(), Width), fill);
    return text;
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
    return L"[Undefined SeverityLevel value: " + DecimalText(static_cast<std::int32_t>(level)) + L"]";
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
    std::wstring text = LogTimestamp(epochMilliseconds) + L' ' + LeftAligned(SeverityText(level), L' ');
    // The zeros are to the right of the digits. Readers of the log depend on that.
    text += L"0x" + LeftAligned(FormatBounded(16, L"%x", threadId).text, L'0');
    text += functionName.empty() ? L" | " : L" | <" + functionName + L"> ";
    text += message;
    ReplaceAll(text, L'\n', L"\\n");
    ReplaceAll(text, L'\r', L"\\r");
    return text;
}

} // namespace Zuvan::Lumeq::Common
