#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <type_traits>
#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

static_assert(!std::is_copy_constructible_v<CompletionEvent>);
static_assert(std::is_base_of_v<EventingEvent, CompletionEvent>);

namespace {

constexpr std::uint64_t AllOnes = 0xFFFFFFFFFFFFFFFF;

CompletionEvent MakeEvent(const EventDetails* details, std::uint64_t startTime, std::uint64_t now) {
    SettableClock::now = now;
    return CompletionEvent(L"what", L"thing", L"which", L"success", startTime, {}, details,
                           SettableClock::Read);
}

std::wstring Duration(std::uint64_t startTime, std::uint64_t now) {
    const CompletionEvent event = MakeEvent(nullptr, startTime, now);
    return event.Record().at(L"app_event_details").AsDictionary().at(L"task_duration").AsString();
}

std::wstring WithDetails(const std::wstring& details) {
    return L"{app_event_action: \"what\", app_event_actor: \"self\", app_event_context: null, "
           L"app_event_details: " +
           details +
           L", app_event_object: \"thing\", app_event_object_label: \"which\", "
           L"schema: \"app_eventinfo/2.0.1\"}";
}

} // namespace

TEST(CompletionEvent, AddsResultAndDurationToTheDetails) {
    const CountedDetails details(OneField(L"d", L"1"));
    EXPECT_EQ(Show(MakeEvent(&details, 1000, 1250).Record()),
              WithDetails(L"{d: \"1\", task_duration: \"250\", task_result: \"success\"}"));
    EXPECT_EQ(Show(details.Data()), L"{d: \"1\"}");
}

TEST(CompletionEvent, WithoutDetailsHoldsResultAndDuration) {
    const auto expected = WithDetails(L"{task_duration: \"250\", task_result: \"success\"}");
    EXPECT_EQ(Show(MakeEvent(nullptr, 1000, 1250).Record()), expected);
    const CountedDetails empty({});
    EXPECT_EQ(Show(MakeEvent(&empty, 1000, 1250).Record()), expected);
}

TEST(CompletionEvent, ReplacesResultAndDurationOfTheDetails) {
    CountedDetails details(OneField(L"task_result", L"mine"));
    details.Add(L"task_duration", L"mine");
    EXPECT_EQ(Show(MakeEvent(&details, 1000, 1250).Record()),
              WithDetails(L"{task_duration: \"250\", task_result: \"success\"}"));
}

TEST(CompletionEvent, DurationWithinOneMillisecondIsZero) { EXPECT_EQ(Duration(1000, 1000), L"0"); }

TEST(CompletionEvent, DurationOfAClockThatWentBackIsNegative) {
    EXPECT_EQ(Duration(1700000000000, 1699999999000), L"-1000");
}

TEST(CompletionEvent, DurationIsMinusOneForAnInvalidStart) { EXPECT_EQ(Duration(AllOnes, 1000), L"-1"); }

TEST(CompletionEvent, DurationIsMinusOneForAnInvalidEnd) { EXPECT_EQ(Duration(1000, AllOnes), L"-1"); }

TEST(CompletionEvent, DurationIsMinusOneWhenBothTimesAreInvalid) {
    EXPECT_EQ(Duration(AllOnes, AllOnes), L"-1");
}

TEST(CompletionEvent, LongDurationHasNoGrouping) { EXPECT_EQ(Duration(0, 2147483647000), L"2147483647000"); }

TEST(CompletionEvent, UsesTheMachinesClock) {
    const std::uint64_t before = EpochMilliseconds();
    const CompletionEvent event(L"what", L"thing", L"which", L"unknown", InvalidTime, {}, nullptr);
    EXPECT_GE(event.Timestamp(), before);
    EXPECT_LE(event.Timestamp(), EpochMilliseconds());
    EXPECT_EQ(Show(event.Record()), WithDetails(L"{task_duration: \"-1\", task_result: \"unknown\"}"));
}

TEST(CompletionEvent, MovesItsTimeAndItsRecordAndSetsItsKeysAnew) {
    CompletionEvent source = MakeEvent(nullptr, 1000, 1250);
    const CompletionEvent target(std::move(source));
    EXPECT_EQ(target.Timestamp(), 1250U);
    EXPECT_EQ(Show(target.Record()), WithDetails(L"{task_duration: \"250\", task_result: \"success\"}"));
    for (const CompletionEvent* event : {&std::as_const(source), &target}) {
        const char* bytes = reinterpret_cast<const char*>(event);
        EXPECT_EQ(*reinterpret_cast<const std::wstring*>(bytes + 80), L"app_event_details");
        EXPECT_EQ(*reinterpret_cast<const std::wstring*>(bytes + 112), L"task_duration");
        EXPECT_EQ(*reinterpret_cast<const std::wstring*>(bytes + 144), L"task_result");
    }
}

} // namespace Zuvan::Lumeq::Extra::Eventing
