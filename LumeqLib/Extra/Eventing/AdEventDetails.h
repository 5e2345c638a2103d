#pragma once

#include "LumeqLib/Extra/Eventing/Enumerations.h"
#include "LumeqLib/Extra/Eventing/EventDetails.h"

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// The campaign that an ad belongs to. A text that is empty or white space becomes "unknown"; any other stays
/// as it is, not trimmed.
class AdEventDetails : public EventDetails {
public:
    AdEventDetails(CampaignType campaignType, const std::wstring& campaignProduct,
                   const std::wstring& campaignName, const std::wstring& campaignVariant);

    std::unique_ptr<EventDetails> Clone() const override;

private:
    const std::wstring& OrFallback(const std::wstring& text) const;

    const std::wstring _schema = L"generic/1.0.0";
    const std::wstring _fallback = L"unknown";
};

} // namespace Zuvan::Lumeq::Extra::Eventing
