#include "LumeqLib/Extra/Eventing/GenericReport.h"

#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

namespace Zuvan::Lumeq::Extra::Eventing {

TEST(GenericReport, HoldsTheHostsFieldsWithSchemaAndMoniker) {
    const GenericReport report(L"x-dvrn_tarvik_report_setup/1.0", {{L"size", L"a4"}, {L"note", L""}});
    EXPECT_EQ(Show(report.Data()), L"{moniker: \"x-dvrn_tarvik_report_setup/1.0\", note: \"\", "
                                   L"schema: \"app_event_report_generic/1.0.0\", size: \"a4\"}");
    EXPECT_EQ(report.Label(), L"report_generic");
}

TEST(GenericReport, WithoutFieldsHoldsSchemaAndMoniker) {
    EXPECT_EQ(Show(GenericReport(L"x-a_b_report_c/1x0", {}).Data()),
              L"{moniker: \"x-a_b_report_c/1x0\", schema: \"app_event_report_generic/1.0.0\"}");
}

TEST(GenericReport, ReplacesFieldsNamedSchemaAndMoniker) {
    EXPECT_EQ(
        Show(GenericReport(L"x-a_b_report_c/1.0", {{L"schema", L"mine"}, {L"moniker", L"mine"}}).Data()),
        L"{moniker: \"x-a_b_report_c/1.0\", schema: \"app_event_report_generic/1.0.0\"}");
}

TEST(GenericReport, RefusesAMonikerThatIsNotWellFormed) {
    EXPECT_EQ(FullMessageOf<Common::ArgumentException>([] {
                  GenericReport(L"setup", {{L"k", L"v"}});
              }),
              L"Moniker is not formatted correctly. Moniker identifier in form of "
              L"x-{orgname}_{codename}_report_{myreportname}/{version-1dot} "
              L"(e.g. x-dvrn_tarvik_report_setup/1.0)\nParameter name: moniker");
}

TEST(GenericReport, RefusesAFormMoniker) {
    EXPECT_THROW(GenericReport(L"x-a_b_form_c/1.0", {}), Common::ArgumentException);
}

TEST(GenericReport, ClonesItselfWithItsLabel) {
    auto report = std::make_unique<GenericReport>(L"x-a_b_report_c/1.0", StringDictionary{{L"k", L"v"}});
    const std::unique_ptr<EventDetails> clone = report->Clone();
    report.reset();
    const auto* cloned = dynamic_cast<const GenericReport*>(clone.get());
    ASSERT_NE(cloned, nullptr);
    EXPECT_EQ(cloned->Label(), L"report_generic");
    EXPECT_EQ(Show(cloned->Data()),
              L"{k: \"v\", moniker: \"x-a_b_report_c/1.0\", schema: \"app_event_report_generic/1.0.0\"}");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
