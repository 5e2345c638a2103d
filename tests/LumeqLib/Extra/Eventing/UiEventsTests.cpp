#include "LumeqLib/Extra/Eventing/UiEvents.h"

#include "LumeqLib/Extra/Eventing/AdEventDetails.h"
#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

using Factory = EventingEvent (*)(const EventObject&, Dictionary);

/// What the factories give for an object without details and an empty context.
std::wstring Record(const std::wstring& actor, const std::wstring& action, const std::wstring& object,
                    const std::wstring& label, const std::wstring& details) {
    return L"{app_event_action: \"" + action + L"\", app_event_actor: \"" + actor +
           L"\", app_event_context: null, app_event_details: " + details + L", app_event_object: \"" +
           object + L"\", app_event_object_label: \"" + label + L"\", schema: \"app_eventinfo/2.0.1\"}";
}

} // namespace

TEST(UiEvents, TellWhoDidWhatToWhich) {
    struct Row {
        Factory make;
        const wchar_t* actor;
        const wchar_t* action;
    };
    const Row rows[] = {
        {MakeCheckedEvent, L"user", L"checked"},    {MakeUncheckedEvent, L"user", L"unchecked"},
        {MakeClickedEvent, L"user", L"clicked"},    {MakeClosedEvent, L"user", L"closed"},
        {MakeDisplayedEvent, L"app", L"displayed"}, {MakeLaunchedEvent, L"app", L"launched"},
    };
    const EventObject object = MakeButtonObject(L"/Home#ok", nullptr);
    for (const Row& row : rows)
        EXPECT_EQ(Show(row.make(object, {}).Record()),
                  Record(row.actor, row.action, L"button", L"/Home#ok", L"null"));
}

TEST(UiEvents, CarryTheContext) {
    const ModelNameScope model(L"LX 200");
    const StringDictionary local{{L"k", L"v"}};
    const EventingEvent event =
        MakeClickedEvent(MakeTileObject(L"t", nullptr), MakeEventContext(&local, nullptr));
    EXPECT_EQ(Show(event.Record().at(L"app_event_context")),
              L"{context_global: {_dev_modelname: \"LX 200\"}, context_local: {k: \"v\"}, "
              L"schema: \"app_event_context/1.0.0\"}");
}

TEST(UiEvents, CarryTheTimeOfTheirMaking) {
    const std::uint64_t before = EpochMilliseconds();
    const EventingEvent event = MakeClickedEvent(MakeTileObject(L"t", nullptr), {});
    EXPECT_GE(event.Timestamp(), before);
    EXPECT_LE(event.Timestamp(), EpochMilliseconds());
}

TEST(UiEvents, CopyTheDetailsOfAnAd) {
    const EventObject ad =
        MakeAdObject(L"ad_basic", std::make_unique<AdEventDetails>(CampaignType{3}, L"p", L"", L"v"));
    EXPECT_EQ(Show(MakeClosedEvent(ad, {}).Record()),
              Record(L"user", L"closed", L"ad", L"ad_basic",
                     L"{campaign_name: \"unknown\", campaign_product: \"p\", campaign_type: \"tile\", "
                     L"campaign_variant: \"v\", moniker: \"x-dvrn_ad_basic/1.0\", "
                     L"schema: \"generic/1.0.0\"}"));
}

TEST(UiEvents, LeaveTheObjectUnchangedAndFreeTheirClone) {
    // Other tests clone as well.
    const int before = CountedDetails::cloned;
    const EventObject ad = MakeAdObject(L"label", std::make_unique<CountedDetails>(OneField(L"d", L"1")));
    const auto expected = Record(L"app", L"displayed", L"ad", L"label", L"{d: \"1\"}");
    EXPECT_EQ(Show(MakeDisplayedEvent(ad, {}).Record()), expected);
    EXPECT_EQ(Show(MakeDisplayedEvent(ad, {}).Record()), expected);
    EXPECT_EQ(CountedDetails::cloned, before + 2);
    EXPECT_EQ(CountedDetails::alive, 1);
}

TEST(UiEvents, SubmittedFormIsItsOwnDetails) {
    const GenericForm form(L"x-a_b_form_c/1.0", {{L"k", L"v"}});
    EXPECT_EQ(Show(MakeSubmittedEvent(form, {}).Record()),
              Record(L"user", L"submitted", L"form", L"form_generic",
                     L"{k: \"v\", moniker: \"x-a_b_form_c/1.0\", "
                     L"schema: \"app_event_form_generic/1.0.0\"}"));
}

TEST(UiEvents, GeneratedReportIsItsOwnDetails) {
    const GenericReport report(L"x-a_b_report_c/1.0", {{L"k", L"v"}});
    EXPECT_EQ(Show(MakeGeneratedEvent(report, {}).Record()),
              Record(L"app", L"generated", L"report", L"report_generic",
                     L"{k: \"v\", moniker: \"x-a_b_report_c/1.0\", "
                     L"schema: \"app_event_report_generic/1.0.0\"}"));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
