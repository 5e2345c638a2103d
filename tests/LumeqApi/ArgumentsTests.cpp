#include "LumeqApi/Arguments.h"

#include "support/DebuggerStandIn.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::API {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Testing::LoggedLine;
using testing::MatchesRegex;

/// A machine whose log is complete.
class ArgumentRows : public testing::Test {
protected:
    ArgumentRows() { machine.WriteFactorySettings(); }

    std::vector<std::string> Errors() const { return Testing::LogMessages(machine.LogFile(), "ERROR"); }
    std::vector<LoggedLine> Traces() const {
        std::vector<LoggedLine> lines = Testing::LogLines(machine.LogFile(), "TRACE");
        std::erase_if(lines, [](const LoggedLine& line) { return line.function.empty(); });
        return lines;
    }

    Testing::IsolatedMachine machine;
};

/// Whether the export X runs its body for these arguments.
template <class... Rows>
bool Runs(const Rows&... rows) {
    return RunExport(L"X", Arguments{rows...}, [](const Call&) { return true; });
}

LoggedLine TraceOfX(const std::string& message) { return {"TRACE", "Zuvan::Lumeq::API::X", message}; }

auto RefusalByX(const std::string& detail) {
    return MatchesRegex("lumeq_machine_tests.exe: Validation failed in Zuvan::Lumeq::API::X: " + detail +
                        ". LumeqApi\\(\\d+\\)");
}

/// A check that an export writes by hand.
struct RefusedByHand {
    void TraceTo(std::wstring&) const {}
    bool IsAccepted(const Call& call) const { return call.Refuse(L"by hand"); }
};

/// Counts how often it is rendered and checked.
struct CountingRow {
    int& rendered;
    int& checked;

    void TraceTo(std::wstring& line) const {
        ++rendered;
        AppendToTrace(line, L"counted", L"");
    }
    bool IsAccepted(const Call&) const { return ++checked > 0; }
};

} // namespace

TEST_F(ArgumentRows, RequiredArgumentThatMatchesPasses) {
    const std::wstring name = L"Home";
    EXPECT_TRUE(Runs(Required{L"screenName", name, screenNamePattern}));
    EXPECT_THAT(Errors(), ElementsAre());
}

TEST_F(ArgumentRows, RequiredArgumentThatDoesNotIsReported) {
    const std::wstring name = L"_";
    EXPECT_FALSE(Runs(Required{L"screenName", name, screenNamePattern}));
    EXPECT_THAT(Errors(), ElementsAre(RefusalByX("invalid \\[REQUIRED\\] screenName arg: \"_\"")));
}

TEST_F(ArgumentRows, OptionalArgumentMayBeNull) {
    EXPECT_TRUE(Runs(Optional{L"mode", nullptr, modePattern}));
    EXPECT_THAT(Errors(), ElementsAre());
}

TEST_F(ArgumentRows, OptionalArgumentIsMatchedWhenEmpty) {
    EXPECT_TRUE(Runs(Optional{L"flow", L"", flowPattern}));
    EXPECT_FALSE(Runs(Optional{L"mode", L"", modePattern}));
    EXPECT_THAT(Errors(), ElementsAre(RefusalByX("invalid \\[optional\\] mode arg: \"\"")));
}

TEST_F(ArgumentRows, EveryRowIsCheckedWhateverTheEarlierOnesReturned) {
    const std::wstring name = L"_";
    // The first line reads the log's policy, which can break as well.
    Runs();
    const Testing::DebuggerStandIn debugger;
    EXPECT_FALSE(Runs(Required{L"screenName", name, screenNamePattern},
                      Arguments{Optional{L"flow", nullptr, flowPattern}, Optional{L"mode", L"", modePattern}},
                      RefusedByHand{}));
    EXPECT_EQ(debugger.Breaks(), 3);
    EXPECT_THAT(Errors(),
                ElementsAre(RefusalByX("invalid \\[REQUIRED\\] screenName arg: \"_\""),
                            RefusalByX("invalid \\[optional\\] mode arg: \"\""), RefusalByX("by hand")));
}

TEST_F(ArgumentRows, ReportNamesTheSourceLineOfTheRow) {
    const std::wstring name = L"_";
    const int line = __LINE__;
    const Required required{L"screenName", name, screenNamePattern};
    const Optional optional{L"mode", L"", modePattern};
    const Checked checked{L"urlNoPii", name, urlPattern};
    EXPECT_FALSE(Runs(required, optional, checked));
    EXPECT_THAT(Errors(), ElementsAre(HasSubstr("LumeqApi(" + std::to_string(line + 1) + ")"),
                                      HasSubstr("LumeqApi(" + std::to_string(line + 2) + ")"),
                                      HasSubstr("LumeqApi(" + std::to_string(line + 3) + ")")));
}

TEST_F(ArgumentRows, RefusedCallReturnsAnEmptyResultAndDoesNotRun) {
    bool ran = false;
    EXPECT_EQ(RunExport(L"X", Arguments{RefusedByHand{}},
                        [&](const Call&) {
                            ran = true;
                            return 7;
                        }),
              0);
    EXPECT_FALSE(ran);
}

TEST_F(ArgumentRows, TraceRendersEachArgumentByItsType) {
    const StringDictionary one{{L"a", L"b"}};
    const StringDictionary* const pointerToOne = &one;
    const ScanFeatureMap features{{L"crop", true}, {L"deskew", false}};
    const DiscoveredDeviceList devices(3);
    const std::wstring object = L"object";
    Runs(Traced{L"text", static_cast<const wchar_t*>(L"text")}, Traced{L"object", object},
         Traced{L"null", static_cast<const wchar_t*>(nullptr)}, Traced{L"one", one},
         Traced{L"pointer", pointerToOne}, Traced{L"features", features}, Traced{L"devices", devices},
         Traced{L"flag", true}, Traced{L"byte", static_cast<unsigned char>(200)}, Traced{L"number", -1},
         Traced{L"usb", ConnectionMethodType::usb}, Traced{L"odd", static_cast<ConnectionMethodType>(12)});
    EXPECT_THAT(Traces(), ElementsAre(TraceOfX("text: \"text\", object: \"object\", null: (null), "
                                               "one: [1 item(s)], pointer: [1 item(s)], "
                                               "features: [2 item(s)], devices: [3 item(s)], flag: 1, "
                                               "byte: 200, number: -1, usb: usb, "
                                               "odd: [Undefined ConnectionMethodType value: 12]")));
}

TEST_F(ArgumentRows, TraceHasTheArgumentsInOrderWhetherTheyAreGoodOrNot) {
    const std::wstring bad = L"_";
    const ContextArguments context{nullptr, L"Model 5"};
    Runs(Arguments{Optional{L"flow", L" ", flowPattern}, Required{L"screenName", bad, screenNamePattern}},
         context.Rows());
    EXPECT_THAT(Traces(), ElementsAre(TraceOfX("flow: \" \", screenName: \"_\", localContext: (null), "
                                               "globalContext: \"Model 5\"")));
}

TEST_F(ArgumentRows, TraceUsesTheLabelAndTheMarkOfARow) {
    const std::wstring name = L"_";
    const std::wstring version = L"1.2.3";
    EXPECT_FALSE(Runs(Required{L"controlName", name, controlNamePattern, L"controName"},
                      Required{L"version", version, installVersionPattern, L"version", L"'"}));
    EXPECT_THAT(Traces(), ElementsAre(TraceOfX("controName: \"_\", version: '\"1.2.3\"'")));
    EXPECT_THAT(Errors(), ElementsAre(RefusalByX("invalid \\[REQUIRED\\] controlName arg: \"_\"")));
}

TEST_F(ArgumentRows, CheckedValueIsNotTraced) {
    const std::wstring url = L"http://a/?b";
    EXPECT_TRUE(Runs(Traced{L"url", url}, Checked{L"urlNoPii", L"http://a/", urlPattern}));
    EXPECT_FALSE(Runs(Traced{L"url", url}, Checked{L"urlNoPii", url, urlPattern}));
    EXPECT_THAT(Traces(), ElementsAre(TraceOfX("url: \"http://a/?b\""), TraceOfX("url: \"http://a/?b\"")));
    EXPECT_THAT(Errors(), ElementsAre(RefusalByX("invalid \\[REQUIRED\\] urlNoPii arg: \"http://a/\\?b\"")));
}

// Readers of the log know texts that end at a zero, and the rest of the line all the same.
TEST_F(ArgumentRows, TracedTextEndsAtItsFirstZero) {
    using namespace std::string_literals;
    const std::wstring name = L"Ho\0me"s;
    const std::wstring version = L"1\0.2"s;
    Runs(Traced{L"name", name}, Required{L"version", version, installVersionPattern, L"version", L"'"},
         Traced{L"number", 1});
    EXPECT_THAT(Traces(), ElementsAre(TraceOfX("name: \"Ho, version: '\"1', number: 1")));
}

TEST(ArgumentRowsWithoutLog, AreCheckedAndNotRendered) {
    const Testing::IsolatedMachine machine;
    Runs(); // the first line reads the log's policy
    int rendered = 0;
    int checked = 0;
    EXPECT_TRUE(Runs(CountingRow{rendered, checked}, Arguments{CountingRow{rendered, checked}}));
    EXPECT_EQ(rendered, 0);
    EXPECT_EQ(checked, 2);
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
