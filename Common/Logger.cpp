#include "Common/Logger.h"

#include "Common/Clock.h"
#include "Common/Debugger.h"
#include "Common/LogPolicy.h"
#include "Common/SystemHandles.h"
#include "Common/Utf.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <shlobj.h>
#include <shlwapi.h>
#include <system_error>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr wchar_t InitializationFailed[] = L"ERROR: Logger failed to initialize: ";
constexpr wchar_t WritingFailed[] = L"ERROR: Unable to write log information to file: ";
constexpr wchar_t MutexName[] = L"Global\\LumeqLoggingMutex";
constexpr DWORD MutexWaitMilliseconds = 1000;
constexpr wchar_t TruncationMark[] = L"<TRUNCATED>";

struct LogPaths {
    std::wstring error;
    std::wstring data;
    std::wstring log;
};

/// Set once and then only read. Without a lock: a process may end one of its threads at any point and then
/// still run the destructor.
class LogPathsOnce {
public:
    constexpr LogPathsOnce() noexcept = default;
    ~LogPathsOnce() { delete _paths.exchange(nullptr); }
    LogPathsOnce(const LogPathsOnce&) = delete;
    LogPathsOnce& operator=(const LogPathsOnce&) = delete;

    const LogPaths* Get() const noexcept { return _paths; }
    /// Two threads may find them at the same time; they find the same.
    void Set(std::unique_ptr<const LogPaths> paths) noexcept {
        const LogPaths* none = nullptr;
        if (_paths.compare_exchange_strong(none, paths.get()))
            static_cast<void>(paths.release());
    }

private:
    std::atomic<const LogPaths*> _paths{nullptr};
};
constinit LogPathsOnce logPaths;
constinit std::atomic<bool> logFilesReady{false};
constinit std::atomic<bool> loggingEnabled{false};
constinit std::atomic<SeverityLevel> verbosity{SeverityLevel::ERROR};
constexpr bool ConsoleEcho = false;
// Numbers of threads, 0 for a free place.
constinit std::array<std::atomic<DWORD>, 8> firstUseDeferredBy{};

std::wstring JoinPath(const wchar_t* folder, const wchar_t* name) {
    wchar_t path[MAX_PATH + 1] = {};
    PathCombineW(path, folder, name);
    return path;
}

bool IsFirstUseDeferred() noexcept {
    const DWORD thread = GetCurrentThreadId();
    return std::any_of(firstUseDeferredBy.begin(), firstUseDeferredBy.end(),
                       [thread](const std::atomic<DWORD>& place) { return place == thread; });
}

/// Another process may make it at the same time: then making it fails, and it is there all the same.
bool MakeFolder(const std::wstring& folder) {
    return PathIsDirectoryW(folder.c_str()) ||
           SHCreateDirectoryExW(nullptr, folder.c_str(), nullptr) == ERROR_SUCCESS ||
           PathIsDirectoryW(folder.c_str());
}

/// False if there is no folder to log in.
bool FindLogFiles() {
    wchar_t temporary[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH + 1, temporary);
    // Without that folder the name would mean one in the current folder, which may be anybody's.
    if (PathIsRelativeW(temporary))
        return false;
    const std::wstring folder = JoinPath(temporary, L"Zuvan\\LUMEQ");
    if (!MakeFolder(folder))
        return false;
    auto paths = std::make_unique<LogPaths>();
    paths->error = JoinPath(folder.c_str(), L"Lumeq.Error.txt");
    paths->data = JoinPath(folder.c_str(), L"Lumeq.Data.txt");
    paths->log = JoinPath(folder.c_str(), L"Lumeq.Log.txt");
    logPaths.Set(std::move(paths));
    return true;
}

void RunFirstUse() {
    try {
        if (!FindLogFiles())
            return;
        // From here on a line written meanwhile is dropped, since logging is not enabled yet: the policy
        // reads the settings, which may have something to log.
        logFilesReady = true;
        LoadLogSettings();
    } catch (const std::exception& failure) {
        ReportToDebugger(InitializationFailed, failure.what());
    } catch (...) {
        ReportToDebugger(InitializationFailed, "???");
    }
}

bool Passes(SeverityLevel level) noexcept {
    return loggingEnabled && (level <= verbosity.load() || level == SeverityLevel::DATA);
}

const std::wstring& TargetPath(const LogPaths& paths, SeverityLevel level) {
    switch (level) {
    case SeverityLevel::DATA:
        return paths.data;
    case SeverityLevel::ERROR:
        return paths.error;
    default:
        return paths.log;
    }
}

/// The line comes with its end, so that they are one write: who dies between two would leave a line for the
/// next to continue. A file that cannot be opened or written loses the line without a word, and all of it:
/// what a full disk still took of it would spoil the next one.
void AppendLine(const std::filesystem::path& path, const std::string& line) {
    std::ofstream file(path, std::ios::out | std::ios::app | std::ios::ate | std::ios::binary);
    if (!file)
        return;
    const std::streamoff size = file.tellp();
    if (file << line << std::flush)
        return;
    file.close();
    std::error_code ignored;
    if (size >= 0)
        std::filesystem::resize_file(path, static_cast<std::uintmax_t>(size), ignored);
}

void WriteToFiles(const LogPaths& paths, SeverityLevel level, const std::string& line,
                  const std::wstring& message) {
    const std::wstring& target = TargetPath(paths, level);
    AppendLine(target, line);
    if (target != paths.log)
        AppendLine(paths.log, line);
    if (ConsoleEcho && level != SeverityLevel::DATA)
        _putws((message + L"\n").c_str());
}

void WriteSerialized(const LogPaths& paths, SeverityLevel level, const std::string& line,
                     const std::wstring& message) {
    UniqueKernelObject mutex(CreateMutexW(nullptr, FALSE, MutexName));
    const DWORD waited = WaitForSingleObject(mutex.Get(), MutexWaitMilliseconds);
    if (waited != WAIT_OBJECT_0) {
        OutputDebugStringW(L"ERROR: Logger mutex timed out!\n");
        BreakIfDebugged();
        // Its owner died and the system has made this thread the next: the others must not wait for it.
        if (waited == WAIT_ABANDONED)
            ReleaseMutex(mutex.Get());
        // Left open: whoever holds the mutex, or died with it, keeps its object alive for the next to find.
        static_cast<void>(mutex.Release());
        return;
    }
    try {
        WriteToFiles(paths, level, line, message);
    } catch (const std::exception& failure) {
        ReportToDebugger(WritingFailed, failure.what());
    } catch (...) {
        ReportToDebugger(WritingFailed, "???");
    }
    ReleaseMutex(mutex.Get());
}

std::wstring MessageText(const wchar_t* format, std::va_list arguments) {
    FormattedText message = FormatBoundedV(LongestFormatted, format, arguments);
    constexpr std::size_t kept = LongestFormatted - std::size(TruncationMark);
    if (message.truncated && message.text.size() > kept)
        message.text.replace(kept, std::wstring::npos, TruncationMark);
    return std::move(message.text);
}

} // namespace

void LogMessage(SeverityLevel level, const wchar_t* /*sourceFile*/, int /*sourceLine*/,
                const wchar_t* functionName, const wchar_t* format, ...) {
    if (!IsLogged(level))
        return;
    std::va_list arguments;
    va_start(arguments, format);
    try {
        const std::wstring message = MessageText(format, arguments);
        if (!logFilesReady && !IsFirstUseDeferred())
            RunFirstUse();
        WriteLogLine(level, functionName ? functionName : L"", message);
    } catch (const std::exception& failure) {
        ReportToDebugger(WritingFailed, failure.what());
    } catch (...) {
        ReportToDebugger(WritingFailed, "???");
    }
    va_end(arguments);
}

bool IsLogged(SeverityLevel level) noexcept { return !logFilesReady || Passes(level); }

void WriteLogLine(SeverityLevel level, const std::wstring& functionName, const std::wstring& message) {
    if (!Passes(level))
        return;
    const std::string line =
        ToUtf8Lossy(LogLine(UtcMilliseconds(), level, GetCurrentThreadId(), functionName, message)) + "\r\n";
    const LogPaths* const paths = logPaths.Get();
    // A path that does not fit is empty.
    if (paths && !TargetPath(*paths, level).empty())
        WriteSerialized(*paths, level, line, message);
}

FirstUseDeferral::FirstUseDeferral() noexcept {
    for (std::atomic<DWORD>& place : firstUseDeferredBy) {
        DWORD nobody = 0;
        if (place.compare_exchange_strong(nobody, GetCurrentThreadId())) {
            _place = &place;
            return;
        }
    }
}

FirstUseDeferral::~FirstUseDeferral() {
    if (_place)
        *_place = 0;
}

void EnableLogging(bool enabled) noexcept { loggingEnabled = enabled; }
bool LoggingEnabled() noexcept { return loggingEnabled; }
void SetVerbosity(SeverityLevel level) noexcept { verbosity = level; }
SeverityLevel Verbosity() noexcept { return verbosity; }

ScopedDurationLog::~ScopedDurationLog() {
    LogMessage(SeverityLevel::DEBUG, L"Common\\Logger", __LINE__, nullptr, L"%s took %d ms", _label.c_str(),
               ElapsedTicks(_startTicks, GetTickCount()));
}

void ScopedDurationLog::Start() {
    _label = DurationLabel(_label);
    _startTicks = GetTickCount();
}

std::wstring DurationLabel(const std::wstring& format) { return format.substr(0, format.find(L'(')); }

} // namespace Zuvan::Lumeq::Common
