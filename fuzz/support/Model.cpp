#include "fuzz/support/Model.h"

namespace Zuvan::Lumeq::Fuzzing {

using Extra::Eventing::Dictionary;
using Extra::Eventing::StringDictionary;
using Extra::Eventing::Variant;

bool operator==(const Model& left, const Model& right) {
    return left.type == right.type && left.text == right.text && left.list == right.list &&
           left.fields == right.fields;
}

Model ModelOf(const Variant& variant) {
    switch (variant.Type()) {
    case Variant::ValueType::String:
        return variant.AsString();
    case Variant::ValueType::StringList:
        return variant.AsStringList();
    case Variant::ValueType::Dictionary:
        return ModelOf(variant.AsDictionary());
    default:
        return {};
    }
}

Model ModelOf(const Dictionary& dictionary) {
    Model::Fields fields;
    for (const auto& [key, value] : dictionary)
        fields[key] = ModelOf(value);
    return fields;
}

Model::Fields TextFields(const StringDictionary& fields) { return {fields.begin(), fields.end()}; }

} // namespace Zuvan::Lumeq::Fuzzing
