#include "Common/LogPolicy.h"

#include <algorithm>
#include <cwctype>
#include <string_view>

namespace Zuvan::Lumeq::Common {

namespace {

/// The last second of 32-bit time, in milliseconds.
constexpr std::int64_t LastMilliseconds = 2147483647000;

bool IsSpace(wchar_t unit) { return std::iswspace(unit) != 0; }

bool TakeHyphen(std::wstring_view& text) {
    if (!text.starts_with(L'-'))
        return false;
    text.remove_prefix(1);
    return true;
}

/// Removes one to `digits` digits from the start of the text.
std::optional<int> TakeNumber(std::wstring_view& text, std::size_t digits, int least, int most) {
    const auto isDigit = [](wchar_t unit) { return unit >= L'0' && unit <= L'9'; };
    const std::wstring_view longest = text.substr(0, digits);
    const auto end = std::find_if_not(longest.begin(), longest.end(), isDigit);
    int value = 0;
    for (auto digit = longest.begin(); digit != end; ++digit)
        value = value * 10 + (*digit - L'0');
    text.remove_prefix(static_cast<std::size_t>(end - longest.begin()));
    if (end == longest.begin() || value < least || value > most)
        return std::nullopt;
    return value;
}

std::optional<std::int64_t> LogDateMilliseconds(const std::wstring& text) {
    std::optional<std::tm> date = ParseLogDate(text);
    if (!date)
        date = ParseLogDate(DefaultLogDate);
    const std::int64_t seconds = _mktime64(&*date);
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

std::optional<std::tm> ParseLogDate(std::wstring_view text) {
    text.remove_prefix(
        static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsSpace) - text.begin()));
    const std::optional<int> year = TakeNumber(text, 4, 0, 9999);
    if (!year || !TakeHyphen(text))
        return std::nullopt;
    const std::optional<int> month = TakeNumber(text, 2, 1, 12);
    if (!month || !TakeHyphen(text))
        return std::nullopt;
    if (!text.empty() && IsSpace(text.front())) // "%d" permits one
        text.remove_prefix(1);
    const std::optional<int> day = TakeNumber(text, 2, 1, 31);
    if (!day)
        return std::nullopt;
    std::tm date{};
    date.tm_year = *year - 1900;
    date.tm_mon = *month - 1;
    date.tm_mday = *day;
    return date;
}

bool IsLogDateOpen(const std::wstring& date, std::int64_t nowMilliseconds) {
    const std::optional<std::int64_t> end = LogDateMilliseconds(date);
    const bool nowKnown = nowMilliseconds <= LastMilliseconds;
    const std::int64_t difference = end && nowKnown ? nowMilliseconds - *end : -1;
    return difference <= 0;
}

} // namespace Zuvan::Lumeq::Common
