#include "LoggerTest.h"

#include "support/ImportedFunction.h"

#include <gmock/gmock.h>

#include <fstream>
#include <regex>
#include <set>
#include <thread>

namespace Zuvan::Lumeq::Common {

using testing::ElementsAre;
using testing::EndsWith;
using Testing::ImportedFunction;
using testing::IsEmpty;
using Testing::LoggedLine;
using Testing::LogLines;

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

TEST_F(LoggerTest, LineShowsTheSystemsNumberOfItsThread) {
    StartLogging("debug");
    std::vector<std::string> expected;
    const auto logHere = [&expected] {
        std::ostringstream digits;
        digits << std::hex << GetCurrentThreadId();
        std::string number = digits.str();
        number.resize(8, '0');
        expected.push_back("DEBUG   0x" + number + " | x\r");
        Log(SeverityLevel::DEBUG, L"x");
    };
    logHere();
    std::thread(logHere).join();
    EXPECT_NE(expected[0], expected[1]);
    std::ifstream file(machine.LogFile(), std::ios::binary);
    std::string line;
    for (const std::string& end : expected) {
        ASSERT_TRUE(std::getline(file, line));
        EXPECT_THAT(line, EndsWith(end));
    }
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

TEST_F(LoggerTest, LineAndItsEndAreOneWrite) {
    StartLogging("debug");
    static std::vector<std::string> writes;
    const ImportedFunction<decltype(::WriteFile)> watched(
        "kernel32.dll", "WriteFile",
        [](HANDLE file, const void* content, DWORD size, DWORD* written, OVERLAPPED* overlapped) {
            writes.emplace_back(static_cast<const char*>(content), size);
            return Testing::RealFunction<decltype(::WriteFile)>("kernel32.dll", "WriteFile")(
                file, content, size, written, overlapped);
        });
    for (const std::size_t length : {1, 300, 600, 1500, 4095}) {
        writes.clear();
        Log(SeverityLevel::ERROR, std::wstring(length, L'a').c_str());
        ASSERT_EQ(writes.size(), 2U) << "one for each file";
        EXPECT_EQ(writes[0], writes[1]);
        EXPECT_THAT(writes[0], EndsWith(" | " + std::string(length, 'a') + "\r\n"));
    }
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

TEST_F(LoggerTest, DurationIsInMillisecondsFromTheEndOfTheFormattingOn) {
    StartLogging("debug");
    static std::vector<std::string> order;
    using Print = int(wchar_t*, std::size_t, const wchar_t*, char*);
    const ImportedFunction<Print> printing(
        "msvcrt.dll", "_vsnwprintf",
        [](wchar_t* buffer, std::size_t size, const wchar_t* format, char* arguments) {
            order.emplace_back("format");
            return Testing::RealFunction<Print>("msvcrt.dll", "_vsnwprintf")(buffer, size, format, arguments);
        });
    // Nearly at the end of what the counter holds.
    const ImportedFunction<decltype(GetTickCount)> ticking("kernel32.dll", "GetTickCount", []() -> DWORD {
        order.emplace_back("clock");
        static DWORD now = 0xFFFFFF00;
        return now += 1234;
    });
    {
        const ScopedDurationLog duration(L"Work(%s)", L"a");
        order.emplace_back("work");
    }
    ASSERT_GE(order.size(), 5U);
    order.resize(5);
    EXPECT_THAT(order, ElementsAre("format", "clock", "work", "clock", "format"));
    EXPECT_THAT(LogLines(machine.LogFile()), ElementsAre(LoggedLine{"DEBUG", "", "Work took 1234 ms"}));
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

} // namespace Zuvan::Lumeq::Common
