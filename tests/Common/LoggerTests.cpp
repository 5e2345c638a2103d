#include "Common/Logger.h"

#include "Common/Clock.h"
#include "support/DebuggerStandIn.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <future>
#include <optional>
#include <regex>
#include <set>
#include <shlobj.h>
#include <shlwapi.h>
#include <stdexcept>
#include <thread>

namespace Zuvan::Lumeq::Common {

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using Testing::ImportedFunction;
using testing::IsEmpty;
using Testing::LoggedLine;
using Testing::LogLines;

void Log(SeverityLevel level, const wchar_t* text) { LogMessage(level, L"file", 1, nullptr, L"%s", text); }

/// A machine that logs at the given level, with the policy's own lines already written and removed.
class LoggerTest : public testing::Test {
protected:
    void StartLogging(const std::string& level) {
        machine.WriteFactorySettings("<Log>on</Log><LogLevel>" + level + "</LogLevel>");
        Log(SeverityLevel::DEBUG, L"first");
        std::filesystem::remove(machine.LogFile());
    }
    std::filesystem::path DataFile() const { return machine.LogFolder() / "Lumeq.Data.txt"; }
    std::filesystem::path ErrorFile() const { return machine.LogFolder() / "Lumeq.Error.txt"; }

    Testing::IsolatedMachine machine;
};

/// Holds the log's mutex from a thread of its own.
class MutexHolder {
public:
    MutexHolder() : _thread([this] { Hold(); }) { _held.get_future().wait(); }
    ~MutexHolder() { Release(); }
    void Release() {
        if (_thread.joinable()) {
            _release.set_value();
            _thread.join();
        }
    }

private:
    void Hold() {
        const UniqueKernelObject mutex(CreateMutexW(nullptr, TRUE, L"Global\\LumeqLoggingMutex"));
        _held.set_value();
        _release.get_future().wait();
        ReleaseMutex(mutex.Get());
    }

    std::promise<void> _held;
    std::promise<void> _release;
    std::thread _thread;
};

HANDLE MakeMutex(SECURITY_ATTRIBUTES* security, BOOL owned, LPCWSTR name) {
    return Testing::RealFunction<decltype(CreateMutexW)>("kernel32.dll", "CreateMutexW")(security, owned,
                                                                                         name);
}

/// Throws a standard exception at the first call and something else at later ones.
template <int Failures>
HANDLE WINAPI MutexAfterFailures(SECURITY_ATTRIBUTES* security, BOOL owned, LPCWSTR name) {
    static int calls = 0;
    if (++calls > Failures)
        return MakeMutex(security, owned, name);
    if (calls == 1)
        throw std::runtime_error("no such luck");
    throw calls;
}

/// The system hands out the lowest free number, so a leaked handle would raise it.
std::uintptr_t NextHandle() {
    const UniqueKernelObject event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    return reinterpret_cast<std::uintptr_t>(event.Get());
}

} // namespace

TEST_F(LoggerTest, WritesTheLineAsItIsLaidOut) {
    StartLogging("debug");
    LogMessage(SeverityLevel::TRACE, L"file", 1, L"A::b", L"%s=%d", L"x", 7);
    const std::string content = Testing::ReadFile(machine.LogFile());
    EXPECT_TRUE(std::regex_match(
        content,
        std::regex("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z TRACE   0x[0-9a-f]{8} \\| <A::b> "
                   "x=7\r\n")))
        << content;
}

TEST_F(LoggerTest, DataIsInBothFilesWithIdenticalText) {
    StartLogging("debug");
    Log(SeverityLevel::DATA, L"sent");
    EXPECT_EQ(Testing::ReadFile(DataFile()), Testing::ReadFile(machine.LogFile()));
    EXPECT_THAT(LogLines(DataFile()), ElementsAre(LoggedLine{"DATA", "", "sent"}));
    EXPECT_FALSE(std::filesystem::exists(ErrorFile()));
}

TEST_F(LoggerTest, ErrorIsInBothFilesWithIdenticalText) {
    StartLogging("debug");
    Log(SeverityLevel::ERROR, L"bad");
    EXPECT_EQ(Testing::ReadFile(ErrorFile()), Testing::ReadFile(machine.LogFile()));
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "bad"}));
}

TEST_F(LoggerTest, OtherLevelsAreInTheLogOnly) {
    StartLogging("debug");
    for (const auto level : {SeverityLevel::WARNING, SeverityLevel::TRACE, SeverityLevel::DEBUG})
        Log(level, L"x");
    EXPECT_THAT(LogLines(machine.LogFile()),
                ElementsAre(LoggedLine{"WARNING", "", "x"}, LoggedLine{"TRACE", "", "x"},
                            LoggedLine{"DEBUG", "", "x"}));
    EXPECT_FALSE(std::filesystem::exists(DataFile()));
    EXPECT_FALSE(std::filesystem::exists(ErrorFile()));
}

TEST_F(LoggerTest, DataIgnoresTheVerbosity) {
    StartLogging("error");
    Log(SeverityLevel::DATA, L"sent");
    Log(SeverityLevel::ERROR, L"bad");
    Log(SeverityLevel::WARNING, L"dropped");
    EXPECT_THAT(LogLines(machine.LogFile()),
                ElementsAre(LoggedLine{"DATA", "", "sent"}, LoggedLine{"ERROR", "", "bad"}));
}

TEST_F(LoggerTest, UndefinedLevelAboveTheVerbosityIsDropped) {
    StartLogging("debug");
    Log(static_cast<SeverityLevel>(5), L"x");
    EXPECT_THAT(LogLines(machine.LogFile()), IsEmpty());
}

TEST_F(LoggerTest, UndefinedLevelBelowTheVerbosityGoesToTheLog) {
    StartLogging("debug");
    Log(static_cast<SeverityLevel>(-1), L"x");
    EXPECT_THAT(Testing::ReadFile(machine.LogFile()),
                testing::HasSubstr("Z [Undefined SeverityLevel value: -1]0x"));
}

TEST_F(LoggerTest, LongMessageEndsInTruncationMark) {
    StartLogging("debug");
    Log(SeverityLevel::DEBUG, std::wstring(5000, L'x').c_str());
    const auto lines = LogLines(machine.LogFile());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].message, std::string(4084, 'x') + "<TRUNCATED>");
}

TEST_F(LoggerTest, MessageOf4095CharactersIsWhole) {
    StartLogging("debug");
    Log(SeverityLevel::DEBUG, std::wstring(4095, L'x').c_str());
    Log(SeverityLevel::DEBUG, std::wstring(4096, L'y').c_str());
    const auto lines = LogLines(machine.LogFile());
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].message, std::string(4095, 'x'));
    EXPECT_EQ(lines[1].message, std::string(4084, 'y') + "<TRUNCATED>");
}

TEST_F(LoggerTest, LineFeedTakesOneLine) {
    StartLogging("debug");
    Log(SeverityLevel::DEBUG, L"a\nb\r\nc");
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"DEBUG", "", "a\\nb\\r\\nc"}));
}

TEST_F(LoggerTest, TextIsUtf8WithoutByteOrderMark) {
    StartLogging("debug");
    Log(SeverityLevel::DEBUG, L"\u00e9\u6f22\xD83D\xDE00");
    EXPECT_THAT(Testing::ReadFile(machine.LogFile()), EndsWith("| \xC3\xA9\xE6\xBC\xA2\xF0\x9F\x98\x80\r\n"));
    EXPECT_THAT(Testing::ReadFile(machine.LogFile()), testing::StartsWith("2"));
}

TEST_F(LoggerTest, UnpairedSurrogateCostsOnlyItself) {
    StartLogging("debug");
    Log(SeverityLevel::DEBUG, L"a\xD800z");
    EXPECT_THAT(Testing::ReadFile(machine.LogFile()), EndsWith("| a\xEF\xBF\xBDz\r\n"));
}

TEST_F(LoggerTest, MutexHeldElsewhereLosesTheLineAndTheCallerGoesOn) {
    StartLogging("debug");
    MutexHolder holder;
    Testing::DebuggerStandIn debugger;
    const std::int64_t before = UtcMilliseconds();
    Log(SeverityLevel::DEBUG, L"lost");
    EXPECT_GE(UtcMilliseconds() - before, 900);
    EXPECT_THAT(debugger.Texts(), ElementsAre("ERROR: Logger mutex timed out!\n"));
    EXPECT_EQ(debugger.Breaks(), 1);
    holder.Release();
    Log(SeverityLevel::DEBUG, L"written");
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"DEBUG", "", "written"}));
}

TEST_F(LoggerTest, AbandonedMutexLosesTheLine) {
    StartLogging("debug");
    // Keeps the handle, so that the mutex outlives the thread that dies while holding it.
    const UniqueKernelObject mutex(CreateMutexW(nullptr, FALSE, L"Global\\LumeqLoggingMutex"));
    std::thread([&mutex] { WaitForSingleObject(mutex.Get(), INFINITE); }).join();
    Testing::DebuggerStandIn debugger;
    Log(SeverityLevel::DEBUG, L"lost");
    EXPECT_THAT(debugger.Texts(), ElementsAre("ERROR: Logger mutex timed out!\n"));
    EXPECT_EQ(debugger.Breaks(), 1);
    Log(SeverityLevel::DEBUG, L"written");
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"DEBUG", "", "written"}));
}

TEST_F(LoggerTest, AbandonedMutexDoesNotStallTheOthers) {
    StartLogging("debug");
    const UniqueKernelObject mutex(CreateMutexW(nullptr, FALSE, L"Global\\LumeqLoggingMutex"));
    std::thread([&mutex] { WaitForSingleObject(mutex.Get(), INFINITE); }).join();
    Log(SeverityLevel::DEBUG, L"lost");
    std::thread([] { Log(SeverityLevel::DEBUG, L"written"); }).join();
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"DEBUG", "", "written"}));
}

TEST_F(LoggerTest, MutexThatCannotBeMadeLosesTheLine) {
    StartLogging("debug");
    {
        const ImportedFunction<decltype(CreateMutexW)> none(
            "kernel32.dll", "CreateMutexW",
            [](SECURITY_ATTRIBUTES*, BOOL, LPCWSTR) -> HANDLE { return nullptr; });
        const Testing::DebuggerStandIn debugger;
        Log(SeverityLevel::DEBUG, L"lost");
        EXPECT_THAT(debugger.Texts(), ElementsAre("ERROR: Logger mutex timed out!\n"));
        EXPECT_EQ(debugger.Breaks(), 1);
    }
    Log(SeverityLevel::DEBUG, L"written");
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"DEBUG", "", "written"}));
}

TEST_F(LoggerTest, MutexIsClosedAfterEachLine) {
    StartLogging("debug");
    // Private to this process, because a line that waits too long leaks its handle.
    const ImportedFunction<decltype(CreateMutexW)> own(
        "kernel32.dll", "CreateMutexW", [](SECURITY_ATTRIBUTES* security, BOOL owned, LPCWSTR name) {
            EXPECT_STREQ(name, L"Global\\LumeqLoggingMutex");
            return MakeMutex(security, owned, nullptr);
        });
    Log(SeverityLevel::ERROR, L"first");
    const std::uintptr_t before = NextHandle();
    for (int i = 0; i < 1000; ++i)
        Log(SeverityLevel::ERROR, L"bad");
    EXPECT_EQ(NextHandle(), before);
    EXPECT_EQ(LogLines(ErrorFile()).size(), 1001U);
}

TEST_F(LoggerTest, FirstUseThatThrowsIsReportedAndTheLineIsStillWritten) {
    machine.WriteFactorySettings();
    // The policy, enabled by then, logs lines of its own.
    const ImportedFunction<decltype(CreateMutexW)> raising("kernel32.dll", "CreateMutexW",
                                                           &MutexAfterFailures<1>);
    {
        const Testing::DebuggerStandIn debugger;
        Log(SeverityLevel::DEBUG, L"written");
        EXPECT_THAT(debugger.Output(), EndsWith("ERROR: Logger failed to initialize: no such luck\n"));
        EXPECT_EQ(debugger.Breaks(), 1);
    }
    EXPECT_THAT(LogLines(machine.LogFile()), testing::Contains(LoggedLine{"DEBUG", "", "written"}));
}

TEST_F(LoggerTest, FirstUseThatRaisesBeforeTheFilesAreKnownIsTriedAgain) {
    machine.WriteFactorySettings();
    {
        const ImportedFunction<decltype(PathIsDirectoryW)> raising("shlwapi.dll", "PathIsDirectoryW",
                                                                   [](LPCWSTR) -> BOOL { throw 1; });
        const Testing::DebuggerStandIn debugger;
        Log(SeverityLevel::ERROR, L"lost");
        EXPECT_EQ(debugger.Output(), "ERROR: Logger failed to initialize: ???\n");
        EXPECT_EQ(debugger.Breaks(), 1);
    }
    Log(SeverityLevel::ERROR, L"written");
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "written"}));
}

TEST_F(LoggerTest, WriterThatThrowsIsReportedAndTheCallerGoesOn) {
    StartLogging("debug");
    const ImportedFunction<decltype(CreateMutexW)> raising("kernel32.dll", "CreateMutexW",
                                                           &MutexAfterFailures<2>);
    for (const char* text : {"no such luck", "???"}) {
        const Testing::DebuggerStandIn debugger;
        Log(SeverityLevel::DEBUG, L"lost");
        EXPECT_EQ(debugger.Output(),
                  std::string("ERROR: Unable to write log information to file: ") + text + "\n");
        EXPECT_EQ(debugger.Breaks(), 1);
    }
    Log(SeverityLevel::DEBUG, L"written");
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"DEBUG", "", "written"}));
}

TEST_F(LoggerTest, AllocationThatFailsForALineIsReportedAndTheCallerGoesOn) {
    StartLogging("debug");
    {
        const Testing::DebuggerStandIn debugger;
        const Testing::FailingAllocation failing(1);
        Log(SeverityLevel::DEBUG, L"lost");
        EXPECT_TRUE(failing.Happened());
        EXPECT_EQ(debugger.Output(), "ERROR: Unable to write log information to file: std::bad_alloc\n");
        EXPECT_EQ(debugger.Breaks(), 1);
    }
    EXPECT_THAT(LogLines(machine.LogFile()), IsEmpty());
}

TEST_F(LoggerTest, FailureUnderTheMutexIsReportedAndTheMutexReleasedAndClosed) {
    StartLogging("debug");
    static std::optional<Testing::FailingAllocation> failing;
    static UniqueKernelObject mutex; // The mutex that the line uses, under another handle.
    const std::uintptr_t before = NextHandle();
    const Testing::DebuggerStandIn debugger;
    {
        const ImportedFunction<decltype(CreateMutexW)> memoryRunsOutThen(
            "kernel32.dll", "CreateMutexW", [](SECURITY_ATTRIBUTES* security, BOOL owned, LPCWSTR) {
                const HANDLE made = MakeMutex(security, owned, nullptr);
                EXPECT_TRUE(DuplicateHandle(GetCurrentProcess(), made, GetCurrentProcess(), mutex.Receive(),
                                            0, FALSE, DUPLICATE_SAME_ACCESS));
                failing.emplace(1);
                return made;
            });
        Log(SeverityLevel::DEBUG, L"lost");
    }
    ASSERT_TRUE(failing);
    EXPECT_TRUE(failing->Happened());
    failing.reset();
    EXPECT_EQ(debugger.Output(), "ERROR: Unable to write log information to file: std::bad_alloc\n");
    EXPECT_EQ(debugger.Breaks(), 1);
    std::thread([] { EXPECT_EQ(WaitForSingleObject(mutex.Get(), 0), 0U); }).join();
    mutex.Reset();
    EXPECT_EQ(NextHandle(), before);
    EXPECT_THAT(LogLines(machine.LogFile()), IsEmpty());
}

TEST_F(LoggerTest, PathThatDoesNotFitLosesItsLinesAltogether) {
    machine.WriteFactorySettings();
    // Only the log's own file has a path that still fits.
    const std::size_t length = 259 - std::size("\\Zuvan\\LUMEQ\\Lumeq.Log.txt") + 1;
    std::wstring folder = machine.TemporaryFolder().wstring() + L"\\";
    folder += std::wstring(length - folder.size(), L't');
    std::filesystem::create_directory(folder);
    SetEnvironmentVariableW(L"TMP", folder.c_str());
    for (const auto level : {SeverityLevel::DATA, SeverityLevel::ERROR, SeverityLevel::WARNING})
        Log(level, L"x");
    const std::filesystem::path logFile = folder + L"\\Zuvan\\LUMEQ\\Lumeq.Log.txt";
    ASSERT_EQ(logFile.wstring().size(), 259U);
    auto lines = LogLines(logFile);
    std::erase_if(lines, [](const LoggedLine& line) { return line.message != "x"; });
    EXPECT_THAT(lines, ElementsAre(LoggedLine{"WARNING", "", "x"}));
}

TEST_F(LoggerTest, LineAndItsEndAreOneWrite) {
    StartLogging("debug");
    static std::vector<std::string> writes;
    const ImportedFunction<int(int, const void*, unsigned)> watched(
        "msvcrt.dll", "_write", [](int file, const void* content, unsigned size) {
            writes.emplace_back(static_cast<const char*>(content), size);
            return Testing::RealFunction<int(int, const void*, unsigned)>("msvcrt.dll",
                                                                          "_write")(file, content, size);
        });
    for (const std::size_t length : {1, 300, 600, 1500, 4095}) {
        writes.clear();
        Log(SeverityLevel::ERROR, std::wstring(length, L'a').c_str());
        ASSERT_EQ(writes.size(), 2U) << "one for each file";
        EXPECT_EQ(writes[0], writes[1]);
        EXPECT_THAT(writes[0], EndsWith(" | " + std::string(length, 'a') + "\r\n"));
    }
}

TEST_F(LoggerTest, TemporaryFolderThatDoesNotFitIsNotTakenForTheCurrentOne) {
    machine.WriteFactorySettings();
    const std::wstring folder = machine.TemporaryFolder().wstring() + L"\\" + std::wstring(150, L't') +
                                L"\\" + std::wstring(150, L'u');
    SetEnvironmentVariableW(L"TMP", folder.c_str());
    const std::filesystem::path inCurrentFolder = machine.HostFolder() / "Zuvan" / "LUMEQ";
    std::filesystem::create_directories(inCurrentFolder);
    const std::filesystem::path current = std::filesystem::current_path();
    std::filesystem::current_path(machine.HostFolder());
    Log(SeverityLevel::ERROR, L"lost");
    std::filesystem::current_path(current);
    EXPECT_TRUE(std::filesystem::is_empty(inCurrentFolder));
}

TEST_F(LoggerTest, FileThatCannotBeOpenedLosesItsLineAlone) {
    StartLogging("debug");
    std::filesystem::create_directories(ErrorFile());
    Log(SeverityLevel::ERROR, L"bad");
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"ERROR", "", "bad"}));
}

TEST_F(LoggerTest, LineThatAFullDiskCutsShortIsTakenBack) {
    using Write = int(int, const void*, unsigned);
    StartLogging("debug");
    Log(SeverityLevel::ERROR, L"before");
    {
        const ImportedFunction<Write> full(
            "msvcrt.dll", "_write", [](int file, const void* content, unsigned size) {
                Testing::RealFunction<Write>("msvcrt.dll", "_write")(file, content, size / 2);
                errno = ENOSPC;
                return -1;
            });
        Log(SeverityLevel::ERROR, L"lost");
    }
    Log(SeverityLevel::ERROR, L"after");
    for (const auto& file : {ErrorFile(), machine.LogFile()})
        EXPECT_THAT(LogLines(file),
                    ElementsAre(LoggedLine{"ERROR", "", "before"}, LoggedLine{"ERROR", "", "after"}));
}

TEST_F(LoggerTest, WithoutAFolderEachCallTriesAgain) {
    machine.WriteFactorySettings();
    const std::filesystem::path blocker = machine.TemporaryFolder() / "Zuvan";
    Testing::WriteFile(blocker, "a file where the folder should be");
    Log(SeverityLevel::ERROR, L"lost");
    Log(SeverityLevel::ERROR, L"lost too");
    EXPECT_TRUE(IsLogged(SeverityLevel::DEBUG));
    std::filesystem::remove(blocker);
    Log(SeverityLevel::ERROR, L"written");
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "written"}));
}

TEST_F(LoggerTest, FolderThatAnotherProcessMakesMeanwhileLosesNoLine) {
    machine.WriteFactorySettings();
    const ImportedFunction<decltype(SHCreateDirectoryExW)> later(
        "shell32.dll", "SHCreateDirectoryExW",
        [](HWND window, LPCWSTR path, const SECURITY_ATTRIBUTES* security) -> int {
            const auto create =
                Testing::RealFunction<decltype(SHCreateDirectoryExW)>("shell32.dll", "SHCreateDirectoryExW");
            EXPECT_EQ(create(window, path, security), ERROR_SUCCESS);
            return create(window, path, security);
        });
    Log(SeverityLevel::ERROR, L"written");
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "written"}));
}

TEST_F(LoggerTest, WithoutSettingsNothingIsLogged) {
    Log(SeverityLevel::ERROR, L"dropped");
    EXPECT_FALSE(IsLogged(SeverityLevel::DATA));
    EXPECT_FALSE(std::filesystem::exists(machine.LogFile()));
    EXPECT_FALSE(std::filesystem::exists(ErrorFile()));
}

TEST_F(LoggerTest, IsLoggedFollowsTheVerbosity) {
    EXPECT_TRUE(IsLogged(SeverityLevel::DEBUG)) << "not known yet";
    StartLogging("warning");
    EXPECT_TRUE(IsLogged(SeverityLevel::DATA));
    EXPECT_TRUE(IsLogged(SeverityLevel::ERROR));
    EXPECT_TRUE(IsLogged(SeverityLevel::WARNING));
    EXPECT_FALSE(IsLogged(SeverityLevel::TRACE));
    EXPECT_FALSE(IsLogged(SeverityLevel::DEBUG));
}

TEST_F(LoggerTest, DeferredFirstUseLosesTheLineAndLeavesItToTheNext) {
    machine.WriteFactorySettings();
    {
        const FirstUseDeferral deferral;
        const FirstUseDeferral another;
        Log(SeverityLevel::ERROR, L"lost");
    }
    Log(SeverityLevel::ERROR, L"written");
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "written"}));
}

TEST_F(LoggerTest, ThreadsDoNotMixTheirLines) {
    StartLogging("debug");
    constexpr int Threads = 4;
    constexpr int LinesEach = 100;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < Threads; ++thread)
        threads.emplace_back([thread] {
            for (int line = 0; line < LinesEach; ++line)
                LogMessage(SeverityLevel::DEBUG, L"", 0, nullptr, L"%d/%d", thread, line);
        });
    for (std::thread& thread : threads)
        thread.join();
    std::set<std::string> messages;
    for (const LoggedLine& line : LogLines(machine.LogFile()))
        messages.insert(line.message);
    EXPECT_EQ(messages.size(), std::size_t{Threads * LinesEach});
}

TEST(ElapsedTicks, CountsAcrossTheWrap) {
    EXPECT_EQ(ElapsedTicks(100, 142), 42U);
    EXPECT_EQ(ElapsedTicks(0xFFFFFFF0, 0x10), 0x20U);
}

TEST(DurationLabel, EndsBeforeTheFirstParenthesis) {
    EXPECT_EQ(DurationLabel(L"BasicImplementation(\"%s\", \"%s\")"), L"BasicImplementation");
    EXPECT_EQ(DurationLabel(L"(x)"), L"");
}

TEST(DurationLabel, WithoutParenthesisIsTheWholeFormat) { EXPECT_EQ(DurationLabel(L"took %s"), L"took %s"); }

TEST_F(LoggerTest, DurationIsLoggedAtDebugWithoutArguments) {
    StartLogging("debug");
    { const ScopedDurationLog duration(L"Work(%s, %d)", L"secret", 1); }
    const auto lines = LogLines(machine.LogFile());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].severity, "DEBUG");
    EXPECT_EQ(lines[0].function, "");
    EXPECT_TRUE(std::regex_match(lines[0].message, std::regex("Work took \\d+ ms"))) << lines[0].message;
}

TEST_F(LoggerTest, FolderThatCannotBeMadeLosesTheLineAndTheNextTriesAgain) {
    machine.WriteFactorySettings();
    {
        const ImportedFunction<decltype(SHCreateDirectoryExW)> failing(
            "shell32.dll", "SHCreateDirectoryExW",
            [](HWND, const wchar_t*, const SECURITY_ATTRIBUTES*) -> int { return ERROR_ACCESS_DENIED; });
        const Testing::DebuggerStandIn debugger;
        Log(SeverityLevel::ERROR, L"lost");
        EXPECT_THAT(debugger.Texts(), IsEmpty());
    }
    Log(SeverityLevel::ERROR, L"written");
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "written"}));
}

TEST_F(LoggerTest, PathThatCannotBeJoinedLosesTheLineAndTheNextTriesAgain) {
    machine.WriteFactorySettings();
    {
        const ImportedFunction<decltype(PathCombineW)> failing(
            "shlwapi.dll", "PathCombineW", [](wchar_t* joined, const wchar_t*, const wchar_t*) -> wchar_t* {
                joined[0] = L'\0';
                return nullptr;
            });
        Log(SeverityLevel::ERROR, L"lost");
    }
    Log(SeverityLevel::ERROR, L"written");
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "written"}));
}

TEST_F(LoggerTest, UnknownTemporaryFolderIsNotTheCurrentOne) {
    machine.WriteFactorySettings();
    const std::filesystem::path before = std::filesystem::current_path();
    // A folder of another user who wants to read the log.
    const std::filesystem::path planted = machine.ProgramData() / "Zuvan" / "LUMEQ";
    std::filesystem::create_directories(planted);
    std::filesystem::current_path(machine.ProgramData());
    {
        const ImportedFunction<decltype(GetTempPathW)> failing("kernel32.dll", "GetTempPathW",
                                                               [](DWORD, wchar_t*) -> DWORD { return 0; });
        Log(SeverityLevel::ERROR, L"lost");
    }
    Log(SeverityLevel::ERROR, L"written");
    std::filesystem::current_path(before);
    EXPECT_FALSE(std::filesystem::exists(planted / "Lumeq.Error.txt"));
    EXPECT_THAT(LogLines(ErrorFile()), ElementsAre(LoggedLine{"ERROR", "", "written"}));
}

} // namespace Zuvan::Lumeq::Common
