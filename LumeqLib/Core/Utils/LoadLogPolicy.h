// The log's policy as the factory settings define it.
#pragma once

#include <functional>
#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Returns the factory setting of a key, empty if there is none. May throw.
using FactorySettingReader = std::function<std::wstring(const std::wstring& key)>;

/// What was read.
struct LogPolicySettings {
    std::wstring level; ///< `LogLevel` in lower case.
    bool levelValid = false;
    std::wstring log; ///< `Log` in lower case.
    bool logValid = false;
    std::wstring date; ///< `LogDate`, read only if `log` is "date".
};

/// Sets the log's verbosity and whether it is enabled. If the reader throws, reports that to the debugger and
/// leaves the rest as it was.
LogPolicySettings ApplyLogPolicy(const FactorySettingReader& read);

/// Logs what was read and its effect.
void TraceLogPolicy(const LogPolicySettings& settings);

} // namespace Zuvan::Lumeq::Core::Utils
