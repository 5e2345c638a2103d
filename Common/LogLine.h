// What a line of the log looks like. Pure functions.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// What a line is about, in the order of verbosity.
enum class SeverityLevel : std::int32_t {
    DATA = 0,    ///< What goes over the wire. Written whatever the verbosity.
    ERROR = 1,   ///< A failed check.
    WARNING = 2, ///< A failure that was handled.
    TRACE = 3,   ///< An export's arguments.
    DEBUG = 4,   ///< Progress.
};

/// Never fails: a value outside the enumeration gives the undefined-value text.
std::wstring SeverityText(SeverityLevel level);

/// `epochMilliseconds`: since 1970-01-01 UTC.
std::wstring LogTimestamp(std::int64_t epochMilliseconds);

/// One whole line without its line end. `functionName` may be empty.
std::wstring LogLine(std::int64_t epochMilliseconds, SeverityLevel level, std::uint32_t threadId,
                     const std::wstring& functionName, const std::wstring& message);

} // namespace Zuvan::Lumeq::Common
