#pragma once

#include "LumeqLib/Extra/Eventing/EventDetails.h"

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// A form of the host: its fields, and over them schema and moniker.
class GenericForm : public EventDetails {
public:
    /// Throws ArgumentException for a moniker that is not well formed.
    GenericForm(const std::wstring& moniker, const StringDictionary& fields);

    std::unique_ptr<EventDetails> Clone() const override;

    const std::wstring& Label() const noexcept { return _label; }

private:
    const std::wstring _schema = L"app_event_form_generic/1.0.0";
    const std::wstring _label = L"form_generic";
};

} // namespace Zuvan::Lumeq::Extra::Eventing
