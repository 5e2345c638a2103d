// The layout of a log line. Pure functions.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// The subject of a line, in order of verbosity.
enum class SeverityLevel : std::int32_t {
    DATA = 0,    ///< What goes over the wire. Written at every verbosity.
    ERROR = 1,   ///< A failed check.
    WARNING = 2, ///< A failure that was handled.
    TRACE = 3,   ///< An export's arguments.
    DEBUG = 4,   ///< Progress.
};

/// Never fails: for a value outside the enumeration, returns a text that says so.
std::wstring SeverityText(SeverityLevel level);

/// `epochMilliseconds` counts from 1970-01-01 UTC.
std::wstring LogTimestamp(std::int64_t epochMilliseconds);

/// One complete line without its line end. `functionName` may be empty.
std::wstring LogLine(std::int64_t epochMilliseconds, SeverityLevel level, std::uint32_t threadId,
                     const std::wstring& functionName, const std::wstring& message);

} // namespace Zuvan::Lumeq::Common
