// How an enumeration of the schema is described. A description that breaks a rule does not compile: the
// compiler's error shows the `throw` that names the rule.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace Zuvan::Lumeq::Extra::Eventing {

/// One value: its number at the exports, its text on the wire, its number in the records.
struct EnumerationRow {
    std::int32_t apiValue;
    const wchar_t* text;
    std::int32_t recordValue;
};

/// The words that the messages for undefined values use.
struct EnumerationNames {
    const wchar_t* paramName;        ///< Parameter name of the exception.
    const wchar_t* api;              ///< In the exception's message: "AdType" in "[Undefined AdType: 5]".
    const wchar_t* record = nullptr; ///< In the record text; null if the records contain the number.
    const wchar_t* apiText = api;    ///< In the API text: "AdType" in "[Undefined AdType value: 5]".
};

/// Whether an enumeration has an enumerator of this value. Compilers print any other value as a cast.
template <auto Value>
consteval bool IsEnumerator() {
#ifdef _MSC_VER
    constexpr std::string_view signature = __FUNCSIG__;
#else
    constexpr std::string_view signature = __PRETTY_FUNCTION__;
#endif
    return signature.find("= (") == signature.npos && signature.find("<(") == signature.npos;
}

/// The number of enumerators from value 0 to the first gap.
template <class Type, std::int32_t Value = 0>
consteval std::size_t EnumeratorCount() {
    if constexpr (IsEnumerator<static_cast<Type>(Value)>())
        return 1 + EnumeratorCount<Type, Value + 1>();
    else
        return 0;
}

/// Throws if the rows break a rule. `count`: of the enumerators, each of which needs a row.
consteval void RequireSound(std::initializer_list<EnumerationRow> rows, std::size_t count) {
    std::int32_t position = 0;
    for (const EnumerationRow& row : rows) {
        if (row.apiValue != position++)
            throw "a row's API value is not its position";
        if (std::wstring_view(row.text).empty())
            throw "a row has no text";
        if (row.recordValue < 0 || row.recordValue >= static_cast<std::int32_t>(rows.size()))
            throw "the record values have a gap";
        for (const EnumerationRow* other = rows.begin(); other != &row; ++other) {
            if (other->recordValue == row.recordValue)
                throw "two rows have the same record value";
            if (std::wstring_view(other->text) == row.text)
                throw "two rows have the same text";
        }
    }
    if (rows.size() < count)
        throw "an enumerator of the exports has no row";
    if (rows.size() > count)
        throw "a row has no enumerator at the exports";
}

/// An enumeration of the exports, and the type that the records have for its values: an enumeration of their
/// own, or a plain number.
template <class ApiType, class RecordType>
struct Enumeration {
    using Api = ApiType;
    using Record = RecordType;

    EnumerationNames names;
    EnumerationRow rows[EnumeratorCount<Api>()] = {}; ///< Row i has API value i.

    consteval Enumeration(const EnumerationNames& itsNames, std::initializer_list<EnumerationRow> itsRows)
        : names(itsNames) {
        RequireSound(itsRows, std::size(rows));
        std::copy(itsRows.begin(), itsRows.end(), rows);
    }
};

/// All enumerations of the schema.
template <class... Enumerations>
struct EnumerationList {
    std::tuple<Enumerations...> all;

    consteval explicit EnumerationList(const Enumerations&... enumerations) : all(enumerations...) {
        (RequireAgreement(enumerations), ...);
    }

    /// The position of the enumeration that describes a type of the exports.
    template <class Api>
    static consteval std::size_t PositionOfApi() {
        return FirstOf({std::is_same_v<Api, typename Enumerations::Api>...});
    }

    /// The same for a type of the records. Where two share it, either serves: they agree on every record
    /// text.
    template <class Record>
    static consteval std::size_t PositionOfRecord() {
        return FirstOf({std::is_same_v<Record, typename Enumerations::Record>...});
    }

    template <class Api>
    using RecordOf = typename std::tuple_element_t<PositionOfApi<Api>(), std::tuple<Enumerations...>>::Record;

private:
    static consteval std::size_t FirstOf(std::initializer_list<bool> describes) {
        const auto* const first = std::find(describes.begin(), describes.end(), true);
        if (first == describes.end())
            throw "not a type of the schema";
        return first - describes.begin();
    }

    template <class Its>
    consteval void RequireAgreement(const Its& its) const {
        if constexpr (std::is_enum_v<typename Its::Record>) {
            const auto& other = std::get<PositionOfRecord<typename Its::Record>()>(all);
            if (std::wstring_view(its.names.record) != other.names.record)
                throw "a record type has two names";
            for (const EnumerationRow& row : its.rows)
                for (const EnumerationRow& otherRow : other.rows)
                    if (row.recordValue == otherRow.recordValue &&
                        std::wstring_view(row.text) != otherRow.text)
                        throw "a record value has two texts";
        }
    }
};

} // namespace Zuvan::Lumeq::Extra::Eventing
