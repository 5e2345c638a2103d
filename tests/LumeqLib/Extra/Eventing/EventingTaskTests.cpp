#include "LumeqLib/Extra/Eventing/EventingTask.h"

#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqLib/Extra/Eventing/TaskDetails.h"
#include "support/ImportedFunction.h"
#include "support/SmallStack.h"
#include "support/TextShape.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <chrono>
#include <rpc.h>
#include <thread>
#include <type_traits>
#include <vector>

namespace Zuvan::Lumeq::Extra::Eventing {

static_assert(std::has_virtual_destructor_v<EventingTask>);
static_assert(sizeof(ScanAcquireTask) == sizeof(EventingTask));

namespace {

constexpr wchar_t ResultRefused[] =
    L"Task result is not formatted correctly. Must be of form "
    L"success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?)\nParameter name: taskResult";

std::wstring GuidOf(const EventingEvent& event) {
    return event.Record()
        .at(L"app_event_context")
        .AsDictionary()
        .at(L"context_local")
        .AsDictionary()
        .at(L"_app_event_task_guid")
        .AsString();
}

std::wstring DurationOf(const EventingEvent& event) {
    return event.Record().at(L"app_event_details").AsDictionary().at(L"task_duration").AsString();
}

EventingTask SomeTask() {
    return EventingTask(L"task", L"task_scan_acquire", MakeEventContext(nullptr, nullptr));
}

/// The duration of a task that begins at one time and ends at another.
std::wstring TaskDuration(std::uint64_t begin, std::uint64_t end) {
    EventingTask task = SomeTask();
    SettableClock::now = begin;
    task.Initiated(SettableClock::Read);
    SettableClock::now = end;
    return DurationOf(task.Completed(L"success", nullptr, SettableClock::Read));
}

std::wstring Refusal(const std::wstring& taskResult) {
    const EventingTask task = SomeTask();
    return FullMessageOf<Common::ArgumentException>([&] { task.Completed(taskResult, nullptr); });
}

bool Completes(const std::wstring& taskResult) { return Refusal(taskResult) == L"(nothing was thrown)"; }

std::wstring Record(const std::wstring& action, const std::wstring& label, const std::wstring& local,
                    const std::wstring& details) {
    return L"{app_event_action: \"" + action +
           L"\", app_event_actor: \"self\", app_event_context: {context_global: {_dev_modelname: null}, "
           L"context_local: " +
           local + L", schema: \"app_event_context/1.0.0\"}, app_event_details: " + details +
           L", app_event_object: \"task\", app_event_object_label: \"" + label +
           L"\", schema: \"app_eventinfo/2.0.1\"}";
}

} // namespace

TEST(EventingTask, InitiatedEventHasNoDetails) {
    EventingTask task = SomeTask();
    const EventingEvent event = task.Initiated();
    EXPECT_EQ(Show(event.Record()), Record(L"initiated", L"task_scan_acquire",
                                           L"{_app_event_task_guid: \"" + GuidOf(event) + L"\"}", L"null"));
}

TEST(EventingTask, CompletedEventCarriesDetailsResultAndDuration) {
    EventingTask task = SomeTask();
    SettableClock::now = 1000;
    task.Initiated(SettableClock::Read);
    SettableClock::now = 4000;
    const DeviceConfigTaskDetails details(ConfigurationSetting{1});
    const CompletionEvent event = task.Completed(L"error_12", &details, SettableClock::Read);
    EXPECT_EQ(event.Timestamp(), 4000U);
    EXPECT_EQ(Show(event.Record()),
              Record(L"completed", L"task_scan_acquire",
                     L"{_app_event_task_guid: \"" + GuidOf(event) + L"\"}",
                     L"{config_setting: \"pbut_consent_enable\", "
                     L"schema: \"app_event_task_device_config/1.0.0\", task_duration: \"3000\", "
                     L"task_result: \"error_12\"}"));
}

TEST(EventingTask, CompletesWithoutDetails) {
    EventingTask task = SomeTask();
    SettableClock::now = 1000;
    task.Initiated(SettableClock::Read);
    const CompletionEvent event = task.Completed(L"unknown", nullptr, SettableClock::Read);
    EXPECT_EQ(Show(event.Record().at(L"app_event_details")),
              L"{task_duration: \"0\", task_result: \"unknown\"}");
}

TEST(EventingTask, BothEventsShowTheSameGuid) {
    EventingTask task = SomeTask();
    const std::wstring guid = GuidOf(task.Initiated());
    EXPECT_EQ(GuidOf(task.Completed(L"success", nullptr)), guid);
    EXPECT_EQ(Testing::ShapeOf(guid, L"0123456789abcdef"), L"########-####-####-####-############");
}

TEST(EventingTask, TwoTasksNeverShareAGuid) {
    EventingTask first = SomeTask();
    EventingTask second = SomeTask();
    EXPECT_NE(GuidOf(first.Initiated()), GuidOf(second.Initiated()));
}

TEST(EventingTask, GuidThatTheSystemFailsToMakeIsWhatTheSystemLeft) {
    {
        const Testing::ImportedFunction<decltype(UuidCreate)> failing(
            "rpcrt4.dll", "UuidCreate", [](UUID*) -> RPC_STATUS { return RPC_S_UUID_NO_ADDRESS; });
        EXPECT_EQ(GuidOf(SomeTask().Initiated()), L"00000000-0000-0000-0000-000000000000");
    }
    const Testing::ImportedFunction<decltype(UuidCreate)> local("rpcrt4.dll", "UuidCreate",
                                                                [](UUID* uuid) -> RPC_STATUS {
                                                                    uuid->Data1 = 0x1A2B3C4D;
                                                                    return RPC_S_UUID_LOCAL_ONLY;
                                                                });
    EXPECT_EQ(GuidOf(SomeTask().Initiated()), L"1a2b3c4d-0000-0000-0000-000000000000");
}

TEST(EventingTask, HostsValueUnderTheNameOfTheGuidIsReplaced) {
    const StringDictionary local{{L"_app_event_task_guid", L"mine"}, {L"k", L"v"}};
    EventingTask task(L"task", L"task_scan_acquire", MakeEventContext(&local, nullptr));
    const EventingEvent event = task.Initiated();
    EXPECT_NE(GuidOf(event), L"mine");
    EXPECT_EQ(Show(event.Record()),
              Record(L"initiated", L"task_scan_acquire",
                     L"{_app_event_task_guid: \"" + GuidOf(event) + L"\", k: \"v\"}", L"null"));
}

TEST(EventingTask, NullLocalContextBecomesOneWithExactlyTheGuid) {
    EventingTask task = SomeTask();
    const EventingEvent event = task.Initiated();
    const Dictionary& context = event.Record().at(L"app_event_context").AsDictionary();
    EXPECT_EQ(context.at(L"context_local").AsDictionary().size(), 1U);
}

TEST(EventingTask, LeavesTheHostsContextAlone) {
    const Dictionary context = MakeEventContext(nullptr, nullptr);
    const std::unique_ptr<EventingTask> task = MakeScanAcquireTask(context);
    EXPECT_EQ(Show(context), L"{context_global: {_dev_modelname: null}, context_local: null, "
                             L"schema: \"app_event_context/1.0.0\"}");
}

TEST(EventingTask, FactoriesGiveEachKindItsLabel) {
    struct Row {
        std::unique_ptr<EventingTask> (*make)(const Dictionary&);
        const wchar_t* label;
    };
    const Row rows[] = {
        {MakeDeviceConfigTask, L"task_device_config"}, {MakeDeviceConnectTask, L"task_device_connect"},
        {MakeFileSendToTask, L"task_file_sendto"},     {MakePrintBasicTask, L"task_print_basic"},
        {MakeScanAcquireTask, L"task_scan_acquire"},   {MakeSwInstallTask, L"task_sw_install"},
    };
    const Dictionary context = MakeEventContext(nullptr, nullptr);
    for (const Row& row : rows) {
        const std::unique_ptr<EventingTask> task = row.make(context);
        const EventingEvent event = task->Initiated();
        EXPECT_EQ(
            Show(event.Record()),
            Record(L"initiated", row.label, L"{_app_event_task_guid: \"" + GuidOf(event) + L"\"}", L"null"));
    }
}

TEST(EventingTask, FactoriesGiveTheirClass) {
    const auto isA = []<class Task>(const std::unique_ptr<EventingTask>& task, const Task*) {
        return dynamic_cast<const Task*>(task.get()) != nullptr;
    };
    EXPECT_TRUE(isA(MakeDeviceConfigTask({}), static_cast<DeviceConfigTask*>(nullptr)));
    EXPECT_TRUE(isA(MakeDeviceConnectTask({}), static_cast<DeviceConnectTask*>(nullptr)));
    EXPECT_TRUE(isA(MakeFileSendToTask({}), static_cast<FileSendToTask*>(nullptr)));
    EXPECT_TRUE(isA(MakePrintBasicTask({}), static_cast<PrintBasicTask*>(nullptr)));
    EXPECT_TRUE(isA(MakeScanAcquireTask({}), static_cast<ScanAcquireTask*>(nullptr)));
    EXPECT_TRUE(isA(MakeSwInstallTask({}), static_cast<SwInstallTask*>(nullptr)));
}

TEST(TaskDuration, IsTheTimeBetweenTheTwoEvents) {
    EXPECT_EQ(TaskDuration(1700000000000, 1700000061234), L"61234");
}

TEST(TaskDuration, IsZeroWithinOneMillisecond) {
    EXPECT_EQ(TaskDuration(1700000000000, 1700000000000), L"0");
}

TEST(TaskDuration, IsNegativeWhenTheClockWasSetBack) {
    EXPECT_EQ(TaskDuration(1700000000000, 1699996400000), L"-3600000");
}

TEST(TaskDuration, IsMinusOneWhenTheClockIsPastItsLimit) {
    const std::uint64_t past = ValidTimeOrInvalid(2147483647001);
    EXPECT_EQ(TaskDuration(past, past), L"-1");
}

TEST(TaskDuration, IsMinusOneWhenTheClockPassesItsLimitDuringTheTask) {
    EXPECT_EQ(TaskDuration(ValidTimeOrInvalid(2147483646999), ValidTimeOrInvalid(2147483647001)), L"-1");
}

TEST(TaskDuration, IsMinusOneWhenTheClockComesBackFromPastItsLimit) {
    EXPECT_EQ(TaskDuration(ValidTimeOrInvalid(2147483647001), 1700000000000), L"-1");
}

TEST(TaskDuration, IsMinusOneForATaskThatNeverBegan) {
    SettableClock::now = 1700000000000;
    EXPECT_EQ(DurationOf(SomeTask().Completed(L"success", nullptr, SettableClock::Read)), L"-1");
}

TEST(TaskDuration, CountsByTheMachinesClock) {
    EventingTask task = SomeTask();
    const std::uint64_t begin = task.Initiated().Timestamp();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const CompletionEvent event = task.Completed(L"success", nullptr);
    EXPECT_EQ(DurationOf(event), std::to_wstring(event.Timestamp() - begin));
    EXPECT_GE(event.Timestamp() - begin, 40U);
}

TEST(TaskResult, TakesItsForms) {
    for (const wchar_t* result : {L"success", L"unknown", L"error", L"error_12", L"error_0", L"error_ab",
                                  L"error_Z9", L"error_paperJam2"})
        EXPECT_TRUE(Completes(result)) << testing::PrintToString(result);
}

TEST(TaskResult, RefusesEverythingElse) {
    for (const wchar_t* result :
         {L"", L"Error", L"SUCCESS", L"Unknown", L"error_", L"error_1a", L"error_a_b", L"error ab",
          L"success ", L" success", L"success\n", L"successunknown", L"error_\u00e9\u00e9", L"error_12 "})
        EXPECT_EQ(Refusal(result), ResultRefused) << testing::PrintToString(result);
}

TEST(TaskResult, NameOfOneLetterIsRefusedAndTheTaskCompletesAfterwards) {
    EventingTask task = SomeTask();
    SettableClock::now = 1000;
    const std::wstring guid = GuidOf(task.Initiated(SettableClock::Read));
    SettableClock::now = 2000;
    EXPECT_EQ(FullMessageOf<Common::ArgumentException>(
                  [&] { task.Completed(L"error_a", nullptr, SettableClock::Read); }),
              ResultRefused);
    SettableClock::now = 3000;
    const CompletionEvent event = task.Completed(L"error_ab", nullptr, SettableClock::Read);
    EXPECT_EQ(GuidOf(event), guid);
    EXPECT_EQ(DurationOf(event), L"2000");
}

TEST(TaskResult, SurvivesAHundredThousandCharactersOnASmallStack) {
    constexpr std::size_t hundredThousand = 100000;
    bool letters = false;
    bool digits = false;
    bool mixed = true;
    Testing::OnSmallStack([&] {
        letters = Completes(L"error_" + std::wstring(hundredThousand, L'a'));
        digits = Completes(L"error_" + std::wstring(hundredThousand, L'1'));
        mixed = Completes(L"error_" + std::wstring(hundredThousand, L'1') + L'a');
    });
    EXPECT_TRUE(letters);
    EXPECT_TRUE(digits);
    EXPECT_FALSE(mixed);
}

TEST(TaskResult, LongRefusalsTakeNoLongerThanOthers) {
    EXPECT_FALSE(Completes(L"error_" + std::wstring(10000, L'a') + L'\n'));
    EXPECT_FALSE(Completes(L"error_" + std::wstring(10000, L'1') + L'\n'));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
