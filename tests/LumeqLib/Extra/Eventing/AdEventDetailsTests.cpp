#include "LumeqLib/Extra/Eventing/AdEventDetails.h"

#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

std::wstring Fields(const std::wstring& type, const std::wstring& product, const std::wstring& name,
                    const std::wstring& variant) {
    return L"{campaign_name: \"" + name + L"\", campaign_product: \"" + product + L"\", campaign_type: \"" +
           type + L"\", campaign_variant: \"" + variant +
           L"\", moniker: \"x-dvrn_ad_basic/1.0\", schema: \"generic/1.0.0\"}";
}

} // namespace

TEST(AdEventDetails, HoldsTheCampaign) {
    EXPECT_EQ(Show(AdEventDetails(CampaignType{1}, L"ink", L"spring", L"b").Data()),
              Fields(L"banner", L"ink", L"spring", L"b"));
}

TEST(AdEventDetails, TellsEveryTypeByItsText) {
    const std::pair<CampaignType, const wchar_t*> types[] = {
        {CampaignType{0}, L"unknown"}, {CampaignType{1}, L"banner"},       {CampaignType{2}, L"hyperlink"},
        {CampaignType{3}, L"tile"},    {CampaignType{4}, L"virtualalert"},
    };
    for (const auto& [type, text] : types)
        EXPECT_EQ(Show(AdEventDetails(type, L"p", L"n", L"v").Data()), Fields(text, L"p", L"n", L"v"));
}

TEST(AdEventDetails, TypeOutsideTheTableIsTold) {
    EXPECT_EQ(Show(AdEventDetails(static_cast<CampaignType>(5), L"p", L"n", L"v").Data()),
              Fields(L"[Undefined CampaignType value: 5]", L"p", L"n", L"v"));
}

TEST(AdEventDetails, EmptyTextsAreUnknown) {
    EXPECT_EQ(Show(AdEventDetails(CampaignType{3}, L"", L"", L"").Data()),
              Fields(L"tile", L"unknown", L"unknown", L"unknown"));
}

TEST(AdEventDetails, WhiteSpaceIsUnknown) {
    EXPECT_EQ(Show(AdEventDetails(CampaignType{3}, L"\t", L"   ", L"\r\n").Data()),
              Fields(L"tile", L"unknown", L"unknown", L"unknown"));
}

TEST(AdEventDetails, OtherTextsAreNotTrimmed) {
    EXPECT_EQ(Show(AdEventDetails(CampaignType{3}, L"p ", L" x ", L"\tv").Data()),
              Fields(L"tile", L"p ", L" x ", L"\tv"));
}

TEST(AdEventDetails, ClonesItself) {
    auto details = std::make_unique<AdEventDetails>(CampaignType{3}, L"p", L"n", L"v");
    const std::unique_ptr<EventDetails> clone = details->Clone();
    details.reset();
    EXPECT_NE(dynamic_cast<const AdEventDetails*>(clone.get()), nullptr);
    EXPECT_EQ(Show(clone->Data()), Fields(L"tile", L"p", L"n", L"v"));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
