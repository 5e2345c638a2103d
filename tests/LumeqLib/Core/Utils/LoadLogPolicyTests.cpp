#include "Common/LogPolicy.h"
#include "Common/Logger.h"
#include "LumeqLib/Core/Utils/LoadLogPolicy.h"
#include "LumeqLib/Core/Utils/Settings.h"
#include "support/DebuggerStandIn.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Zuvan::Lumeq::Core::Utils {

using Common::SeverityLevel;
using Testing::DebuggerStandIn;
using Testing::IsolatedMachine;
using Testing::LogLines;
using Testing::LogMessages;
using Testing::WriteFile;

namespace {

class LoadLogPolicy : public testing::Test {
protected:
    /// Logs one line of each severity. The first one loads the policy.
    static void LogEach() {
        for (const auto level : {SeverityLevel::DATA, SeverityLevel::ERROR, SeverityLevel::WARNING,
                                 SeverityLevel::TRACE, SeverityLevel::DEBUG})
            Common::LogMessage(level, L"", 0, nullptr, L"line");
    }
    /// The severities of the lines that were written.
    std::vector<std::string> Written() const {
        std::vector<std::string> severities;
        for (const Testing::LoggedLine& line : LogLines(_machine.LogFile()))
            if (line.message == "line")
                severities.push_back(line.severity);
        return severities;
    }
    std::vector<std::string> PolicyLines() const {
        std::vector<std::string> lines = LogMessages(_machine.LogFile(), "TRACE");
        std::erase_if(lines, [](const std::string& line) { return !line.starts_with("Logger: "); });
        return lines;
    }

    IsolatedMachine _machine;
};

using Texts = std::vector<std::string>;

/// The machine's clock, in steps of 100 ns since 1601.
std::uint64_t machineTime;

void WINAPI ReadMachineTime(FILETIME* time) {
    *time = {static_cast<DWORD>(machineTime), static_cast<DWORD>(machineTime >> 32)};
}

} // namespace

TEST_F(LoadLogPolicy, OnWithoutLevelWritesErrorAndData) {
    _machine.WriteFactorySettings("<Log>on</Log>");
    LogEach();
    EXPECT_EQ(Written(), (Texts{"DATA", "ERROR"}));
}

TEST_F(LoadLogPolicy, LevelIsTheHighestSeverityThatIsWritten) {
    _machine.WriteFactorySettings("<Log>on</Log><LogLevel>trace</LogLevel>");
    LogEach();
    EXPECT_EQ(Written(), (Texts{"DATA", "ERROR", "WARNING", "TRACE"}));
}

TEST_F(LoadLogPolicy, ValuesInCapitalsCount) {
    _machine.WriteFactorySettings("<Log>ON</Log><LogLevel>Debug</LogLevel>");
    LogEach();
    EXPECT_EQ(Written(), (Texts{"DATA", "ERROR", "WARNING", "TRACE", "DEBUG"}));
    EXPECT_EQ(PolicyLines(), (Texts{"Logger: LogLevel='debug'", "Logger: Log='on'",
                                    "Logger: Logging is on by default until 2017-07-07T00:00:00Z",
                                    "Logger: Logging is currently ENABLED"}));
}

TEST_F(LoadLogPolicy, PolicyLinesHaveNoFunctionName) {
    _machine.WriteFactorySettings();
    LogEach();
    for (const Testing::LoggedLine& line : LogLines(_machine.LogFile(), "TRACE"))
        EXPECT_EQ(line.function, "");
}

TEST_F(LoadLogPolicy, OffWritesNothing) {
    _machine.WriteFactorySettings("<Log>off</Log><LogLevel>debug</LogLevel>");
    LogEach();
    EXPECT_TRUE(LogLines(_machine.LogFile()).empty());
    EXPECT_FALSE(Common::LoggingEnabled());
}

TEST_F(LoadLogPolicy, NoValuesWriteNothing) {
    _machine.WriteFactorySettings("");
    LogEach();
    EXPECT_TRUE(LogLines(_machine.LogFile()).empty());
}

TEST_F(LoadLogPolicy, DateToComeIsOn) {
    _machine.WriteFactorySettings("<Log>Date</Log><LogDate>2037-12-31</LogDate><LogLevel>trace</LogLevel>");
    LogEach();
    EXPECT_EQ(Written(), (Texts{"DATA", "ERROR", "WARNING", "TRACE"}));
    EXPECT_EQ(PolicyLines(), (Texts{"Logger: LogLevel='trace'", "Logger: Log='date', LogDate='2037-12-31'",
                                    "Logger: Logging is on by default until 2017-07-07T00:00:00Z",
                                    "Logger: Logging is currently ENABLED"}));
}

TEST_F(LoadLogPolicy, PastDateIsOff) {
    _machine.WriteFactorySettings("<Log>date</Log><LogDate>2020-01-01</LogDate>");
    LogEach();
    EXPECT_FALSE(Common::LoggingEnabled());
}

TEST_F(LoadLogPolicy, DateThatDoesNotParseOrIsMissingIsTheDefaultDate) {
    for (const wchar_t* date : {L"some day", L""}) {
        Common::EnableLogging(true);
        ApplyLogPolicy([date](const std::wstring& key) -> std::wstring {
            return key == L"Log" ? L"date" : key == L"LogDate" ? date : L"";
        });
        EXPECT_FALSE(Common::LoggingEnabled());
    }
}

TEST_F(LoadLogPolicy, DateWithoutADateIsOnUntilTheDefaultDate) {
    _putenv("TZ=UTC0");
    _tzset();
    _machine.WriteFactorySettings("<Log>date</Log><LogDate/><LogLevel>trace</LogLevel>");
    const Testing::ImportedFunction<decltype(GetSystemTimeAsFileTime)> clock(
        "kernel32.dll", "GetSystemTimeAsFileTime", &ReadMachineTime);
    machineTime = 131'438'592'000'000'000; // 2017-07-07 00:00:00.000 UTC
    LogEach();
    EXPECT_EQ(Written(), (Texts{"DATA", "ERROR", "WARNING", "TRACE"}));
    EXPECT_EQ(PolicyLines(), (Texts{"Logger: LogLevel='trace'", "Logger: Log='date', LogDate=''",
                                    "Logger: Logging is on by default until 2017-07-07T00:00:00Z",
                                    "Logger: Logging is currently ENABLED"}));
    machineTime += 10'000; // a millisecond
    Common::LoadLogPolicy();
    EXPECT_FALSE(Common::LoggingEnabled());
}

TEST_F(LoadLogPolicy, UnlistedWordIsInvalidAndLeavesTheDefaultDate) {
    Common::EnableLogging(true);
    const LogPolicySettings settings = ApplyLogPolicy(
        [](const std::wstring& key) -> std::wstring { return key == L"Log" ? L"Yes" : L"loud"; });
    EXPECT_FALSE(Common::LoggingEnabled());

    // Turns logging on, so that the lines can be read.
    _machine.WriteFactorySettings();
    LogEach();
    std::filesystem::remove(_machine.LogFile());
    Common::SetVerbosity(SeverityLevel::TRACE);
    TraceLogPolicy(settings);
    EXPECT_EQ(PolicyLines(),
              (Texts{"Logger: LogLevel='loud' (INVALID!) --> Verbosity=TRACE", "Logger: Log='yes' (INVALID!)",
                     "Logger: Logging is on by default until 2017-07-07T00:00:00Z",
                     "Logger: Logging is currently ENABLED"}));
}

TEST_F(LoadLogPolicy, InvalidLevelLeavesTheVerbosity) {
    Common::SetVerbosity(SeverityLevel::WARNING);
    ApplyLogPolicy([](const std::wstring&) -> std::wstring { return L"data"; });
    EXPECT_EQ(Common::Verbosity(), SeverityLevel::WARNING);
}

TEST_F(LoadLogPolicy, LocalFileHasNoEffect) {
    _machine.WriteFactorySettings("<Log>off</Log>");
    WriteFile(_machine.LocalSettingsFile(), "<LumeqConfig version=\"4.0\"><Log>on</Log></LumeqConfig>");
    LogEach();
    EXPECT_TRUE(LogLines(_machine.LogFile()).empty());
}

TEST_F(LoadLogPolicy, IsLoadedOncePerProcess) {
    _machine.WriteFactorySettings("<Log>off</Log>");
    LogEach();
    _machine.WriteFactorySettings();
    LogEach();
    EXPECT_TRUE(LogLines(_machine.LogFile()).empty());
}

TEST_F(LoadLogPolicy, LeavesNoInstanceBehind) {
    _machine.WriteFactorySettings();
    LogEach();
    const std::shared_ptr<Settings> settings = Settings::GetInstance();
    EXPECT_EQ(settings->GetFactorySetting(L"LogDate", L"none"), L"none");
    DropSharedInstance();
    _machine.WriteFactorySettings("<LogDate>2030-01-01</LogDate>");
    EXPECT_EQ(Settings::GetInstance()->GetFactorySetting(L"LogDate", L"none"), L"2030-01-01");
    DropSharedInstance();
}

TEST_F(LoadLogPolicy, MissingSettingsAreReportedToTheDebuggerAndLeaveTheDefaultDate) {
    Common::EnableLogging(true);
    const DebuggerStandIn debugger;
    Common::LoadLogPolicy();
    EXPECT_FALSE(Common::LoggingEnabled());
    const std::string path = (_machine.HostFolder() / "LumeqConfig.xml").string();
    EXPECT_EQ(debugger.Output(), "TRACE: FactorySettingsPath is '" + path +
                                     "'\n"
                                     "ERROR: Fail creating Settings class: No factory settings file found\n"
                                     "ERROR: LoadLogSettings() failed on call to Settings::GetInstance(): "
                                     "No factory settings file found\n");
    EXPECT_EQ(debugger.Breaks(), 2);
}

TEST_F(LoadLogPolicy, FailedReadIsReportedToTheDebuggerAndTheLinesAreStillWritten) {
    _machine.WriteFactorySettings();
    LogEach();
    std::filesystem::remove(_machine.LogFile());
    LogPolicySettings settings;
    {
        const DebuggerStandIn debugger;
        settings = ApplyLogPolicy([](const std::wstring& key) -> std::wstring {
            if (key == L"LogLevel")
                return L"trace";
            throw std::runtime_error("no such luck");
        });
        EXPECT_EQ(debugger.Output(), "ERROR: LoadLogSettings() failed: no such luck\n");
        EXPECT_EQ(debugger.Breaks(), 1);
    }
    TraceLogPolicy(settings);
    EXPECT_EQ(PolicyLines(), (Texts{"Logger: LogLevel='trace'", "Logger: Log='' (INVALID!)",
                                    "Logger: Logging is on by default until 2017-07-07T00:00:00Z",
                                    "Logger: Logging is currently ENABLED"}));
}

TEST_F(LoadLogPolicy, FailedCallOnADocumentIsReportedByItsMessage) {
    const DebuggerStandIn debugger;
    ApplyLogPolicy(
        [](const std::wstring&) -> std::wstring { throw _com_error(static_cast<HRESULT>(0x80040205)); });
    EXPECT_EQ(debugger.Output(), "ERROR: LoadLogSettings() failed: IDispatch error #5\n");
}

TEST_F(LoadLogPolicy, FirstLineInsideTheSettingsWaitsForTheNext) {
    _machine.WriteFactorySettings();
    // Loading the settings logs the process's first line, under the settings lock.
    Settings::GetInstance();
    DropSharedInstance();
    EXPECT_TRUE(LogLines(_machine.LogFile()).empty());
    LogEach();
    EXPECT_EQ(Written().size(), 5U);
}

} // namespace Zuvan::Lumeq::Core::Utils
