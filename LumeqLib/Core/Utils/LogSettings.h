// The log's policy as the factory settings tell it.
#pragma once

#include <functional>
#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Gives the factory setting of a key, empty if there is none. May throw.
using FactorySettingReader = std::function<std::wstring(const std::wstring& key)>;

/// What was read.
struct LogSettings {
    std::wstring level; ///< `LogLevel` in lower case.
    bool levelValid = false;
    std::wstring log; ///< `Log` in lower case.
    bool logValid = false;
    std::wstring date; ///< `LogDate`, read only where `log` is "date".
};

/// Sets the log's verbosity and whether it is enabled. A reader that throws is reported to the debugger, and
/// what was not decided by then stays as it was.
LogSettings ApplyLogSettings(const FactorySettingReader& read);

/// Logs what was read and what came of it.
void TraceLogSettings(const LogSettings& settings);

} // namespace Zuvan::Lumeq::Core::Utils
