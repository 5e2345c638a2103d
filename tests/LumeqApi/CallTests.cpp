#include "LumeqApi/Call.h"

#include "Common/ComScope.h"
#include "Common/Exceptions.h"
#include "support/Apartment.h"
#include "support/DebuggerStandIn.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>

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

    Testing::IsolatedMachine machine;
};

bool IsLockFree() {
    if (!ApiLock.try_lock())
        return false;
    ApiLock.unlock();
    return true;
}

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

TEST_F(CallFrame, ExceptionBreaksIntoADebugger) {
    const Testing::DebuggerStandIn debugger;
    RunExport(L"X", [](const Call&) { throw std::runtime_error("wrong"); });
    RunExport(L"X", [](const Call&) { throw 42; });
    // Two reports. The first line can break as well, because there are no settings.
    EXPECT_GE(debugger.Breaks(), 2);
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
