#include "LumeqLib/Extra/Eventing/Enumerations.h"

#include "Common/Exceptions.h"

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

// Unsigned, so that a negative value falls outside.
const EnumerationRow* FindApiValue(const Enumeration& enumeration, std::int32_t apiValue) {
    const auto index = static_cast<std::uint32_t>(apiValue);
    return index < enumeration.rows.size() ? &enumeration.rows[index] : nullptr;
}

std::wstring Undefined(const wchar_t* stem, std::int32_t value) {
    return stem + std::to_wstring(value) + L"]";
}

} // namespace

std::wstring RecordText(const Enumeration& enumeration, std::int32_t recordValue) {
    for (const EnumerationRow& row : enumeration.rows)
        if (row.recordValue == recordValue)
            return row.text;
    return Undefined(enumeration.recordTextStem, recordValue);
}

std::wstring ApiText(const Enumeration& enumeration, std::int32_t apiValue) {
    const EnumerationRow* row = FindApiValue(enumeration, apiValue);
    return row ? row->text : Undefined(enumeration.apiTextStem, apiValue);
}

std::int32_t ToRecordValue(const Enumeration& enumeration, std::int32_t apiValue) {
    if (const EnumerationRow* row = FindApiValue(enumeration, apiValue))
        return row->recordValue;
    throw Common::ArgumentOutOfRangeException(
        enumeration.paramName, Undefined(enumeration.thrownStem, apiValue), std::to_wstring(apiValue));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
