#include "Common/Exceptions.h"
#include "LumeqLib/Extra/Eventing/GenericForm.h"
#include "LumeqLib/Extra/Eventing/GenericReport.h"
#include "LumeqLib/Extra/Eventing/Variant.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

namespace Zuvan::Lumeq::Extra::Eventing {

template <const GenericKind& Kind>
GenericDetails<Kind>::GenericDetails(const std::wstring& moniker, const StringDictionary& fields) {
    AddStringDictionary(_data, fields);
    if (!Kind.isValidMoniker(moniker))
        throw Common::ArgumentException(L"moniker", Kind.monikerRefused);
    // Last, because they replace fields of the host with the same names.
    _data[Key::Schema] = _schema;
    _data[Key::Moniker] = moniker;
}

template class GenericDetails<FormKind>;
template class GenericDetails<ReportKind>;

} // namespace Zuvan::Lumeq::Extra::Eventing
