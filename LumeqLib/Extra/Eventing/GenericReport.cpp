#include "LumeqLib/Extra/Eventing/GenericReport.h"

#include "Common/Exceptions.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "LumeqLib/Extra/Eventing/Variant.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

constexpr wchar_t MonikerRefused[] = L"Moniker is not formatted correctly. Moniker identifier in form of "
                                     L"x-{orgname}_{codename}_report_{myreportname}/{version-1dot} "
                                     L"(e.g. x-dvrn_tarvik_report_setup/1.0)";

} // namespace

GenericReport::GenericReport(const std::wstring& moniker, const StringDictionary& fields) {
    AddStringDictionary(_data, fields);
    if (!IsValidReportMoniker(moniker))
        throw Common::ArgumentException(L"moniker", MonikerRefused);
    // Last, so that a field of the host with one of these names does not survive.
    _data[Key::Schema] = _schema;
    _data[Key::Moniker] = moniker;
}

std::unique_ptr<EventDetails> GenericReport::Clone() const { return std::make_unique<GenericReport>(*this); }

} // namespace Zuvan::Lumeq::Extra::Eventing
