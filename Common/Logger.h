// The log: lines in text files of the user's temporary folder, shared by all processes that use the library.
//
// Off unless the factory settings turn it on. A failure of the log itself goes to the debugger channel and
// never to the caller. Any thread may log. The named mutex Global\LumeqLoggingMutex serialises writing
// between threads and processes; a line that waits for it for more than 1,000 ms is lost.
#pragma once

#include "Common/Format.h"
#include "Common/LogLine.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// Writes one line. `functionName` may be null. No line shows `sourceFile` or `sourceLine`. The message is
/// cut at 4,095 characters.
void LogMessage(SeverityLevel level, const wchar_t* sourceFile, int sourceLine, const wchar_t* functionName,
                const wchar_t* format, ...);

/// The log as one source file uses it:
///
///     constexpr Common::LogSource Log(L"Common\\ComScope");
///     Log(SeverityLevel::DEBUG, L"%d of %d", done, all);
class LogSource {
public:
    explicit constexpr LogSource(const wchar_t* sourceFile) noexcept : _sourceFile(sourceFile) {}

    template <class... Arguments>
    void operator()(SeverityLevel level, const wchar_t* format, Arguments... arguments) const {
        LogMessage(level, _sourceFile, 0, nullptr, format, arguments...);
    }

private:
    const wchar_t* _sourceFile;
};

/// False when a line of this level is known to be dropped, so that the caller need not compose it. True until
/// the first line has loaded the policy.
bool IsLogged(SeverityLevel level) noexcept;

/// For the policy, which loads inside the first line: writes without loading the policy again.
void WriteLogLine(SeverityLevel level, const std::wstring& functionName, const std::wstring& message);

/// For the policy.
void EnableLogging(bool enabled) noexcept;
bool LoggingEnabled() noexcept;
void SetVerbosity(SeverityLevel level) noexcept;
SeverityLevel Verbosity() noexcept;

/// While one exists, this thread's logging never loads the policy; a line that would is dropped. Loading
/// takes the settings lock and uses the shared settings, so this protects a thread that holds the lock, and
/// one that does not hold the API lock. Only eight at a time have an effect.
class FirstUseDeferral {
public:
    FirstUseDeferral() noexcept;
    ~FirstUseDeferral();
    FirstUseDeferral(const FirstUseDeferral&) = delete;
    FirstUseDeferral& operator=(const FirstUseDeferral&) = delete;

private:
    std::atomic<unsigned long>* _place = nullptr;
};

/// Logs "<label> took <n> ms" at DEBUG when it goes out of scope. The label is the format text up to its
/// first "("; the arguments never reach the log.
class ScopedDurationLog {
public:
    template <class... Arguments>
    explicit ScopedDurationLog(std::wstring format, Arguments... arguments) : _label(format) {
        // The text is dropped. The clock starts afterwards, so the duration does not include making it.
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
