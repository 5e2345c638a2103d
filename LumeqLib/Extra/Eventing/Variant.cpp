#include "LumeqLib/Extra/Eventing/Variant.h"

#include "Common/Exceptions.h"
#include "Common/Text.h"
#include "Common/Utf.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

constexpr const char* ValueTypeNames[] = {"Null", "String", "StringList", "Dictionary"};

bool IsDefined(Variant::ValueType type) {
    return static_cast<std::uint32_t>(type) < std::size(ValueTypeNames);
}

void RequireDefined(Variant::ValueType type, const wchar_t* paramName) {
    if (!IsDefined(type))
        throw Common::ArgumentOutOfRangeException(paramName, L"Undefined Variant::ValueType",
                                                  Common::DecimalText(static_cast<std::int32_t>(type)));
}

void RequireType(Variant::ValueType actual, Variant::ValueType expected) {
    if (actual != expected)
        throw Common::InvalidOperationException(L"Expected type: " + ValueTypeNameWide(expected) +
                                                L", Actual type: " + ValueTypeNameWide(actual));
}

template <class Map>
std::set<std::wstring> KeysOf(const Map& map) {
    std::set<std::wstring> keys;
    for (const auto& entry : map)
        keys.insert(entry.first);
    return keys;
}

std::vector<std::wstring> CommonKeys(const Dictionary& left, const StringDictionary& right) {
    const std::set<std::wstring> leftKeys = KeysOf(left);
    const std::set<std::wstring> rightKeys = KeysOf(right);
    std::vector<std::wstring> common;
    std::set_intersection(leftKeys.begin(), leftKeys.end(), rightKeys.begin(), rightKeys.end(),
                          std::back_inserter(common));
    return common;
}

} // namespace

Variant::Variant(const Variant& other) : _value(other.CloneValue()), _type(other._type) {}

Variant::Variant(Variant&& other) noexcept
    : _value(std::exchange(other._value, nullptr)), _type(std::exchange(other._type, ValueType::Null)) {}

Variant::~Variant() {
    // A value of unknown type leaks: a destructor that throws would end the host.
    if (IsDefined(_type))
        Clear();
}

Variant& Variant::operator=(const Variant& other) {
    if (this != &other)
        *this = Variant(other);
    return *this;
}

Variant& Variant::operator=(Variant&& other) {
    if (this == &other)
        return *this;
    RequireDefined(_type, L"_type");
    // Taken before anything is released, since `other` may live inside the value that this one holds.
    Variant taken(std::move(other));
    Clear();
    _value = std::exchange(taken._value, nullptr);
    _type = std::exchange(taken._type, ValueType::Null);
    return *this;
}

Variant& Variant::operator=(const std::wstring& text) { return Hold(text, ValueType::String); }

Variant& Variant::operator=(const StringListType& list) { return Hold(list, ValueType::StringList); }

Variant& Variant::operator=(const DictionaryType& dictionary) {
    return Hold(dictionary, ValueType::Dictionary);
}

Variant& Variant::operator=(DictionaryType&& dictionary) {
    return Hold(std::move(dictionary), ValueType::Dictionary);
}

template <class Value>
Variant& Variant::Hold(Value&& value, ValueType type) {
    if (_value == &value)
        return *this;
    RequireDefined(_type, L"_type");
    // Made before anything is released, since `value` may live inside the value that this one holds.
    auto held = std::make_unique<std::remove_cvref_t<Value>>(std::forward<Value>(value));
    Clear();
    _value = held.release();
    _type = type;
    return *this;
}

const std::wstring& Variant::AsString() const {
    RequireType(_type, ValueType::String);
    return *static_cast<const std::wstring*>(_value);
}

std::wstring& Variant::AsString() { return const_cast<std::wstring&>(std::as_const(*this).AsString()); }

const Variant::StringListType& Variant::AsStringList() const {
    RequireType(_type, ValueType::StringList);
    return *static_cast<const StringListType*>(_value);
}

Variant::StringListType& Variant::AsStringList() {
    return const_cast<StringListType&>(std::as_const(*this).AsStringList());
}

const Variant::DictionaryType& Variant::AsDictionary() const {
    RequireType(_type, ValueType::Dictionary);
    return *static_cast<const DictionaryType*>(_value);
}

Variant::DictionaryType& Variant::AsDictionary() {
    return const_cast<DictionaryType&>(std::as_const(*this).AsDictionary());
}

void Variant::Clear() {
    RequireDefined(_type, L"_type");
    if (_type == ValueType::String)
        delete static_cast<std::wstring*>(_value);
    else if (_type == ValueType::StringList)
        delete static_cast<StringListType*>(_value);
    else if (_type == ValueType::Dictionary)
        delete static_cast<DictionaryType*>(_value);
    _value = nullptr;
}

void* Variant::CloneValue() const {
    // The name differs from that in Clear, so that a reader of a report knows which of the two failed.
    RequireDefined(_type, L"lumeqVariant._type");
    if (_type == ValueType::String)
        return new std::wstring(AsString());
    if (_type == ValueType::StringList)
        return new StringListType(AsStringList());
    if (_type == ValueType::Dictionary)
        return new DictionaryType(AsDictionary());
    return nullptr;
}

std::string ValueTypeName(Variant::ValueType type) {
    if (IsDefined(type))
        return ValueTypeNames[static_cast<std::size_t>(type)];
    return "[Undefined Variant::ValueType enumerand: " + std::to_string(static_cast<std::int32_t>(type)) +
           "]";
}

std::wstring ValueTypeNameWide(Variant::ValueType type) { return Common::FromUtf8(ValueTypeName(type)); }

void AddStringDictionary(Dictionary& target, const StringDictionary& stringDictionary) {
    const bool hasDuplicates =
        !target.empty() && std::any_of(stringDictionary.begin(), stringDictionary.end(),
                                       [&](const auto& entry) { return target.contains(entry.first); });
    if (hasDuplicates)
        throw Common::ArgumentException(L"stringDictionary",
                                        L"Contains one or more duplicate keys: " +
                                            JoinStrings(CommonKeys(target, stringDictionary), L", "));
    for (const auto& [key, value] : stringDictionary)
        target[key] = value;
}

std::wstring JoinStrings(const std::vector<std::wstring>& elements, const std::wstring& separator) {
    std::wstring joined;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i > 0)
            joined += separator;
        joined += elements[i];
    }
    return joined;
}

} // namespace Zuvan::Lumeq::Extra::Eventing
