// The log: lines in text files of the user's temporary folder, shared by all processes that use the library.
//
// Off unless the factory settings turn it on. A failure of the log itself goes to the debugger channel and
// never to the caller. Any thread may log; the named mutex Global\LumeqLoggingMutex serialises the writing
// between threads and processes, and a line that waits for it longer than 1,000 ms is lost.
#pragma once

#include "Common/Format.h"
#include "Common/LogLine.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// Writes one line. `functionName` may be null. `sourceFile` and `sourceLine` are not written. The message is
/// cut at 4,095 characters.
void LogMessage(SeverityLevel level, const wchar_t* sourceFile, int sourceLine, const wchar_t* functionName,
                const wchar_t* format, ...);

/// False when a line of this level is known to be dropped, so that its making can be spared. True until the
/// first line has read the policy.
bool IsLogged(SeverityLevel level) noexcept;

/// For the policy, which runs inside the first line: writes without asking for the policy again.
void WriteLogLine(SeverityLevel level, const std::wstring& functionName, const std::wstring& message);

/// For the policy.
void EnableLogging(bool enabled) noexcept;
bool LoggingEnabled() noexcept;
void SetVerbosity(SeverityLevel level) noexcept;
SeverityLevel Verbosity() noexcept;

/// While it lives, a line of this thread that would be the first to read the policy is lost instead: the
/// policy is read under the settings lock and from the shared settings. For whoever holds that lock, and for
/// threads that hold no API lock. At most eight at a time count.
class FirstUseDeferral {
public:
    FirstUseDeferral() noexcept;
    ~FirstUseDeferral();
    FirstUseDeferral(const FirstUseDeferral&) = delete;
    FirstUseDeferral& operator=(const FirstUseDeferral&) = delete;

private:
    std::atomic<unsigned long>* _place = nullptr;
};

/// Writes "<label> took <n> ms" at DEBUG when it goes out of scope. The label is the format text up to its
/// first "("; the arguments never reach the log.
class ScopedDurationLog {
public:
    template <class... Arguments>
    explicit ScopedDurationLog(std::wstring format, Arguments... arguments) : _label(format) {
        // The formatted text is dropped; the duration must not count the making of it all the same.
        FormatBounded(2048, format.c_str(), arguments...);
        Start();
    }
    ~ScopedDurationLog();
    ScopedDurationLog(const ScopedDurationLog&) = delete;
    ScopedDurationLog& operator=(const ScopedDurationLog&) = delete;

private:
    void Start();

    std::uint32_t _startTicks = 0; // milliseconds, wraps
    std::wstring _label;
};

/// Milliseconds between two readings of the tick counter, also across its wrap.
constexpr std::uint32_t ElapsedTicks(std::uint32_t startTicks, std::uint32_t endTicks) {
    return endTicks - startTicks;
}

/// The part of a format text before its first "(", or all of it.
std::wstring DurationLabel(const std::wstring& format);

} // namespace Zuvan::Lumeq::Common
