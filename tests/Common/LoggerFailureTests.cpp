#include "LoggerTest.h"

#include "Common/Clock.h"
#include "Common/SystemHandles.h"
#include "support/DebuggerStandIn.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"

#include <gmock/gmock.h>

#include <future>
#include <optional>
#include <shlobj.h>
#include <shlwapi.h>
#include <stdexcept>
#include <thread>

namespace Zuvan::Lumeq::Common {

using testing::ElementsAre;
using testing::EndsWith;
using Testing::ImportedFunction;
using testing::IsEmpty;
using Testing::LoggedLine;
using Testing::LogLines;

namespace {

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

/// The handle of a thread that was joined may be closed a little later; a leaked one never is.
std::uintptr_t NextHandleOnceThreadsAreGone(std::uintptr_t expected) {
    for (int tries = 0; tries < 1000 && NextHandle() != expected; ++tries)
        Sleep(10);
    return NextHandle();
}

} // namespace

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
    static UniqueKernelObject mutex; // The mutex that the line uses, under another handle.
    const std::uintptr_t before = NextHandle();
    const Testing::DebuggerStandIn debugger;
    {
        const ImportedFunction<decltype(CreateFileW)> failing(
            "kernel32.dll", "CreateFileW",
            [](LPCWSTR, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE) -> HANDLE {
                throw std::bad_alloc();
            });
        const ImportedFunction<decltype(CreateMutexW)> duplicated(
            "kernel32.dll", "CreateMutexW", [](SECURITY_ATTRIBUTES* security, BOOL owned, LPCWSTR) {
                const HANDLE made = MakeMutex(security, owned, nullptr);
                EXPECT_TRUE(DuplicateHandle(GetCurrentProcess(), made, GetCurrentProcess(), mutex.Receive(),
                                            0, FALSE, DUPLICATE_SAME_ACCESS));
                return made;
            });
        Log(SeverityLevel::DEBUG, L"lost");
    }
    EXPECT_EQ(debugger.Output(), "ERROR: Unable to write log information to file: std::bad_alloc\n");
    EXPECT_EQ(debugger.Breaks(), 1);
    std::thread([] { EXPECT_EQ(WaitForSingleObject(mutex.Get(), 0), 0U); }).join();
    mutex.Reset();
    EXPECT_EQ(NextHandleOnceThreadsAreGone(before), before);
    EXPECT_THAT(LogLines(machine.LogFile()), IsEmpty());
}

TEST_F(LoggerTest, NoMemoryIsNeededUnderTheMutexWhichIsReleasedAndClosed) {
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
        Log(SeverityLevel::DEBUG, L"written");
    }
    ASSERT_TRUE(failing);
    const bool happened = failing->Happened();
    failing.reset();
    EXPECT_FALSE(happened);
    EXPECT_EQ(debugger.Output(), "");
    EXPECT_EQ(debugger.Breaks(), 0);
    std::thread([] { EXPECT_EQ(WaitForSingleObject(mutex.Get(), 0), 0U); }).join();
    mutex.Reset();
    EXPECT_EQ(NextHandleOnceThreadsAreGone(before), before);
    ASSERT_EQ(LogLines(machine.LogFile()).size(), 1U);
    EXPECT_EQ(LogLines(machine.LogFile())[0].message, "written");
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
    StartLogging("debug");
    Log(SeverityLevel::ERROR, L"before");
    // Some file systems report that as a failure, some as a success of fewer bytes.
    static BOOL result;
    for (const BOOL reported : {FALSE, TRUE}) {
        result = reported;
        const ImportedFunction<decltype(::WriteFile)> full(
            "kernel32.dll", "WriteFile",
            [](HANDLE file, const void* content, DWORD size, DWORD* written, OVERLAPPED* overlapped) {
                Testing::RealFunction<decltype(::WriteFile)>("kernel32.dll", "WriteFile")(
                    file, content, size / 2, written, overlapped);
                SetLastError(ERROR_DISK_FULL);
                return result;
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
