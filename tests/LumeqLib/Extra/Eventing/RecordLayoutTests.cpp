// The offsets by which the companion library reads what crosses to it, seen from outside.
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

} // namespace Zuvan::Lumeq::Extra::Eventing
