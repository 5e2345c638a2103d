#include "Common/LogPolicy.h"

#include "Common/AsciiCharacters.h"

#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace Zuvan::Lumeq::Common {

namespace {

/// The last second of 32-bit time, in milliseconds.
constexpr std::int64_t LastMilliseconds = 2147483647000;

bool ParseDate(const std::wstring& text, std::tm& date) {
    std::wistringstream stream(text);
    stream.imbue(With<AsciiCharacters>(std::locale()));
    stream >> std::get_time(&date, L"%Y-%m-%d");
    // Some standard libraries do not report a text that ends early as a failure.
    return !stream.fail() && date.tm_mday != 0;
}

std::optional<std::int64_t> LogDateMilliseconds(const std::wstring& text) {
    std::tm date{};
    if (!ParseDate(text.empty() ? DefaultLogDate : text, date))
        ParseDate(DefaultLogDate, date);
    const std::int64_t seconds = _mktime64(&date);
    // Only the low half of the seconds is tested for its sign; the limit catches later dates.
    if (static_cast<std::int32_t>(seconds) < 0 || seconds * 1000 > LastMilliseconds)
        return std::nullopt;
    return seconds * 1000;
}

} // namespace

std::optional<SeverityLevel> ParseLogLevel(const std::wstring& logLevel) {
    if (logLevel == L"error")
        return SeverityLevel::ERROR;
    if (logLevel == L"warning")
        return SeverityLevel::WARNING;
    if (logLevel == L"trace")
        return SeverityLevel::TRACE;
    if (logLevel == L"debug")
        return SeverityLevel::DEBUG;
    return std::nullopt;
}

bool IsLogDateOpen(const std::wstring& date, std::int64_t nowMilliseconds) {
    const std::optional<std::int64_t> end = LogDateMilliseconds(date);
    const bool nowKnown = nowMilliseconds <= LastMilliseconds;
    const std::int64_t difference = end && nowKnown ? nowMilliseconds - *end : -1;
    return difference <= 0;
}

} // namespace Zuvan::Lumeq::Common
