// Whether and how much is logged, by the factory settings and the date.
#pragma once

#include "Common/LogLine.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Common {

/// The last moment of logging if the settings name no other, as a local date.
inline constexpr wchar_t DefaultLogDate[] = L"2017-07-07";

/// The severity that a lower-case `LogLevel` names; nothing for any other text. Pure.
std::optional<SeverityLevel> ParseLogLevel(const std::wstring& logLevel);

/// The date that a text begins with, by the rules of std::get_time for "%Y-%m-%d": white space may come
/// first, numbers may have fewer digits, and anything may follow. Nothing for any other text. Pure.
std::optional<std::tm> ParseLogDate(std::wstring_view text);

/// Whether logging is still on. `date` is "%Y-%m-%d" and means midnight local time; an empty or malformed one
/// counts as DefaultLogDate. `nowMilliseconds` counts from 1970-01-01 UTC. A date or a time that cannot be
/// represented leaves logging on.
bool IsLogDateOpen(const std::wstring& date, std::int64_t nowMilliseconds);

/// Sets the log's switches from the factory settings. The log calls this once, at its first line. The
/// definition is beside the settings, one layer up, because the settings use the log themselves.
void LoadLogPolicy();

} // namespace Zuvan::Lumeq::Common
