#include "LumeqLib/Extra/Eventing/GenericForm.h"

#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

namespace Zuvan::Lumeq::Extra::Eventing {

TEST(GenericForm, HoldsTheHostsFieldsWithSchemaAndMoniker) {
    const GenericForm form(L"x-a_b_form_c/1.0", {{L"size", L"a4"}, {L"note", L""}});
    EXPECT_EQ(Show(form.Data()), L"{moniker: \"x-a_b_form_c/1.0\", note: \"\", "
                                 L"schema: \"app_event_form_generic/1.0.0\", size: \"a4\"}");
    EXPECT_EQ(form.Label(), L"form_generic");
}

TEST(GenericForm, WithoutFieldsHoldsSchemaAndMoniker) {
    EXPECT_EQ(Show(GenericForm(L"x-a_b_form_c/1.0", {}).Data()),
              L"{moniker: \"x-a_b_form_c/1.0\", schema: \"app_event_form_generic/1.0.0\"}");
}

TEST(GenericForm, ReplacesFieldsNamedSchemaAndMoniker) {
    EXPECT_EQ(Show(GenericForm(L"x-a_b_form_c/1.0", {{L"schema", L"mine"}, {L"moniker", L"mine"}}).Data()),
              L"{moniker: \"x-a_b_form_c/1.0\", schema: \"app_event_form_generic/1.0.0\"}");
}

TEST(GenericForm, RefusesEvenTheExampleOfItsFailureText) {
    EXPECT_EQ(FullMessageOf<Common::ArgumentException>(
                  [] { GenericForm(L"x-dvrn_tarvik_form_printer-information/1.0", {}); }),
              L"Moniker is not formatted correctly. Must be of form "
              L"x-{orgname}_{codename}_form_{mycrazyname}/{version-1dot} "
              L"(e.g. x-dvrn_tarvik_form_printer-information/1.0)\nParameter name: moniker");
}

TEST(GenericForm, RefusesAReportMoniker) {
    EXPECT_THROW(GenericForm(L"x-a_b_report_c/1.0", {}), Common::ArgumentException);
}

TEST(GenericForm, ClonesItselfWithItsLabel) {
    auto form = std::make_unique<GenericForm>(L"x-a_b_form_c/1.0", StringDictionary{{L"k", L"v"}});
    const std::unique_ptr<EventDetails> clone = form->Clone();
    form.reset();
    const auto* cloned = dynamic_cast<const GenericForm*>(clone.get());
    ASSERT_NE(cloned, nullptr);
    EXPECT_EQ(cloned->Label(), L"form_generic");
    EXPECT_EQ(Show(cloned->Data()),
              L"{k: \"v\", moniker: \"x-a_b_form_c/1.0\", schema: \"app_event_form_generic/1.0.0\"}");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
