#include "LumeqC/StandInExports.h"

#include <Lumeq/lumeq.hpp>

#include <gtest/gtest.h>

#include <type_traits>

namespace Zuvan::Lumeq::Testing {

namespace {

class CppLayer : public testing::Test {
protected:
    CppLayer() { StandIn::Reset(); }
    ~CppLayer() override { StandIn::Reset(); }

    static std::wstring Noted() {
        std::wstring text;
        for (const std::wstring& call : StandIn::TakeCalls())
            text += (text.empty() ? L"" : L"; ") + call;
        return text;
    }
};

// A value of another enumeration, and a number, are no arguments.
static_assert(std::is_constructible_v<lumeq::session, const wchar_t*, lumeq::why, lumeq::how>);
static_assert(!std::is_constructible_v<lumeq::session, const wchar_t*, lumeq::how, lumeq::why>);
static_assert(!std::is_constructible_v<lumeq::session, const wchar_t*, int, int>);
static_assert(!std::is_assignable_v<decltype((lumeq::print_details::item)), lumeq::scan_item>);

static_assert(!std::is_copy_constructible_v<lumeq::session> && !std::is_copy_constructible_v<lumeq::pause> &&
              !std::is_copy_constructible_v<lumeq::scan_task>);
static_assert(std::is_nothrow_move_constructible_v<lumeq::session> &&
              std::is_nothrow_move_constructible_v<lumeq::pause> &&
              std::is_nothrow_move_constructible_v<lumeq::scan_task>);

} // namespace

TEST_F(CppLayer, SessionEndsWithItsScope) {
    {
        const lumeq::session session(L"Scan Studio", lumeq::why::start_app, lumeq::how::desktop_shortcut);
        EXPECT_EQ(L"StartupEx(\"Scan Studio\", 4, 2, 0, 0)", Noted());
    }
    EXPECT_EQ(L"ShutdownEx(10000)", Noted());
}

TEST_F(CppLayer, MovedSessionEndsOnce) {
    {
        lumeq::session first(L"a", lumeq::why::unknown, lumeq::how::unknown, {true, true}, 5);
        {
            const lumeq::session second(std::move(first));
            Noted();
        }
        EXPECT_EQ(L"ShutdownEx(5)", Noted());
    }
    EXPECT_EQ(L"", Noted());
}

TEST_F(CppLayer, PauseEndsWithItsScopeAndOnce) {
    {
        lumeq::pause first;
        const lumeq::pause second(std::move(first));
        EXPECT_EQ(L"Pause()", Noted());
    }
    EXPECT_EQ(L"Resume()", Noted());
}

TEST_F(CppLayer, ControlsTakeOverTheScreen) {
    lumeq::screen home(L"Home", lumeq::flow(L"setup"));
    home.shown();
    EXPECT_EQ(L"ScreenDisplayed(\"setup\", null, \"Home\", null, null, null)", Noted());
    home.path(L"a/b").mode(L"photo").of(lumeq::model(L"Model 400")).with(L"x", L"y");
    home.button(L"ok").with(L"paper", L"a4").clicked();
    const std::wstring where = L"(\"setup\", \"a/b\", \"Home\", \"photo\", \"ok\", {";
    EXPECT_EQ(L"ButtonClicked" + where + L"paper: \"a4\", x: \"y\"}, \"Model 400\")", Noted());
    home.tile(L"ok").of(lumeq::model(L"Model 8")).clicked();
    EXPECT_EQ(L"TileClicked" + where + L"x: \"y\"}, \"Model 8\")", Noted());
    home.hyperlink(L"ok").clicked();
    EXPECT_EQ(L"HyperlinkClicked" + where + L"x: \"y\"}, \"Model 400\")", Noted());
}

TEST_F(CppLayer, CheckboxesAndAdsPassTheirOwn) {
    const lumeq::screen home(L"Home");
    home.checkbox(L"agree").changed(true);
    EXPECT_EQ(L"CheckboxChanged(1, null, null, \"Home\", null, \"agree\", null, null)", Noted());
    const auto offer =
        home.ad(L"offer", lumeq::ad_type::banner).product(L"ink").name(L"spring").variant(L"b");
    offer.displayed();
    offer.clicked();
    offer.closed();
    const std::wstring arguments =
        L"(1, \"ink\", \"spring\", \"b\", null, null, \"Home\", null, \"offer\", null, null)";
    EXPECT_EQ(L"AdDisplayed" + arguments + L"; AdClicked" + arguments + L"; AdClosed" + arguments, Noted());
}

TEST_F(CppLayer, DroppedTaskIsCompletedAsUnknown) {
    { const auto scan = lumeq::scan_task::begin({{L"source", L"feeder"}}, lumeq::model(L"Model 8")); }
    EXPECT_EQ(L"ScanAcquireInitiated({source: \"feeder\"}, \"Model 8\"); "
              L"ScanAcquireCompleted(task, \"unknown\", 0, 0, 0, 0, 0, 0, 0, 0, {}, 0)",
              Noted());
    EXPECT_EQ(0, StandIn::OpenTasks());
}

TEST_F(CppLayer, RefusedTaskIsStillCompletedAsUnknown) {
    {
        const auto install = lumeq::installation_task::begin();
        StandIn::RefuseToComplete();
        install.complete(L"no such result");
        EXPECT_TRUE(install.is_open());
        Noted();
    }
    EXPECT_EQ(L"SoftwareInstallCompleted(task, \"unknown\", 0, \"unknown\", \"0.0.0\")", Noted());
}

TEST_F(CppLayer, CompletedTaskMakesNoMoreCalls) {
    {
        const auto connection = lumeq::connection_task::begin();
        connection.complete(L"success", {lumeq::connection_scenario::add, lumeq::connection_method::usb});
        EXPECT_FALSE(connection.is_open());
    }
    EXPECT_EQ(L"DeviceConnectInitiated(null, null); DeviceConnectCompleted(task, \"success\", 1, 7)",
              Noted());
}

TEST_F(CppLayer, MovedFromTaskDoesNothing) {
    auto first = lumeq::print_task::begin();
    auto second = std::move(first);
    Noted();
    first.complete(L"success");
    EXPECT_FALSE(first.is_open());
    EXPECT_EQ(L"", Noted());
    second = lumeq::print_task::begin(); // which ends the one it had
    EXPECT_EQ(L"PrintBasicInitiated(null, null); PrintBasicCompleted(task, \"unknown\", 0, 0, 0, 0, "
              L"\"unknown\", 0)",
              Noted());
    EXPECT_EQ(1, StandIn::OpenTasks());
}

TEST_F(CppLayer, FormsUrlsAndDevices) {
    const lumeq::form form{
        L"zuvan", L"scan", L"survey", L"1.0", {{L"a", L"b"}}, {}, lumeq::model(L"Model 8")};
    form.submitted();
    form.generated();
    const std::wstring arguments =
        L"(\"zuvan\", \"scan\", \"survey\", \"1.0\", {a: \"b\"}, null, \"Model 8\")";
    EXPECT_EQ(L"FormSubmitted" + arguments + L"; ReportGenerated" + arguments, Noted());
    lumeq::url_launched(L"http://a", {{L"a", L"b"}});
    EXPECT_EQ(L"UrlLaunchedEx(\"http://a\", {a: \"b\"}, null)", Noted());
    lumeq::track_discovered_printers({{{L"dev_biid", L"unknown"}}, {}});
    EXPECT_EQ(L"TrackDiscoveredPrintersEx([{dev_biid: \"unknown\"}, {}])", Noted());
}

TEST_F(CppLayer, TextsAreAskedForOnce) {
    EXPECT_EQ(L"id of 1c85", lumeq::biid("1c85"));
    EXPECT_EQ(L"GetBiid(\"1c85\")", Noted());
    EXPECT_EQ(L"", lumeq::biid(""));
    Noted();
    const std::string long_uuid(200, 'a');
    EXPECT_EQ(L"id of " + std::wstring(200, L'a'), lumeq::biid(long_uuid));
    EXPECT_EQ(L"method 7", lumeq::text_of(lumeq::connection_method::usb));
}

TEST_F(CppLayer, CallsTheTableThatItIsGiven) {
    const lumeq_table linked = lumeq::detail::calls();
    lumeq_table none;
    lumeq_table_set_no_ops(&none);
    lumeq::use(none);
    lumeq::set_opt_in(true);
    EXPECT_FALSE(lumeq::scan_task::begin().is_open());
    EXPECT_EQ(L"", lumeq::biid("1c85"));
    EXPECT_EQ(L"", Noted());
    lumeq::use(linked);
    lumeq::set_opt_in(true);
    EXPECT_EQ(L"SetUserOptInEx(1)", Noted());
}

} // namespace Zuvan::Lumeq::Testing
