#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <type_traits>
#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

static_assert(!std::is_copy_constructible_v<EventingEvent>);
static_assert(std::is_move_constructible_v<EventingEvent>);
static_assert(std::has_virtual_destructor_v<EventingEvent>);
static_assert(std::is_abstract_v<EventDetails> && std::has_virtual_destructor_v<EventDetails>);

namespace {

EventingEvent MakeEvent(Dictionary context, const EventDetails* details) {
    return EventingEvent(L"who", L"what", L"thing", L"which", std::move(context), details);
}

std::wstring WithContextAndDetails(const std::wstring& context, const std::wstring& details) {
    return L"{app_event_action: \"what\", app_event_actor: \"who\", app_event_context: " + context +
           L", app_event_details: " + details +
           L", app_event_object: \"thing\", app_event_object_label: \"which\", "
           L"schema: \"app_eventinfo/2.0.1\"}";
}

CountedDetails* detailsToChange = nullptr;

std::uint64_t ClockThatChangesTheDetails() {
    detailsToChange->Add(L"added", L"by the clock");
    return 5;
}

} // namespace

TEST(EventingEvent, HoldsItsSevenFields) {
    const CountedDetails details(OneField(L"d", L"1"));
    const EventingEvent event = MakeEvent(MakeContext(OneField(L"g", L"2")), &details);
    EXPECT_EQ(Show(event.Record()),
              WithContextAndDetails(L"{context_global: {g: \"2\"}, context_local: null, "
                                    L"schema: \"app_event_context/1.0.0\"}",
                                    L"{d: \"1\"}"));
}

TEST(EventingEvent, ContextWithSchemaAloneIsNull) {
    EXPECT_EQ(Show(MakeEvent(OneField(L"schema", L"app_event_context/1.0.0"), nullptr).Record()),
              WithContextAndDetails(L"null", L"null"));
}

TEST(EventingEvent, ContextWithEmptyGlobalAndNullLocalSectionIsNull) {
    EXPECT_EQ(Show(MakeEvent(MakeContext({}), nullptr).Record()), WithContextAndDetails(L"null", L"null"));
}

TEST(EventingEvent, ContextWithoutAnyModelNameIsNotNull) {
    EXPECT_EQ(Show(MakeEvent(MakeEventContext(nullptr, nullptr), nullptr).Record()),
              WithContextAndDetails(L"{context_global: {_dev_modelname: null}, context_local: null, "
                                    L"schema: \"app_event_context/1.0.0\"}",
                                    L"null"));
}

TEST(EventingEvent, EmptyDetailsAreNull) {
    const CountedDetails details({});
    EXPECT_EQ(Show(MakeEvent({}, &details).Record()), WithContextAndDetails(L"null", L"null"));
}

TEST(EventingEvent, CopiesTheDetails) {
    CountedDetails details(OneField(L"d", L"1"));
    const EventingEvent event = MakeEvent({}, &details);
    details.Add(L"d", L"changed");
    EXPECT_EQ(Show(event.Record()), WithContextAndDetails(L"null", L"{d: \"1\"}"));
}

TEST(EventingEvent, ReadsTheClockBeforeTheDetails) {
    CountedDetails details({});
    detailsToChange = &details;
    const EventingEvent event(L"who", L"what", L"thing", L"which", {}, &details, ClockThatChangesTheDetails);
    EXPECT_EQ(event.Timestamp(), 5U);
    EXPECT_EQ(Show(event.Record()), WithContextAndDetails(L"null", L"{added: \"by the clock\"}"));
}

TEST(EventingEvent, CarriesTheTimeOfItsConstruction) {
    const std::uint64_t before = EpochMilliseconds();
    const EventingEvent event = MakeEvent({}, nullptr);
    EXPECT_GE(event.Timestamp(), before);
    EXPECT_LE(event.Timestamp(), EpochMilliseconds());
}

TEST(EventingEvent, MovesItsTimeAndItsRecord) {
    SettableClock::now = 77;
    EventingEvent source(L"who", L"what", L"thing", L"which", {}, nullptr, SettableClock::Read);
    SettableClock::now = 78;
    const EventingEvent target(std::move(source));
    EXPECT_EQ(target.Timestamp(), 77U);
    EXPECT_EQ(Show(target.Record()), WithContextAndDetails(L"null", L"null"));
    EXPECT_TRUE(source.Record().empty());
}

TEST(EventingEvent, ValidatesNothing) {
    const EventingEvent event(L"", L"", L"", L"\n", {}, nullptr);
    EXPECT_EQ(Show(event.Record()),
              L"{app_event_action: \"\", app_event_actor: \"\", app_event_context: null, "
              L"app_event_details: null, app_event_object: \"\", app_event_object_label: \"\n\", "
              L"schema: \"app_eventinfo/2.0.1\"}");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
