// Whether and how much is logged, as the factory settings and the date say.
#pragma once

#include "Common/LogLine.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Zuvan::Lumeq::Common {

/// The last moment of logging where the settings name no other, as a local date.
inline constexpr wchar_t DefaultLogDate[] = L"2017-07-07";

/// The severity that a lower-case `LogLevel` names, nothing for any other text. Pure.
std::optional<SeverityLevel> ParseLogLevel(const std::wstring& logLevel);

/// Whether logging is still on. `date` as "%Y-%m-%d", midnight local time; an empty or malformed one counts
/// as DefaultLogDate. `nowMilliseconds` since 1970-01-01 UTC. A date or a time that cannot be told leaves
/// logging on.
bool IsLogDateOpen(const std::wstring& date, std::int64_t nowMilliseconds);

/// Reads the policy from the factory settings into the log. The log calls it once, at its first line. Defined
/// beside the settings, one layer up: the settings know the log, and so the log knows this declaration alone.
void LoadLogSettings();

} // namespace Zuvan::Lumeq::Common
