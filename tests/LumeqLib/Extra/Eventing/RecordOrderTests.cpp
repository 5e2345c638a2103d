// The order in which a record is iterated: the companion library sees it, and what it makes of a record
// follows it. It depends on the order of insertion and on when the map grew.
#include "LumeqLib/Extra/Eventing/AdEventDetails.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqLib/Extra/Eventing/EventObject.h"
#include "LumeqLib/Extra/Eventing/UiEvents.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

/// The keys in order, each nested record between braces after its number of buckets.
std::wstring Order(const Dictionary& record) {
    std::wstring order = std::to_wstring(record.bucket_count()) + L"{";
    for (const auto& [key, value] : record) {
        order += L" " + key;
        if (value.Type() == Variant::ValueType::Dictionary)
            order += L" " + Order(value.AsDictionary());
    }
    return order + L" }";
}

} // namespace

TEST(RecordOrder, OfAnAdWithAContextOfTwentyPairs) {
    StringDictionary local;
    for (int i = 0; i < 20; ++i)
        local[L"key" + std::to_wstring(i)] = L"v";
    const EventObject ad =
        MakeAdObject(L"/Home#ok", std::make_unique<AdEventDetails>(CampaignType{1}, L"p", L"n", L"v"));
    EXPECT_EQ(
        Order(MakeClickedEvent(ad, MakeEventContext(&local, L"Tarvik")).Record()),
        L"13{ app_event_context 13{ context_local 29{ key11 key10 key17 key9 key8 key7 key18 key19 key4 "
        L"key16 key15 key14 key13 key6 key0 key1 key12 key3 key5 key2 } "
        L"context_global 13{ _dev_modelname } schema } "
        L"app_event_details 13{ campaign_variant campaign_name campaign_product campaign_type moniker "
        L"schema } "
        L"app_event_object_label app_event_object app_event_action app_event_actor schema }");
}

TEST(RecordOrder, OfAButtonWithTwoPairs) {
    const StringDictionary local{{L"paper", L"a4"}, {L"tray", L"2"}};
    const EventObject button = MakeButtonObject(L"/Home#ok", nullptr);
    EXPECT_EQ(Order(MakeClickedEvent(button, MakeEventContext(&local, nullptr)).Record()),
              L"13{ app_event_context 13{ context_local 13{ paper tray } context_global 13{ _dev_modelname } "
              L"schema } app_event_details app_event_object_label app_event_object app_event_action "
              L"app_event_actor schema }");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
