// A model of a Variant's value, built from containers whose ownership is simple.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Zuvan::Lumeq::Fuzzing {

struct Model {
    using Fields = std::map<std::wstring, Model>;
    using ValueType = Extra::Eventing::Variant::ValueType;

    ValueType type = ValueType::Null;
    std::wstring text;
    std::vector<std::wstring> list;
    Fields fields;

    Model() = default;
    Model(const wchar_t* value) : Model(std::wstring(value)) {}
    Model(std::wstring value) : type(ValueType::String), text(std::move(value)) {}
    Model(std::vector<std::wstring> value) : type(ValueType::StringList), list(std::move(value)) {}
    Model(Fields value) : type(ValueType::Dictionary), fields(std::move(value)) {}
};

bool operator==(const Model& left, const Model& right);

Model ModelOf(const Extra::Eventing::Variant& variant);
Model ModelOf(const Extra::Eventing::Dictionary& dictionary);

/// Each pair as a text.
Model::Fields TextFields(const Extra::Eventing::StringDictionary& fields);

} // namespace Zuvan::Lumeq::Fuzzing
