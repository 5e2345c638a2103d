#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.h>
#include <Lumeq/lumeq_test_gtest.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>

namespace {

using namespace Zuvan::Lumeq;
using namespace lumeq_test;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::StrEq;

void ClickOk(const wchar_t* screen = L"Home") {
    API::ButtonClicked(L"setup", nullptr, screen, nullptr, L"ok", nullptr, nullptr);
}

std::string WholeLog() {
    std::string log;
    for (std::int32_t line = 0; line < lumeq_test_log_count(); ++line)
        log += lumeq_test_log_line(line) + std::string("\n");
    return log;
}

class DoubleTest : public lumeq_test::Test {};

TEST_F(DoubleTest, RecordsNothingAtFirst) {
    EXPECT_EQ(0, lumeq_test_event_count());
    EXPECT_EQ(0, lumeq_test_operation_count());
    EXPECT_EQ(0, lumeq_test_refusal_count());
    EXPECT_THAT(lumeq_test_event(0), IsNull());
    EXPECT_THAT(lumeq_test_event(-1), IsNull());
    EXPECT_STREQ("  nothing was recorded\n", lumeq_test_describe());
}

TEST_F(DoubleTest, EventIsWhatTheCompanionReceivesAndTheCall) {
    API::SetGlobalContextEx(L"Tarvik 3000");
    const API::StringDictionary context{{L"b", L"\xDC00"}, {L"a", L"\"1\""}};
    API::ButtonClicked(L"setup", nullptr, L"Home", nullptr, L"ok", &context, nullptr);
    EXPECT_STREQ(R"({"operation": "PostEventInternal", "timestamp": 1577836800000, )"
                 R"("record": {"app_event_action": "clicked", "app_event_actor": "user", )"
                 R"("app_event_context": {"context_global": {"_dev_modelname": "Tarvik 3000"}, )"
                 R"("context_local": {"a": "\"1\"", "b": "\udc00"}, "schema": "app_event_context/1.0.0"}, )"
                 R"("app_event_details": null, "app_event_object": "button", )"
                 R"("app_event_object_label": "/setup.flow/Home#ok", "schema": "app_eventinfo/2.0.1"}, )"
                 R"("call": {"call":"ButtonClicked","flow":"setup","screenName":"Home","controlName":"ok",)"
                 R"("localContext":{"a":"\"1\"","b":{"units":[56320]}}}})",
                 lumeq_test_event(0));
}

TEST_F(DoubleTest, PrintersThatAreDeliveredAreEvents) {
    API::TrackDiscoveredPrintersEx({{nullptr, {{L"dev_biid", L"unknown"}}},
                                    {nullptr, {}},
                                    {nullptr, {{L"dev_biid", L"no biid"}}},
                                    {nullptr, {{L"dev_biid", std::wstring(64, L'a')}}}});
    EXPECT_THAT(Events(), ElementsAre(PrinterTracked("unknown"), PrinterTracked(std::string(64, 'a'))));
    EXPECT_THAT(Refusals(), IsEmpty());
    API::TrackDiscoveredPrintersEx({{nullptr, {{L"name", L"x"}}}});
    EXPECT_THAT(Refusals(), ElementsAre(Refused("TrackDiscoveredPrintersEx", "discoveredDeviceList")));
}

TEST_F(DoubleTest, OperationsAreTheWholeSession) {
    API::StartupEx(L"Scan Studio", API::WhyType::start_app, API::HowType::cd_exe, true, false);
    API::SetUserOptInEx(true);
    ClickOk();
    API::Pause();
    API::FlushEx(5);
    API::ShutdownEx(-1);
    EXPECT_THAT(
        Operations(),
        ElementsAre(Started("Scan Studio").With("whyType", API::WhyType::start_app).With("howType", "cd_exe"),
                    Call("SetUserOptInEx").With("userHasOptedIn", true), ButtonClicked("Home", "ok"),
                    Call("Pause"), Call("Pause"), Call("FlushEx").With("timeoutMsec", 5), ShutDown(),
                    ShutDown()));
    EXPECT_THAT(lumeq_test_operation(7),
                StartsWith(R"({"operation": "ShutdownInternal", "timeoutMsec": 10000, )"));
    EXPECT_EQ(1, lumeq_test_event_count());
}

TEST_F(DoubleTest, RefusalOfAnExportHasTheWordsOfTheLinter) {
    ClickOk(L"My Screen");
    EXPECT_EQ(0, lumeq_test_event_count());
    ASSERT_EQ(1, lumeq_test_refusal_count());
    EXPECT_STREQ(
        R"({"export":"ButtonClicked","argument":"screenName","value":"My Screen","refusedBy":"export",)"
        R"("message":"screenName \"My Screen\" is refused by the export","advice":"letters, digits )"
        R"(and underscores; begins and ends with one of A to Z, a to z or 0 to 9; nearest: \"My_Screen\"",)"
        R"("call":{"call":"ButtonClicked","flow":"setup","screenName":"My Screen","controlName":"ok"}})",
        lumeq_test_refusal(0));
}

TEST_F(DoubleTest, RefusalOfAnEventClassNamesTheArgument) {
    API::HyperlinkClicked(nullptr, nullptr, L"Home", L"a_b", L"help", nullptr, nullptr);
    EXPECT_THAT(Refusals(),
                ElementsAre(Refused("HyperlinkClicked", "mode").With("refusal.refusedBy", "event class")));
    API::StartupEx(L"x", static_cast<API::WhyType>(99), API::HowType::cd_exe, false, false);
    EXPECT_THAT(lumeq_test_refusal(1), HasSubstr("whyType 99, no value of WhyType (0 to 7), is refused"));
    EXPECT_EQ(0, lumeq_test_operation_count());
}

TEST_F(DoubleTest, EachBadArgumentIsARefusal) {
    API::ButtonClicked(L"a b", nullptr, L"", L"a b", L"ok", nullptr, nullptr);
    EXPECT_THAT(Refusals(),
                ElementsAre(Refused("ButtonClicked", "flow"), Refused("ButtonClicked", "screenName"),
                            Refused("ButtonClicked", "mode")));
}

TEST_F(DoubleTest, ReplacedNumbersAndNullHandlesAreRefusals) {
    API::FlushEx(-7);
    API::TaskHandle none = nullptr;
    API::DeviceConfigCompleted(&none, L"success", API::ConfigurationSettingType::unknown);
    EXPECT_THAT(Refusals(), ElementsAre(Refused("FlushEx", "timeoutMsec"),
                                        Refused("DeviceConfigCompleted", "taskHandle")));
    EXPECT_THAT(Operations(), ElementsAre(Call("FlushEx")));
}

TEST_F(DoubleTest, TasksAreTiedByNameAndGuid) {
    API::TaskHandle first = API::DeviceConfigInitiated(nullptr, nullptr);
    API::TaskHandle second = API::PrintBasicInitiated(nullptr, nullptr);
    lumeq_test_advance_clock(1234);
    API::DeviceConfigCompleted(&first, L"success", API::ConfigurationSettingType::unknown);
    constexpr char Guid[] = "record.app_event_context.context_local._app_event_task_guid";
    EXPECT_THAT(Events(), ElementsAre(TaskInitiated("DeviceConfig").With("handle", "task 1"),
                                      TaskInitiated("PrintBasic")
                                          .With("handle", "task 2")
                                          .With(Guid, "00000000-0000-0000-0000-000000000002"),
                                      TaskCompleted("DeviceConfig", "success")
                                          .With("taskHandle", "task 1")
                                          .With(Guid, "00000000-0000-0000-0000-000000000001")
                                          .With("record.app_event_details.task_duration", "1234")));
    lumeq_test_reset();
    lumeq_test_set_next_guid(0xABCDEF0123456789);
    API::PrintBasicCompleted(&second, L"unknown", {}, {}, {}, {}, L"x", 1);
    API::TaskHandle third = API::FileSendToInitiated(nullptr, nullptr);
    EXPECT_THAT(Events(), ElementsAre(TaskCompleted("PrintBasic", "unknown").With("taskHandle", "task 2"),
                                      TaskInitiated("FileSendTo")
                                          .With("handle", "task 1")
                                          .With(Guid, "00000000-0000-0000-abcd-ef0123456789")));
    API::FileSendToCompleted(&third, L"success", {}, {}, {}, {}, 0);
}

TEST_F(DoubleTest, ClockStandsStillUntilItIsMoved) {
    ClickOk();
    lumeq_test_advance_clock(-1);
    ClickOk();
    lumeq_test_set_clock(5);
    ClickOk();
    EXPECT_THAT(lumeq_test_event(0), HasSubstr("\"timestamp\": 1577836800000,"));
    EXPECT_THAT(lumeq_test_event(1), HasSubstr("\"timestamp\": 1577836799999,"));
    EXPECT_THAT(lumeq_test_event(2), HasSubstr("\"timestamp\": 5,"));
}

TEST_F(DoubleTest, ChoiceIsThatOfTheTestAndOfTheHost) {
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_UNSET, lumeq_test_opt_in());
    EXPECT_FALSE(API::GetUserOptInEx());
    lumeq_test_set_opt_in(LUMEQ_TEST_OPT_IN_YES);
    EXPECT_TRUE(API::GetUserOptInEx());
    API::SetUserOptInEx(false);
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_NO, lumeq_test_opt_in());
    lumeq_test_set_opt_in(LUMEQ_TEST_OPT_IN_UNSET);
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_UNSET, lumeq_test_opt_in());
}

TEST_F(DoubleTest, PauseEndsWithTheChoiceBeforeIt) {
    lumeq_test_set_opt_in(LUMEQ_TEST_OPT_IN_YES);
    API::Pause();
    EXPECT_TRUE(lumeq_test_is_paused());
    EXPECT_FALSE(API::GetUserOptInEx());
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_YES, lumeq_test_opt_in());
    API::Resume();
    EXPECT_FALSE(lumeq_test_is_paused());
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_YES, lumeq_test_opt_in());
}

TEST_F(DoubleTest, StateOfTheCInterfaceIsThatOfTheTest) {
    lumeq_state state = LUMEQ_STATE_INIT;
    ASSERT_EQ(1, lumeq_get_state(&state));
    EXPECT_EQ(LUMEQ_CHOICE_UNSET, state.choice);
    EXPECT_EQ(0, state.is_disabled);
    EXPECT_EQ(LUMEQ_ROAD_MANAGED, state.road);
    lumeq_test_set_opt_in(LUMEQ_TEST_OPT_IN_YES);
    lumeq_pause();
    lumeq_test_disable_tracking(1);
    ASSERT_EQ(1, lumeq_get_state(&state));
    EXPECT_EQ(LUMEQ_CHOICE_YES, state.choice);
    EXPECT_EQ(1, state.is_paused);
    EXPECT_EQ(1, state.is_disabled);
}

TEST_F(DoubleTest, EachSubfolderHasItsOwnChoice) {
    lumeq_test_set_opt_in(LUMEQ_TEST_OPT_IN_YES);
    API::SetLocalSubfolderPathEx(L"Brand\\Line");
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_UNSET, lumeq_test_opt_in());
    API::SetUserOptInEx(false);
    API::SetLocalSubfolderPathEx(L"other");
    API::SetLocalSubfolderPathEx(L"BRAND\\line\\");
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_NO, lumeq_test_opt_in());
}

TEST_F(DoubleTest, DisabledTrackingRecordsNothing) {
    lumeq_test_disable_tracking(1);
    ClickOk();
    ClickOk(L"My Screen");
    EXPECT_TRUE(lumeq_test_is_tracking_disabled());
    EXPECT_EQ(0, lumeq_test_event_count() + lumeq_test_refusal_count());
    lumeq_test_reset();
    ClickOk();
    EXPECT_EQ(1, lumeq_test_event_count());
}

TEST_F(DoubleTest, FailedDeliveryLosesOneEvent) {
    lumeq_test_fail_next_delivery();
    ClickOk();
    ClickOk(L"Second");
    EXPECT_THAT(Events(), ElementsAre(ButtonClicked("Second", "ok")));
    EXPECT_THAT(WholeLog(),
                HasSubstr("WARNING PostEventXX exception with the test makes this delivery fail\n"));
    EXPECT_THAT(Refusals(), IsEmpty());
}

TEST_F(DoubleTest, ChoiceSurvivesAFailedDelivery) {
    lumeq_test_fail_next_delivery();
    API::SetUserOptInEx(true);
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_YES, lumeq_test_opt_in());
    lumeq_test_fail_next_delivery();
    EXPECT_FALSE(API::GetUserOptInEx());
    lumeq_test_fail_next_delivery();
    API::StartupEx(L"x", API::WhyType::unknown, API::HowType::unknown, false, false);
    EXPECT_THAT(Operations(), IsEmpty());
}

TEST_F(DoubleTest, ResetForgetsEverything) {
    API::SetGlobalContextEx(L"Tarvik 3000");
    API::SetLocalSubfolderPathEx(L"other");
    API::SetUserOptInEx(true);
    ClickOk(L"My Screen");
    lumeq_test_set_clock(5);
    lumeq_test_fail_next_delivery();
    lumeq_test_reset();
    EXPECT_EQ(0, lumeq_test_event_count() + lumeq_test_operation_count() + lumeq_test_refusal_count());
    EXPECT_EQ(1, lumeq_test_log_count());
    ClickOk();
    EXPECT_THAT(lumeq_test_event(0), HasSubstr("\"timestamp\": 1577836800000,"));
    EXPECT_THAT(
        Events(),
        ElementsAre(
            Call("ButtonClicked").With("record.app_event_context.context_global._dev_modelname", nullptr)));
    EXPECT_EQ(LUMEQ_TEST_OPT_IN_UNSET, lumeq_test_opt_in());
}

TEST_F(DoubleTest, LogSaysThatThisIsADouble) {
    EXPECT_STREQ("WARNING This is the recording double of Lumeq " LUMEQ_VERSION
                 " for unit tests. It delivers nothing.",
                 lumeq_test_log_line(0));
    ClickOk(L"a\nb");
    EXPECT_THAT(lumeq_test_log_line(1),
                StartsWith("TRACE Zuvan::Lumeq::API::ButtonClicked: flow: \"setup\""));
    EXPECT_THAT(lumeq_test_log_line(2), HasSubstr("invalid [REQUIRED] screenName arg: \"a\\nb\""));
}

TEST_F(DoubleTest, ExportsThatReturnTextsReturnThem) {
    std::wstring text = L"before";
    API::ToString(API::ConnectionMethodType::usb, text);
    EXPECT_EQ(L"usb", text);
    API::GetBiid("1c852a4d-b800-1f08-abcd-3c52821f9ab0", text);
    EXPECT_EQ(64u, text.size());
    wchar_t buffer[8] = L"before";
    EXPECT_EQ(0, API::ToString_Internal(buffer, 8, API::ConnectionMethodType::usb));
    EXPECT_STREQ(L"usb", buffer);
    EXPECT_EQ(ERANGE, API::GetBiid_Internal(buffer, 8, "x"));
    API::GetBiid("", text);
    EXPECT_THAT(Refusals(), ElementsAre(Refused("GetBiid", "deviceUuid")));
}

TEST_F(DoubleTest, ThreadsRecordEverything) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([thread] {
            for (int call = 0; call < 100; ++call) {
                ClickOk((L"T" + std::to_wstring(thread)).c_str());
                ClickOk((L"T " + std::to_wstring(thread)).c_str());
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(400, lumeq_test_event_count());
    EXPECT_EQ(400, lumeq_test_refusal_count());
    for (int thread = 0; thread < 4; ++thread)
        EXPECT_THAT(Events(), Contains(ButtonClicked("T" + std::to_string(thread), "ok")).Times(100));
}

} // namespace
