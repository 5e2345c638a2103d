// The family of forms and reports: details whose fields the host chooses.
#pragma once

#include "LumeqLib/Extra/Eventing/EventDetails.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// All that distinguishes the details of a form from those of a report.
struct GenericKind {
    const wchar_t* schema;
    const wchar_t* label;
    bool (*isValidMoniker)(const std::wstring& moniker);
    const wchar_t* monikerRefused;
};

/// The host's fields, and over them schema and moniker.
template <const GenericKind& Kind>
class GenericDetails : public EventDetails {
public:
    /// Throws ArgumentException for a malformed moniker.
    GenericDetails(const std::wstring& moniker, const StringDictionary& fields);

    std::unique_ptr<EventDetails> Clone() const override { return std::make_unique<GenericDetails>(*this); }

    const std::wstring& Label() const noexcept { return _label; }

private:
    const std::wstring _schema = Kind.schema;
    const std::wstring _label = Kind.label;
};

} // namespace Zuvan::Lumeq::Extra::Eventing
