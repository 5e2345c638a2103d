#include "LumeqApi/CallFrame.h"

#include "Common/Exceptions.h"
#include "LumeqApi/Patterns.h"
#include "support/DebuggerStandIn.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace Zuvan::Lumeq::API {

namespace {

using testing::ElementsAre;
using Testing::LoggedLine;
using testing::MatchesRegex;

class CallFrame : public testing::Test {
protected:
    std::vector<std::string> Errors() const { return Testing::LogMessages(machine.LogFile(), "ERROR"); }
    std::vector<LoggedLine> Traces() const {
        std::vector<LoggedLine> lines = Testing::LogLines(machine.LogFile(), "TRACE");
        std::erase_if(lines, [](const LoggedLine& line) { return line.function.empty(); });
        return lines;
    }

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
    RunExport(L"X", [&](Call&) { heldInside = !IsLockFree(); });
    EXPECT_TRUE(heldInside);
    EXPECT_TRUE(IsLockFree());
}

TEST_F(CallFrame, GivesTheBodysResult) {
    EXPECT_EQ(RunExport(L"X", [](Call&) { return 7; }), 7);
}

TEST_F(CallFrame, StandardExceptionIsReportedWithItsMessage) {
    LogEverything();
    EXPECT_EQ(RunExport(L"X", [](Call&) -> int { throw std::runtime_error("wrong"); }), 0);
    EXPECT_TRUE(IsLockFree());
    EXPECT_THAT(Errors(),
                ElementsAre(MatchesRegex("lumeq_machine_tests.exe: Exception in Zuvan::Lumeq::API::X: "
                                         "wrong. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, MessageOfOurOwnExceptionsIsTakenForUtf8) {
    LogEverything();
    RunExport(L"X", [](Call&) { throw Common::ArgumentException(L"name", L"caf\u00e9"); });
    EXPECT_THAT(Errors(),
                ElementsAre(MatchesRegex("lumeq_machine_tests.exe: Exception in Zuvan::Lumeq::API::X: "
                                         "caf\xC3\xA9. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, AnythingElseIsReportedAsUnknown) {
    LogEverything();
    RunExport(L"X", [](Call&) { throw 42; });
    EXPECT_TRUE(IsLockFree());
    EXPECT_THAT(Errors(), ElementsAre(MatchesRegex("lumeq_machine_tests.exe: Unknown exception in "
                                                   "Zuvan::Lumeq::API::X: \\?\\?\\?. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, ExceptionBreaksIntoADebugger) {
    const Testing::DebuggerStandIn debugger;
    RunExport(L"X", [](Call&) { throw std::runtime_error("wrong"); });
    RunExport(L"X", [](Call&) { throw 42; });
    // Two reports; the first line also tells the debugger that there are no settings.
    EXPECT_GE(debugger.Breaks(), 2);
}

TEST_F(CallFrame, WithTrackingDisabledNothingRuns) {
    LogEverything();
    machine.SetDword(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", L"TrackingDisabled", 1);
    bool ran = false;
    EXPECT_FALSE(RunExport(L"X", [&](Call&) { return ran = true; }));
    EXPECT_FALSE(ran);
    EXPECT_TRUE(IsLockFree());
    EXPECT_FALSE(std::filesystem::exists(machine.LogFolder()));
}

TEST_F(CallFrame, EveryCheckRunsWhateverTheEarlierOnesGave) {
    LogEverything();
    bool failed = false;
    Testing::DebuggerStandIn debugger;
    int breaksBefore = 0;
    RunExport(L"X", [&](Call& call) {
        call.Trace(L"");
        breaksBefore = debugger.Breaks();
        call.Required(L"_", L"screenName", screenNamePattern);
        call.Optional(nullptr, L"flow", flowPattern);
        call.Optional(L"", L"mode", modePattern);
        call.Reject(L"by hand");
        failed = call.Failed();
    });
    EXPECT_TRUE(failed);
    EXPECT_EQ(debugger.Breaks() - breaksBefore, 3);
    const std::string start = "lumeq_machine_tests.exe: Validation failed in Zuvan::Lumeq::API::X: ";
    EXPECT_THAT(
        Errors(),
        ElementsAre(MatchesRegex(start + "invalid \\[REQUIRED\\] screenName arg: \"_\". LumeqApi\\(\\d+\\)"),
                    MatchesRegex(start + "invalid \\[optional\\] mode arg: \"\". LumeqApi\\(\\d+\\)"),
                    MatchesRegex(start + "by hand. LumeqApi\\(\\d+\\)")));
}

TEST_F(CallFrame, ComplaintDoesNotFailTheCall) {
    LogEverything();
    bool failed = true;
    RunExport(L"X", [&](Call& call) {
        call.Complain(L"odd");
        failed = call.Failed();
    });
    EXPECT_FALSE(failed);
    EXPECT_EQ(Errors().size(), 1U);
}

TEST_F(CallFrame, TraceRendersEachArgumentByItsType) {
    LogEverything();
    const StringDictionary one{{L"a", L"b"}};
    RunExport(L"X", [&](Call& call) {
        call.Trace(L"%s %s %s %s %s %s %s %d 0x%p %S", L"text", std::wstring(L"object"),
                   static_cast<const wchar_t*>(nullptr), one, &one, true, static_cast<unsigned char>(200), -1,
                   static_cast<TaskHandle>(nullptr), std::string("narrow"));
        call.Trace(L"%s %s", ConnectionMethodType::usb, static_cast<ConnectionMethodType>(12));
    });
    EXPECT_THAT(Traces(),
                ElementsAre(LoggedLine{"TRACE", "Zuvan::Lumeq::API::X",
                                       "\"text\" \"object\" (null) [1 item(s)] [1 item(s)] 1 200 -1 "
                                       "0x0000000000000000 narrow"},
                            LoggedLine{"TRACE", "Zuvan::Lumeq::API::X",
                                       "usb [Undefined ConnectionMethodType value: 12]"}));
}

TEST_F(CallFrame, NarrowArgumentOfATraceEndsInTwoZeros) {
    LogEverything();
    std::string uuid("uuid, and more");
    uuid.resize(4);
    const Testing::PrintedNarrowTexts printed;
    RunExport(L"X", [&](Call& call) { call.Trace(L"deviceUuid: \"%S\"", uuid); });
    EXPECT_THAT(Traces(), ElementsAre(LoggedLine{"TRACE", "Zuvan::Lumeq::API::X", "deviceUuid: \"uuid\""}));
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0);
}

} // namespace Zuvan::Lumeq::API
