#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq_test_gtest.h>

#include <gtest/gtest.h>

namespace {

using namespace Zuvan::Lumeq;
using namespace lumeq_test;
using ::testing::ElementsAre;
using ::testing::IsNull;
using ::testing::Not;
using ::testing::PrintToString;

class MatchingTest : public lumeq_test::Test {
protected:
    template <class... Pairs>
    std::string Mismatch(const char* exportName, Pairs... pairs) {
        const std::vector<lumeq_test_argument> arguments{pairs...};
        const char* const mismatch =
            lumeq_test_mismatch(lumeq_test_event(0), exportName, arguments.data(), arguments.size());
        return mismatch ? mismatch : "";
    }
    using Pair = lumeq_test_argument;
};

TEST_F(MatchingTest, EachEventHasAMatcher) {
    const API::StringDictionary details{{L"colour", L"red"}};
    API::ScreenDisplayed(nullptr, nullptr, L"S", nullptr, nullptr, nullptr);
    API::TileClicked(nullptr, nullptr, L"S", nullptr, L"c", nullptr, nullptr);
    API::HyperlinkClicked(nullptr, nullptr, L"S", nullptr, L"c", nullptr, nullptr);
    API::CheckboxChanged(7, nullptr, nullptr, L"S", nullptr, L"c", nullptr, nullptr);
    API::CheckboxChanged(0, nullptr, nullptr, L"S", nullptr, L"c", nullptr, nullptr);
    for (auto* ad : {API::AdDisplayed, API::AdClicked, API::AdClosed})
        ad(API::AdType::tile, L"p", L"n", L"v", nullptr, nullptr, L"S", nullptr, L"c", nullptr, nullptr);
    API::UrlLaunchedEx(L"https://example.com/a?b=c", nullptr, nullptr);
    API::FormSubmitted(L"org", L"code", L"form", L"1.0", details, nullptr, nullptr);
    API::ReportGenerated(L"org", L"code", L"report", L"1.0", details, nullptr, nullptr);
    EXPECT_THAT(Events(),
                ElementsAre(ScreenDisplayed("S"), TileClicked("S", "c"),
                            HyperlinkClicked(L"S", std::wstring(L"c")), CheckboxChanged("S", "c", true),
                            CheckboxChanged("S", "c", false),
                            AdDisplayed("S", "c").With("adType", API::AdType::tile), AdClicked("S", "c"),
                            AdClosed("S", "c").With("product", "p"),
                            UrlLaunched("https://example.com/a?b=c")
                                .With("record.app_event_object_label", "https://example.com/a"),
                            FormSubmitted("form").With("details.colour", "red"), ReportGenerated("report")));
}

TEST_F(MatchingTest, EachTaskHasItsMatchers) {
    using TaskPair = std::pair<API::TaskHandle, std::string>;
    std::vector<TaskPair> tasks{{API::ScanAcquireInitiated(nullptr, nullptr), "ScanAcquire"},
                                {API::PrintBasicInitiated(nullptr, nullptr), "PrintBasic"},
                                {API::FileSendToInitiated(nullptr, nullptr), "FileSendTo"},
                                {API::DeviceConnectInitiated(nullptr, nullptr), "DeviceConnect"},
                                {API::DeviceConfigInitiated(nullptr, nullptr), "DeviceConfig"},
                                {API::SoftwareInstallInitiated(nullptr, nullptr), "SoftwareInstall"}};
    auto events = Events();
    ASSERT_EQ(6u, events.size());
    for (std::size_t at = 0; at < tasks.size(); ++at)
        EXPECT_THAT(events[at], TaskInitiated(tasks[at].second));
    lumeq_test_reset();
    API::ScanAcquireCompleted(&tasks[0].first, L"success", {}, {}, {}, {}, {}, {}, {}, {}, {{L"crop", false}},
                              1);
    API::PrintBasicCompleted(&tasks[1].first, L"success", {}, {}, {}, {}, L"A4", 1);
    API::FileSendToCompleted(&tasks[2].first, L"success", {}, {}, {}, {}, 1);
    API::DeviceConnectCompleted(&tasks[3].first, L"success", {}, {});
    API::DeviceConfigCompleted(&tasks[4].first, L"success", {});
    API::SoftwareInstallCompleted(&tasks[5].first, L"success", {}, L"Driver", L"1.2.3.4");
    events = Events();
    ASSERT_EQ(6u, events.size());
    for (std::size_t at = 0; at < tasks.size(); ++at)
        EXPECT_THAT(events[at], TaskCompleted(tasks[at].second, "success"));
    EXPECT_THAT(events[0], Call("ScanAcquireCompleted").With("features.crop", false));
}

TEST_F(MatchingTest, ValuesHaveTheirTexts) {
    API::AdClicked(API::AdType::banner, L"p", L"n", L"\u00e4\xD83D\xDE00", nullptr, nullptr, L"S", nullptr,
                   L"c", nullptr, nullptr);
    EXPECT_EQ("", Mismatch("AdClicked", Pair{"adType", "1"}, Pair{"adType", "banner"}, Pair{"flow", nullptr},
                           Pair{"variant", "\u00e4\U0001F600"}));
    EXPECT_EQ("", Mismatch("AdClicked", Pair{"variant", ToValue(L"\u00e4\xD83D\xDE00").c_str()}));
    EXPECT_EQ("adType is 1 (banner), not \"tile\"", Mismatch("AdClicked", Pair{"adType", "tile"}));
    EXPECT_EQ("flow is null, not \"x\"; screenName is \"S\", not null",
              Mismatch("AdClicked", Pair{"flow", "x"}, Pair{"screenName", nullptr}));
}

TEST_F(MatchingTest, MistakesOfATestAreNamed) {
    API::ScreenDisplayed(nullptr, nullptr, L"S", nullptr, nullptr, nullptr);
    EXPECT_EQ("ScreenDisplayed has no argument \"screen\"", Mismatch("ScreenDisplayed", Pair{"screen", "S"}));
    EXPECT_EQ("Lumeq has no export \"ScreenShown\"", Mismatch("ScreenShown"));
    EXPECT_EQ("is ScreenDisplayed(screenName: \"S\"), not ButtonClicked", Mismatch("ButtonClicked"));
    EXPECT_STREQ("lumeq_test failed: ",
                 std::string(lumeq_test_mismatch("{", "Pause", nullptr, 0)).substr(0, 19).c_str());
}

TEST_F(MatchingTest, MissingEventIsShownWithWhatThereIs) {
    API::ScreenDisplayed(nullptr, nullptr, L"S", nullptr, nullptr, nullptr);
    API::ScreenDisplayed(nullptr, nullptr, L"a b", nullptr, nullptr, nullptr);
    const Pair arguments[] = {{"screenName", "a b"}, {"mode", nullptr}};
    EXPECT_STREQ(
        "no event ScreenDisplayed(screenName: \"a b\", mode: null); there are:\n"
        "  event 0: ScreenDisplayed(screenName: \"S\")\n"
        "  refusal 0: ScreenDisplayed: screenName \"a b\" is refused by the export: letters, "
        "digits and underscores; begins and ends with one of A to Z, a to z or 0 to 9; nearest: \"a_b\"\n",
        lumeq_test_missing_event("ScreenDisplayed", arguments, 2));
    const Pair present{"screenName", "S"};
    EXPECT_THAT(lumeq_test_missing_event("ScreenDisplayed", &present, 1), IsNull());
    EXPECT_THAT(lumeq_test_missing_event("ScreenDisplayed", nullptr, 0), IsNull());
}

TEST_F(MatchingTest, FailuresOfMatchersCanBeRead) {
    API::ScreenDisplayed(L"setup", nullptr, L"S", nullptr, nullptr, nullptr);
    EXPECT_EQ("ScreenDisplayed(flow: \"setup\", screenName: \"S\")", PrintToString(Events().at(0)));
    const ::testing::Matcher<const Recorded&> matcher = ScreenDisplayed("T").With("mode", nullptr);
    EXPECT_EQ("is ScreenDisplayed(screenName: \"T\", mode: null)",
              ::testing::DescribeMatcher<const Recorded&>(matcher));
    ::testing::StringMatchResultListener listener;
    EXPECT_FALSE(ExplainMatchResult(matcher, Events().at(0), &listener));
    EXPECT_EQ("screenName is \"S\", not \"T\"", listener.str());
}

} // namespace
