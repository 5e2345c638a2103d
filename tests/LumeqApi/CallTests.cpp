#include "LumeqApi/Call.h"

#include "Common/ComScope.h"
#include "Common/Exceptions.h"
#include "support/Apartment.h"
#include "support/DebuggerStandIn.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>

#include <optional>
#include <stdexcept>
#include <thread>

namespace Zuvan::Lumeq::API {

namespace {

using testing::ElementsAre;
using Testing::LoggedLine;
using testing::MatchesRegex;

class CallFrame : public testing::Test {
protected:
    std::vector<std::string> Errors() const { return Testing::LogMessages(machine.LogFile(), "ERROR"); }
    void LogEverything() { machine.WriteFactorySettings(); }
    /// The first line of the process reads the log's policy, which can break as well.
    static void ReadLogPolicy() {
        RunExport(L"X", [](const Call& call) { call.Log(Common::SeverityLevel::DEBUG, L"first"); });
    }

    Testing::IsolatedMachine machine;
};

bool IsLockFree() {
    if (!ApiLock.try_lock())
        return false;
    ApiLock.unlock();
    return true;
}

/// How often a call of the system came while the lock was held, and while it was free.
struct LockWatch {
    static inline int held = 0;
    static inline int free = 0;

    static void See() { ++(IsLockFree() ? free : held); }
    static LSTATUS WINAPI OpenKey(HKEY, LPCWSTR, DWORD, REGSAM, HKEY*) {
        See();
        return ERROR_FILE_NOT_FOUND;
    }
    static BOOL WINAPI AskForDebugger() {
        See();
        return FALSE;
    }
};

} // namespace

TEST_F(CallFrame, HoldsTheLockForTheBodyAndReleasesIt) {
    bool heldInside = false;
    RunExport(L"X", [&](const Call&) { heldInside = !IsLockFree(); });
    EXPECT_TRUE(heldInside);
    EXPECT_TRUE(IsLockFree());
}

TEST_F(CallFrame, KeepsComFromTheFirstOperationToTheEndOfTheBody) {
    const auto useCom = [](const Call&) {
        EXPECT_EQ(Testing::ApartmentOfThread(), Testing::NotInitialized);
        EXPECT_EQ(Common::ComScope(L"operation").Result(), S_OK);
        EXPECT_EQ(Testing::ApartmentOfThread(), S_OK);
    };
    RunExport(L"X", useCom);
    EXPECT_EQ(Testing::ApartmentOfThread(), Testing::NotInitialized);
    RunExport(L"X", [&](const Call& call) {
        useCom(call);
        throw 42;
    });
    EXPECT_EQ(Testing::ApartmentOfThread(), Testing::NotInitialized);
}

TEST_F(CallFrame, ReturnsTheBodysResult) {
    EXPECT_EQ(RunExport(L"X", [](const Call&) { return 7; }), 7);
}

TEST_F(CallFrame, StandardExceptionIsReportedWithItsMessage) {
    LogEverything();
    EXPECT_EQ(RunExport(L"X", [](const Call&) -> int { throw std::runtime_error("wrong"); }), 0);
    EXPECT_TRUE(IsLockFree());
    EXPECT_THAT(Errors(),
                ElementsAre(MatchesRegex("lumeq_machine_tests.exe: Exception in Zuvan::Lumeq::API::X: "
                                         "wrong. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, MessageOfOurOwnExceptionsIsTakenForUtf8) {
    LogEverything();
    RunExport(L"X", [](const Call&) { throw Common::ArgumentException(L"name", L"caf\u00e9"); });
    EXPECT_THAT(Errors(),
                ElementsAre(MatchesRegex("lumeq_machine_tests.exe: Exception in Zuvan::Lumeq::API::X: "
                                         "caf\xC3\xA9. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, AnythingElseIsReportedAsUnknown) {
    LogEverything();
    RunExport(L"X", [](const Call&) { throw 42; });
    EXPECT_TRUE(IsLockFree());
    EXPECT_THAT(Errors(), ElementsAre(MatchesRegex("lumeq_machine_tests.exe: Unknown exception in "
                                                   "Zuvan::Lumeq::API::X: \\?\\?\\?. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, EachExceptionBreaksOnceIntoADebugger) {
    LogEverything();
    ReadLogPolicy();
    const Testing::DebuggerStandIn debugger;
    RunExport(L"X", [](const Call&) { throw std::runtime_error("wrong"); });
    EXPECT_EQ(debugger.Breaks(), 1);
    RunExport(L"X", [](const Call&) { throw 42; });
    EXPECT_EQ(debugger.Breaks(), 2);
}

TEST_F(CallFrame, ExceptionWithoutMemoryForItsReportBreaksAsWell) {
    LogEverything();
    ReadLogPolicy();
    const std::runtime_error wrong("wrong"); // A copy of it needs no memory.
    bool happened = true;
    for (int nth = 1; happened; ++nth)
        for (const bool isStandard : {true, false}) {
            const Testing::DebuggerStandIn debugger;
            std::optional<Testing::FailingAllocation> failing;
            RunExport(L"X", [&](const Call&) {
                failing.emplace(nth);
                if (isStandard)
                    throw wrong;
                throw 42;
            });
            happened = failing->Happened();
            failing.reset();
            EXPECT_GE(debugger.Breaks(), 1) << nth;
        }
}

TEST_F(CallFrame, ReadsTheGateUnderTheLock) {
    const Testing::ImportedFunction<decltype(RegOpenKeyExW)> watched("advapi32.dll", "RegOpenKeyExW",
                                                                     &LockWatch::OpenKey);
    RunExport(L"X", [](const Call&) {});
    EXPECT_EQ(LockWatch::held, 1);
    EXPECT_EQ(LockWatch::free, 0);
}

TEST_F(CallFrame, ReportsUnderTheLock) {
    LogEverything();
    ReadLogPolicy();
    // Each report asks at its end.
    const Testing::ImportedFunction<decltype(IsDebuggerPresent)> watched("kernel32.dll", "IsDebuggerPresent",
                                                                         &LockWatch::AskForDebugger);
    RunExport(L"X", [](const Call& call) { return call.Refuse(L"odd"); });
    RunExport(L"X", [](const Call&) { throw std::runtime_error("wrong"); });
    RunExport(L"X", [](const Call&) { throw 42; });
    EXPECT_EQ(LockWatch::held, 3);
    EXPECT_EQ(LockWatch::free, 0);
}

TEST_F(CallFrame, WaitsForNobodyOnceTrackingIsKnownToBeDisabled) {
    machine.SetDword(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", L"TrackingDisabled", 1);
    const auto call = [] { return RunExport(L"X", [](const Call&) { return 7; }); };
    EXPECT_EQ(call(), 0);
    const std::lock_guard lock(ApiLock);
    EXPECT_EQ(call(), 0) << "this thread has the lock, so taking it would throw";
    std::thread([&call] { EXPECT_EQ(call(), 0); }).join();
}

TEST_F(CallFrame, WithTrackingDisabledNothingRuns) {
    LogEverything();
    machine.SetDword(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", L"TrackingDisabled", 1);
    bool ran = false;
    EXPECT_FALSE(RunExport(L"X", [&](const Call&) { return ran = true; }));
    EXPECT_FALSE(ran);
    EXPECT_TRUE(IsLockFree());
    EXPECT_FALSE(std::filesystem::exists(machine.LogFolder()));
}

TEST_F(CallFrame, RefusalIsReportedAndDoesNotEndTheCall) {
    LogEverything();
    EXPECT_EQ(RunExport(L"X", [](const Call& call) { return call.Refuse(L"odd") ? 1 : 2; }), 2);
    EXPECT_THAT(Errors(), ElementsAre(MatchesRegex("lumeq_machine_tests.exe: Validation failed in "
                                                   "Zuvan::Lumeq::API::X: odd. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, RefusalNamesTheSourceLineOfItsCheck) {
    LogEverything();
    const int line = __LINE__ + 1;
    RunExport(L"X", [](const Call& call) { return call.Refuse(L"odd"); });
    EXPECT_THAT(Errors(), ElementsAre(testing::EndsWith("LumeqApi(" + std::to_string(line) + ")")));
}

TEST_F(CallFrame, LogTakesPrintfsArguments) {
    LogEverything();
    RunExport(L"X",
              [](const Call& call) { call.Log(Common::SeverityLevel::WARNING, L"%s %d", L"text", -1); });
    EXPECT_THAT(Testing::LogLines(machine.LogFile(), "WARNING"),
                ElementsAre(LoggedLine{"WARNING", "Zuvan::Lumeq::API::X", "text -1"}));
}

TEST_F(CallFrame, ReportIsOneLineAndOneBreak) {
    LogEverything();
    ReportValidationError(L"Title", L"the first line reads the policy", L"A::b", 11);
    const Testing::DebuggerStandIn debugger;
    ReportValidationError(L"Title", L"detail", L"A::b", 12);
    EXPECT_EQ(debugger.Breaks(), 1);
    EXPECT_THAT(Testing::LogLines(machine.LogFile(), "ERROR"),
                ElementsAre(testing::_, LoggedLine{"ERROR", "",
                                                   "lumeq_machine_tests.exe: Title in A::b: detail. "
                                                   "LumeqApi(12)"}));
}

TEST_F(CallFrame, ReportWithoutALogBreaksAsWell) {
    ReportValidationError(L"Title", L"the first line reads the policy", L"A::b", 11);
    const Testing::DebuggerStandIn debugger;
    ReportValidationError(L"Title", L"detail", L"A::b", 12);
    EXPECT_EQ(debugger.Breaks(), 1);
    EXPECT_FALSE(std::filesystem::exists(machine.LogFile()));
}

} // namespace Zuvan::Lumeq::API
