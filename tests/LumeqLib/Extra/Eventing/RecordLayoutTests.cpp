// The offsets by which the companion library reads what crosses to it, and the order of the fields between
// the calls of a task, seen from outside.
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqLib/Extra/Eventing/EventObject.h"
#include "LumeqLib/Extra/Eventing/EventingTask.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <cstring>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

template <class Field, class Object>
const Field& At(const Object& object, std::size_t offset) {
    return *reinterpret_cast<const Field*>(reinterpret_cast<const char*>(&object) + offset);
}

} // namespace

TEST(RecordLayout, VariantIsAPointerAndATag) {
    Variant variant;
    variant = std::wstring(L"text");
    EXPECT_EQ(*At<const std::wstring*>(variant, 0), L"text");
    EXPECT_EQ(At<std::int32_t>(variant, 8), 1);
    EXPECT_EQ(sizeof(Variant), 16U);
}

TEST(RecordLayout, EventHasItsTimeAt8AndItsRecordAt16) {
    SettableClock::now = 1234567890123;
    const EventingEvent event(L"who", L"what", L"thing", L"label", {}, nullptr, SettableClock::Read);
    EXPECT_EQ(At<std::uint64_t>(event, 8), 1234567890123U);
    EXPECT_EQ(&At<Dictionary>(event, 16), &event.Record());
}

TEST(RecordLayout, CompletionEventHasItsKeysAt80And112And144) {
    SettableClock::now = 1234567890123;
    const CompletionEvent event(L"what", L"thing", L"label", L"success", 1, {}, nullptr, SettableClock::Read);
    EXPECT_EQ(At<std::uint64_t>(event, 8), 1234567890123U);
    EXPECT_EQ(&At<Dictionary>(event, 16), &event.Record());
    EXPECT_EQ(At<std::wstring>(event, 80), L"app_event_details");
    EXPECT_EQ(At<std::wstring>(event, 112), L"task_duration");
    EXPECT_EQ(At<std::wstring>(event, 144), L"task_result");
}

TEST(RecordLayout, EventObjectIsItsDetailsItsLabelAndItsWord) {
    const EventObject object = MakeAdObject(L"label", std::make_unique<CountedDetails>(OneField(L"d", L"1")));
    EXPECT_EQ(Show(At<const EventDetails*>(object, 0)->Data()), L"{d: \"1\"}");
    EXPECT_EQ(At<std::wstring>(object, 8), L"label");
    EXPECT_EQ(At<std::wstring>(object, 8 + sizeof(std::wstring)), L"ad");
    EXPECT_EQ(sizeof(EventObject), 8 + 2 * sizeof(std::wstring));
}

TEST(RecordLayout, TaskIsItsContextTimeGuidLabelAndWord) {
    EventingTask task(L"task", L"task_print_basic", MakeEventContext(nullptr, nullptr));
    constexpr std::size_t Context = 8;
    constexpr std::size_t StartTime = Context + sizeof(Dictionary);
    constexpr std::size_t Guid = StartTime + 8;
    constexpr std::size_t Label = Guid + 16;
    constexpr std::size_t Word = Label + sizeof(std::wstring);
    EXPECT_EQ(At<Dictionary>(task, Context).size(), 3U);
    EXPECT_EQ(At<std::uint64_t>(task, StartTime), InvalidTime);
    SettableClock::now = 1234567890123;
    task.Initiated(SettableClock::Read);
    EXPECT_EQ(At<std::uint64_t>(task, StartTime), 1234567890123U);
    EXPECT_EQ(Show(At<Dictionary>(task, Context).at(L"context_local")),
              L"{_app_event_task_guid: \"" + *RenderTaskGuid(At<TaskGuid>(task, Guid)) + L"\"}");
    EXPECT_EQ(At<std::wstring>(task, Label), L"task_print_basic");
    EXPECT_EQ(At<std::wstring>(task, Word), L"task");
    EXPECT_EQ(sizeof(EventingTask), Word + sizeof(std::wstring));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
