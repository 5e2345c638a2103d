#include "LumeqLib/Extra/Eventing/Enumerations.h"

#include "Common/Exceptions.h"
#include "Common/Text.h"

#include <array>
#include <span>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

struct Description {
    const EnumerationNames& names;
    std::span<const EnumerationRow> rows;
};

constexpr std::array Descriptions = std::apply(
    [](const auto&... its) {
        return std::array{Description{its.names, its.rows}...};
    },
    Enumerations.all);

// Unsigned, so that a negative value falls outside.
const EnumerationRow* FindApiValue(std::size_t position, std::int32_t apiValue) {
    const std::span<const EnumerationRow> rows = Descriptions[position].rows;
    const auto index = static_cast<std::uint32_t>(apiValue);
    return index < rows.size() ? &rows[index] : nullptr;
}

/// `separator` distinguishes the two forms: the thrown message lacks the word "value".
std::wstring Undefined(const wchar_t* name, const wchar_t* separator, std::int32_t value) {
    return std::wstring(L"[Undefined ") + name + separator + Common::DecimalText(value) + L"]";
}

} // namespace

std::wstring RecordText(std::size_t position, std::int32_t recordValue) {
    const auto& [names, rows] = Descriptions[position];
    for (const EnumerationRow& row : rows)
        if (row.recordValue == recordValue)
            return row.text;
    return Undefined(names.record, L" value: ", recordValue);
}

std::wstring ApiText(std::size_t position, std::int32_t apiValue) {
    if (const EnumerationRow* row = FindApiValue(position, apiValue))
        return row->text;
    return Undefined(Descriptions[position].names.apiText, L" value: ", apiValue);
}

std::int32_t ToRecordValue(std::size_t position, std::int32_t apiValue) {
    if (const EnumerationRow* row = FindApiValue(position, apiValue))
        return row->recordValue;
    const EnumerationNames& names = Descriptions[position].names;
    throw Common::ArgumentOutOfRangeException(names.paramName, Undefined(names.api, L": ", apiValue),
                                              Common::DecimalText(apiValue));
}

} // namespace Zuvan::Lumeq::Extra::Eventing
