#include "LumeqApi/Validation.h"

#include "LumeqApi/Patterns.h"
#include "support/DebuggerStandIn.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::API {

namespace {

using testing::ElementsAre;
using Testing::LoggedLine;

/// A machine that logs errors.
class Validation : public testing::Test {
protected:
    Validation() { machine.WriteFactorySettings("<Log>on</Log><LogLevel>error</LogLevel>"); }

    std::vector<LoggedLine> Errors() const { return Testing::LogLines(machine.LogFile()); }

    Testing::IsolatedMachine machine;
};

LoggedLine Error(const std::string& message) { return {"ERROR", "", "lumeq_machine_tests.exe: " + message}; }

} // namespace

TEST_F(Validation, RequiredArgumentThatMatchesPasses) {
    EXPECT_TRUE(CheckRequiredArg(L"Home", L"screenName", screenNamePattern, L"A::b", L"File", 7));
    EXPECT_THAT(Errors(), ElementsAre());
}

TEST_F(Validation, RequiredArgumentThatDoesNotIsReported) {
    EXPECT_FALSE(CheckRequiredArg(L"_", L"screenName", screenNamePattern, L"A::b", L"File", 7));
    EXPECT_THAT(
        Errors(),
        ElementsAre(Error("Validation failed in A::b: invalid [REQUIRED] screenName arg: \"_\". File(7)")));
}

TEST_F(Validation, OptionalArgumentMayBeNull) {
    EXPECT_TRUE(CheckOptionalArg(nullptr, L"mode", modePattern, L"A::b", L"File", 7));
    EXPECT_THAT(Errors(), ElementsAre());
}

TEST_F(Validation, OptionalArgumentIsMatchedWhenEmpty) {
    EXPECT_TRUE(CheckOptionalArg(L"", L"flow", flowPattern, L"A::b", L"File", 7));
    EXPECT_FALSE(CheckOptionalArg(L"", L"mode", modePattern, L"A::b", L"File", 8));
    EXPECT_THAT(Errors(),
                ElementsAre(Error("Validation failed in A::b: invalid [optional] mode arg: \"\". File(8)")));
}

TEST_F(Validation, ReportIsOneLineAndOneBreak) {
    Testing::DebuggerStandIn debugger;
    EXPECT_FALSE(ReportValidationError(L"Title", L"detail", L"A::b", L"File", 12));
    EXPECT_EQ(debugger.Breaks(), 1);
    EXPECT_THAT(Errors(), ElementsAre(Error("Title in A::b: detail. File(12)")));
}

TEST(ValidationWithoutLog, ReportBreaksAllTheSame) {
    const Testing::IsolatedMachine machine;
    ReportValidationError(L"Title", L"the first line reads the policy", L"A::b", L"File", 11);
    Testing::DebuggerStandIn debugger;
    EXPECT_FALSE(ReportValidationError(L"Title", L"detail", L"A::b", L"File", 12));
    EXPECT_EQ(debugger.Breaks(), 1);
    EXPECT_FALSE(std::filesystem::exists(machine.LogFile()));
}

TEST(QuoteArg, QuotesAndEscapesNothing) {
    EXPECT_EQ(QuoteArg(L"a\"b\\"), L"\"a\"b\\\"");
    EXPECT_EQ(QuoteArg(std::wstring(L"x")), L"\"x\"");
    EXPECT_EQ(QuoteArg(L""), L"\"\"");
    EXPECT_EQ(QuoteArg(static_cast<const wchar_t*>(nullptr)), L"(null)");
}

TEST(CountArg, CountsEntries) {
    const StringDictionary two{{L"a", L"1"}, {L"b", L"2"}};
    EXPECT_EQ(CountArg(two), L"[2 item(s)]");
    EXPECT_EQ(CountArg(&two), L"[2 item(s)]");
    EXPECT_EQ(CountArg(StringDictionary{}), L"[0 item(s)]");
    EXPECT_EQ(CountArg(static_cast<const StringDictionary*>(nullptr)), L"(null)");
}

} // namespace Zuvan::Lumeq::API
