#include "LumeqLib/Extra/Eventing/AdEventDetails.h"

#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

namespace Zuvan::Lumeq::Extra::Eventing {

AdEventDetails::AdEventDetails(CampaignType campaignType, const std::wstring& campaignProduct,
                               const std::wstring& campaignName, const std::wstring& campaignVariant) {
    _data[Key::Schema] = _schema;
    _data[Key::Moniker] = std::wstring(L"x-dvrn_ad_basic/1.0");
    _data[L"campaign_type"] = RecordText(campaignType);
    _data[L"campaign_product"] = OrFallback(campaignProduct);
    _data[L"campaign_name"] = OrFallback(campaignName);
    _data[L"campaign_variant"] = OrFallback(campaignVariant);
}

std::unique_ptr<EventDetails> AdEventDetails::Clone() const {
    return std::make_unique<AdEventDetails>(*this);
}

const std::wstring& AdEventDetails::OrFallback(const std::wstring& text) const {
    return text.empty() || IsWhiteSpace(text.c_str()) ? _fallback : text;
}

} // namespace Zuvan::Lumeq::Extra::Eventing
