#pragma once

#include "LumeqLib/Extra/Eventing/EventDetails.h"

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// A report of the host: its fields, and over them schema and moniker.
class GenericReport : public EventDetails {
public:
    /// Throws ArgumentException for a moniker that is not well formed.
    GenericReport(const std::wstring& moniker, const StringDictionary& fields);

    std::unique_ptr<EventDetails> Clone() const override;

    const std::wstring& Label() const noexcept { return _label; }

private:
    const std::wstring _schema = L"app_event_report_generic/1.0.0";
    const std::wstring _label = L"report_generic";
};

} // namespace Zuvan::Lumeq::Extra::Eventing
