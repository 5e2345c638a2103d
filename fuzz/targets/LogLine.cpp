// The log line, compared with its layout composed in another way.
#include "Common/LogLine.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/Require.h"

#include <chrono>
#include <cstdio>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

// The years 1970 to 2999, which the calendar of every runtime can split.
constexpr std::uint64_t Span = 32503680000000;

std::string Timestamp(std::int64_t milliseconds) {
    using namespace std::chrono;
    const sys_time<std::chrono::milliseconds> time{std::chrono::milliseconds(milliseconds)};
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()) + 1, static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return text;
}

std::string Severity(std::int32_t level) {
    constexpr const char* Names[] = {"DATA    ", "ERROR   ", "WARNING ", "TRACE   ", "DEBUG   "};
    if (level >= 0 && level < 5)
        return Names[level];
    return "[Undefined SeverityLevel value: " + std::to_string(level) + "]";
}

std::string Thread(std::uint32_t number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%x", number);
    return "0x" + std::string(digits) + std::string(8 - std::string(digits).size(), '0');
}

std::wstring Escaped(const std::wstring& text) {
    std::wstring escaped;
    for (const wchar_t unit : text)
        escaped += unit == L'\n' ? L"\\n" : unit == L'\r' ? L"\\r" : std::wstring(1, unit);
    return escaped;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const auto time = static_cast<std::int64_t>(static_cast<std::uint64_t>(input.Number()) % Span);
    const auto level = static_cast<std::int32_t>(input.Number());
    const auto thread = static_cast<std::uint32_t>(input.Number());
    const std::wstring function = input.Line();
    const std::wstring part = input.Line();
    // A message of thousands of line breaks from an input of a few bytes.
    std::wstring message = part;
    for (std::int64_t times = input.Number() & 0x3FF; times > 0; --times)
        message += part;

    const std::wstring line =
        Common::LogLine(time, static_cast<Common::SeverityLevel>(level), thread, function, message);
    const std::string head = Timestamp(time) + ' ' + Severity(level) + Thread(thread);
    const std::wstring frame = function.empty() ? L" | " : L" | <" + Escaped(function) + L"> ";
    Require(line == std::wstring(head.begin(), head.end()) + frame + Escaped(message),
            "a line has the required layout");
    Require(line.find_first_of(L"\r\n") == line.npos, "a call is one line");
    return 0;
}
