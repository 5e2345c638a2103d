#include "LumeqLib/Extra/Eventing/EventContext.h"

#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

namespace Zuvan::Lumeq::Extra::Eventing {

TEST(GlobalSection, HoldsTheProcessWideModelName) {
    const ModelNameScope model(L"LX 200");
    EXPECT_EQ(Show(MakeGlobalContext()), L"{_dev_modelname: \"LX 200\"}");
}

TEST(GlobalSection, HoldsNullWithoutAModelName) {
    EXPECT_EQ(Show(MakeGlobalContext()), L"{_dev_modelname: null}");
    const ModelNameScope model(L"LX 200");
    EXPECT_EQ(Show(MakeGlobalContext(nullptr)), L"{_dev_modelname: null}");
    EXPECT_EQ(Show(MakeGlobalContext(L"")), L"{_dev_modelname: null}");
}

TEST(GlobalSection, HoldsTheModelNameThatItIsGiven) {
    const ModelNameScope model(L"LX 200");
    EXPECT_EQ(Show(MakeGlobalContext(L"MX 1")), L"{_dev_modelname: \"MX 1\"}");
    EXPECT_EQ(Show(MakeGlobalContext(L" ")), L"{_dev_modelname: \" \"}");
}

TEST(ContextRecord, HasANullLocalSectionWithoutOne) {
    EXPECT_EQ(Show(MakeContext(OneField(L"g", L"1"))),
              L"{context_global: {g: \"1\"}, context_local: null, schema: \"app_event_context/1.0.0\"}");
}

TEST(ContextRecord, TakesACopyOfBothSections) {
    Dictionary global = OneField(L"g", L"1");
    Dictionary local = OneField(L"l", L"2");
    const Dictionary context = MakeContext(global, local);
    global.clear();
    local.clear();
    EXPECT_EQ(
        Show(context),
        L"{context_global: {g: \"1\"}, context_local: {l: \"2\"}, schema: \"app_event_context/1.0.0\"}");
}

TEST(EventContext, WithNothingStillHoldsTheModelNameAsNull) {
    const Dictionary context = MakeEventContext(nullptr, nullptr);
    EXPECT_EQ(Show(context), L"{context_global: {_dev_modelname: null}, context_local: null, "
                             L"schema: \"app_event_context/1.0.0\"}");
    EXPECT_FALSE(IsContextEmpty(context));
}

TEST(EventContext, CarriesTheHostsPairs) {
    const StringDictionary local{{L"k", L"v"}, {L"empty", L""}};
    EXPECT_EQ(Show(MakeEventContext(&local, nullptr)),
              L"{context_global: {_dev_modelname: null}, context_local: {empty: \"\", k: \"v\"}, "
              L"schema: \"app_event_context/1.0.0\"}");
}

TEST(EventContext, EmptyLocalContextIsADictionaryAndNotNull) {
    const StringDictionary local;
    EXPECT_EQ(Show(MakeEventContext(&local, nullptr)),
              L"{context_global: {_dev_modelname: null}, context_local: {}, "
              L"schema: \"app_event_context/1.0.0\"}");
}

TEST(EventContext, ModelNameOfTheCallGoesBeforeTheProcessWideOne) {
    const ModelNameScope model(L"LX 200");
    EXPECT_EQ(Show(MakeEventContext(nullptr, L"MX 1")),
              L"{context_global: {_dev_modelname: \"MX 1\"}, context_local: null, "
              L"schema: \"app_event_context/1.0.0\"}");
}

TEST(EventContext, ProcessWideModelNameServesACallWithoutOne) {
    const ModelNameScope model(L"LX 200");
    const auto expected = L"{context_global: {_dev_modelname: \"LX 200\"}, context_local: null, "
                          L"schema: \"app_event_context/1.0.0\"}";
    EXPECT_EQ(Show(MakeEventContext(nullptr, nullptr)), expected);
    EXPECT_EQ(Show(MakeEventContext(nullptr, L"")), expected);
}

TEST(EventContext, LocalKeyNamedLikeTheModelNameChangesNothingInTheGlobalSection) {
    const ModelNameScope model(L"LX 200");
    const StringDictionary local{{L"_dev_modelname", L"mine"}};
    EXPECT_EQ(Show(MakeEventContext(&local, nullptr)),
              L"{context_global: {_dev_modelname: \"LX 200\"}, context_local: {_dev_modelname: \"mine\"}, "
              L"schema: \"app_event_context/1.0.0\"}");
}

TEST(IsContextEmpty, SchemaAloneIsEmpty) {
    EXPECT_TRUE(IsContextEmpty({}));
    EXPECT_TRUE(IsContextEmpty(OneField(L"schema", L"app_event_context/1.0.0")));
}

TEST(IsContextEmpty, SectionsWithoutEntriesAreEmpty) {
    EXPECT_TRUE(IsContextEmpty(MakeContext({})));
    EXPECT_TRUE(IsContextEmpty(MakeContext({}, {})));
}

TEST(IsContextEmpty, EntriesInEitherSectionCount) {
    EXPECT_FALSE(IsContextEmpty(MakeContext(OneField(L"g", L"1"))));
    EXPECT_FALSE(IsContextEmpty(MakeContext({}, OneField(L"l", L"1"))));
}

TEST(IsContextEmpty, SectionOfAnotherTypeIsAFailure) {
    Dictionary context = OneField(L"context_global", L"text");
    EXPECT_EQ(FullMessageOf<Common::InvalidOperationException>([&] { IsContextEmpty(context); }),
              L"Expected type: Dictionary, Actual type: String");
}

TEST(IsContextEmpty, LocalSectionIsNotLookedAtWhenTheGlobalOneCounts) {
    Dictionary context = OneField(L"context_local", L"text");
    context[L"context_global"] = OneField(L"g", L"1");
    EXPECT_FALSE(IsContextEmpty(context));
}

TEST(SetLocalContextValue, MakesASectionThatIsAbsentOrNull) {
    Dictionary context;
    SetLocalContextValue(context, L"k", L"v");
    EXPECT_EQ(Show(context), L"{context_local: {k: \"v\"}}");

    context.clear();
    context[L"context_local"];
    SetLocalContextValue(context, L"k", L"v");
    EXPECT_EQ(Show(context), L"{context_local: {k: \"v\"}}");
}

TEST(SetLocalContextValue, ReplacesAnEarlierValueAndKeepsTheOthers) {
    Dictionary local = OneField(L"k", L"old");
    local[L"other"] = std::wstring(L"o");
    Dictionary context = MakeContext({}, local);
    SetLocalContextValue(context, L"k", L"new");
    EXPECT_EQ(Show(context), L"{context_global: {}, context_local: {k: \"new\", other: \"o\"}, "
                             L"schema: \"app_event_context/1.0.0\"}");
}

TEST(SetLocalContextValue, SectionOfAnotherTypeIsAFailure) {
    Dictionary context = OneField(L"context_local", L"text");
    EXPECT_EQ(
        FullMessageOf<Common::InvalidOperationException>([&] { SetLocalContextValue(context, L"k", L"v"); }),
        L"Expected type: Dictionary, Actual type: String");
    EXPECT_EQ(Show(context), L"{context_local: \"text\"}");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
