#include "LumeqLib/Extra/Eventing/GenericForm.h"

#include "Common/Exceptions.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "LumeqLib/Extra/Eventing/Variant.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

// The example has a hyphen, which the check refuses; the text is what hosts have always been told.
constexpr wchar_t MonikerRefused[] = L"Moniker is not formatted correctly. Must be of form "
                                     L"x-{orgname}_{codename}_form_{mycrazyname}/{version-1dot} "
                                     L"(e.g. x-dvrn_tarvik_form_printer-information/1.0)";

} // namespace

GenericForm::GenericForm(const std::wstring& moniker, const StringDictionary& fields) {
    AddStringDictionary(_data, fields);
    if (!IsValidFormMoniker(moniker))
        throw Common::ArgumentException(L"moniker", MonikerRefused);
    // Last, so that a field of the host with one of these names does not survive.
    _data[Key::Schema] = _schema;
    _data[Key::Moniker] = moniker;
}

std::unique_ptr<EventDetails> GenericForm::Clone() const { return std::make_unique<GenericForm>(*this); }

} // namespace Zuvan::Lumeq::Extra::Eventing
