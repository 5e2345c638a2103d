#include "Common/Logger.h"

#include "Common/Clock.h"
#include "Common/Debugger.h"
#include "Common/LogPlaces.h"
#include "Common/LogPolicy.h"
#include "Common/SystemHandles.h"
#include "Common/Utf.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <memory>
#include <shlobj.h>
#include <shlwapi.h>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr LogSource Log(L"Common\\Logger");
constexpr wchar_t InitializationFailed[] = L"ERROR: Logger failed to initialize: ";
constexpr wchar_t WritingFailed[] = L"ERROR: Unable to write log information to file: ";
constexpr wchar_t TruncationMark[] = L"<TRUNCATED>";

struct LogPaths {
    std::wstring error;
    std::wstring data;
    std::wstring log;
};

/// Set once and then only read. It has no lock, because a process can kill one of its threads at any point
/// and still run the destructor afterwards.
class LogPathsOnce {
public:
    constexpr LogPathsOnce() noexcept = default;
    ~LogPathsOnce() { delete _paths.exchange(nullptr); }
    LogPathsOnce(const LogPathsOnce&) = delete;
    LogPathsOnce& operator=(const LogPathsOnce&) = delete;

    const LogPaths* Get() const noexcept { return _paths; }
    /// Two threads may set them at the same time; both found the same paths.
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
// Thread numbers; 0 marks a free place.
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

/// The second look is for another process that makes the folder at the same time: creating it fails then, but
/// the folder exists.
bool MakeFolder(const std::wstring& folder) {
    return PathIsDirectoryW(folder.c_str()) ||
           SHCreateDirectoryExW(nullptr, folder.c_str(), nullptr) == ERROR_SUCCESS ||
           PathIsDirectoryW(folder.c_str());
}

/// Returns false if there is no folder to log in.
bool FindLogFiles() {
    const std::wstring folder = LogFolder();
    if (folder.empty() || !MakeFolder(folder))
        return false;
    auto paths = std::make_unique<LogPaths>();
    paths->error = JoinPath(folder.c_str(), ErrorLogName);
    paths->data = JoinPath(folder.c_str(), DataLogName);
    paths->log = JoinPath(folder.c_str(), LogName);
    logPaths.Set(std::move(paths));
    return true;
}

void RunFirstUse() {
    try {
        if (!FindLogFiles())
            return;
        // Set before the policy loads, because loading reads the settings and these log: logging is not
        // enabled yet, so their lines are dropped instead of coming back here.
        logFilesReady = true;
        LoadLogPolicy();
    } catch (...) {
        ReportCaughtToDebugger(InitializationFailed);
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

/// `line` includes its line end, so that both are one write: a process that died between two writes would
/// leave a line that the next one continues. A file that cannot be opened or written silently loses the whole
/// line: the part of it that a full disk still took would spoil the next line.
void AppendLine(const std::wstring& path, const std::string& line) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER end{};
    if (!file || !SetFilePointerEx(file.Get(), {}, &end, FILE_END))
        return;
    DWORD written = 0;
    if (WriteFile(file.Get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr) &&
        written == line.size())
        return;
    if (SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN))
        SetEndOfFile(file.Get());
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
    // Opened for each line. A mutex whose owner was killed vanishes with its last handle; a handle kept open
    // would let it cost another process a line.
    UniqueKernelObject mutex(CreateMutexW(nullptr, FALSE, LogMutexName));
    const DWORD waited = WaitForSingleObject(mutex.Get(), LogMutexWaitMilliseconds);
    if (waited != WAIT_OBJECT_0) {
        OutputDebugStringW(L"ERROR: Logger mutex timed out!\n");
        BreakIfDebugged();
        // The owner died and this thread owns the mutex now. Releasing it keeps the others from waiting.
        if (waited == WAIT_ABANDONED)
            ReleaseMutex(mutex.Get());
        // Deliberate handle leak: it keeps the mutex object alive for the next caller to find, even if the
        // owner died.
        static_cast<void>(mutex.Release());
        return;
    }
    try {
        WriteToFiles(paths, level, line, message);
    } catch (...) {
        ReportCaughtToDebugger(WritingFailed);
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

std::wstring LogFolder() {
    wchar_t temporary[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH + 1, temporary);
    // A relative path would lead into the current folder, which anybody may own.
    return PathIsRelativeW(temporary) ? std::wstring() : JoinPath(temporary, L"Zuvan\\LUMEQ");
}

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
    } catch (...) {
        ReportCaughtToDebugger(WritingFailed);
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
    // PathCombineW leaves a path empty that is too long.
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
    Log(SeverityLevel::DEBUG, L"%s took %d ms", _label.c_str(), ElapsedTicks(_startTicks, GetTickCount()));
}

void ScopedDurationLog::Start() {
    _label = DurationLabel(_label);
    _startTicks = GetTickCount();
}

std::wstring DurationLabel(const std::wstring& format) { return format.substr(0, format.find(L'(')); }

} // namespace Zuvan::Lumeq::Common
