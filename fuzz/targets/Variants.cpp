// Records under any sequence of assignments, compared with a model whose ownership is simple.
#include "Common/Exceptions.h"
#include "LumeqLib/Extra/Eventing/Variant.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/Model.h"
#include "fuzz/support/Require.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;
using namespace Zuvan::Lumeq::Extra::Eventing;

namespace {

using ValueType = Variant::ValueType;

constexpr std::size_t LargestTree = 300;

/// The same value twice: as the product's type and in the model.
struct Place {
    Variant* variant;
    Model* model;

    Place Child(const std::wstring& key) const {
        return {&variant->AsDictionary().at(key), &model->fields.at(key)};
    }
};

class Session {
public:
    explicit Session(Input& input) : _input(input) {}

    void Run();

private:
    using Step = void (Session::*)();

    Place Choose();
    bool IsWithin(const Place& inner, const Place& outer) const;
    std::size_t Size() const;
    void RequireSame() const;

    void AssignText();
    void AssignList();
    void AssignPart();
    void Copy();
    void Move();
    void CopyDictionary();
    void MoveDictionary();
    void AssignItself();
    void SetField();
    void EraseField();
    void AddFields();
    void Wrap();
    void ConstructFrom();
    void Renew();
    void Access();

    static const Step Steps[];

    Input& _input;
    std::array<Variant, 3> _variants;
    std::array<Model, 3> _models;
};

const Session::Step Session::Steps[] = {
    &Session::AssignText,    &Session::AssignList,     &Session::AssignPart,     &Session::Copy,
    &Session::Move,          &Session::CopyDictionary, &Session::MoveDictionary, &Session::AssignItself,
    &Session::SetField,      &Session::EraseField,     &Session::AddFields,      &Session::Wrap,
    &Session::ConstructFrom, &Session::Renew,          &Session::Access,
};

std::size_t SizeOf(const Model& model) {
    std::size_t size = 1 + model.list.size();
    for (const auto& [key, value] : model.fields)
        size += SizeOf(value);
    return size;
}

std::size_t Session::Size() const {
    std::size_t size = 0;
    for (const Model& model : _models)
        size += SizeOf(model);
    return size;
}

/// A root, or a field inside it at any depth.
Place Session::Choose() {
    const std::size_t root = _input.Choice(_variants.size());
    Place place{&_variants[root], &_models[root]};
    while (!place.model->fields.empty()) {
        const std::size_t choice = _input.Choice(place.model->fields.size() + 1);
        if (choice == 0)
            break;
        place = place.Child(
            std::next(place.model->fields.begin(), static_cast<std::ptrdiff_t>(choice - 1))->first);
    }
    return place;
}

bool Contains(const Model& outer, const Model* inner) {
    if (&outer == inner)
        return true;
    return std::any_of(outer.fields.begin(), outer.fields.end(),
                       [inner](const auto& field) { return Contains(field.second, inner); });
}

bool Session::IsWithin(const Place& inner, const Place& outer) const {
    return inner.model != outer.model && Contains(*outer.model, inner.model);
}

void Session::RequireSame() const {
    for (std::size_t i = 0; i < _variants.size(); ++i)
        Require(ModelOf(_variants[i]) == _models[i], "a record contains the assigned values");
}

void Session::AssignText() {
    const Place place = Choose();
    const std::wstring text = _input.Line();
    *place.variant = text;
    *place.model = Model(text);
}

void Session::AssignList() {
    const Place place = Choose();
    std::vector<std::wstring> list;
    for (std::size_t left = _input.Choice(4); left > 0; --left)
        list.push_back(_input.Line());
    *place.variant = list;
    *place.model = Model(list);
}

/// A text or a list that is held somewhere, possibly inside the value that it replaces.
void Session::AssignPart() {
    const Place to = Choose();
    const Place from = Choose();
    if (from.model->type == ValueType::String) {
        const Model text(from.model->text);
        *to.variant = from.variant->AsString();
        *to.model = text;
    } else if (from.model->type == ValueType::StringList) {
        const Model list(from.model->list);
        *to.variant = from.variant->AsStringList();
        *to.model = list;
    }
}

void Session::Copy() {
    const Place to = Choose();
    const Place from = Choose();
    const Model copy = *from.model;
    *to.variant = *from.variant;
    *to.model = copy;
}

/// A value cannot be moved into itself.
void Session::Move() {
    const Place to = Choose();
    const Place from = Choose();
    if (IsWithin(to, from))
        return;
    *to.variant = std::move(*from.variant);
    if (to.model == from.model)
        return;
    Model moved = std::exchange(*from.model, Model());
    *to.model = std::move(moved);
}

void Session::CopyDictionary() {
    const Place to = Choose();
    const Place from = Choose();
    if (from.model->type != ValueType::Dictionary)
        return;
    const Model copy = *from.model;
    *to.variant = std::as_const(*from.variant).AsDictionary();
    *to.model = copy;
}

void Session::MoveDictionary() {
    const Place to = Choose();
    const Place from = Choose();
    if (from.model->type != ValueType::Dictionary || IsWithin(to, from))
        return;
    *to.variant = std::move(from.variant->AsDictionary());
    if (to.model == from.model)
        return;
    Model moved(std::exchange(from.model->fields, {}));
    *to.model = std::move(moved);
}

void Session::AssignItself() {
    const Place place = Choose();
    Variant& variant = *place.variant;
    const void* held = nullptr;
    const void* heldAfter = nullptr;
    if (variant.Type() == ValueType::String) {
        held = &variant.AsString();
        variant = variant.AsString();
        heldAfter = &variant.AsString();
    } else if (variant.Type() == ValueType::StringList) {
        held = &variant.AsStringList();
        variant = variant.AsStringList();
        heldAfter = &variant.AsStringList();
    } else if (variant.Type() == ValueType::Dictionary) {
        held = &variant.AsDictionary();
        variant = std::as_const(variant).AsDictionary();
        variant = std::move(variant.AsDictionary());
        heldAfter = &variant.AsDictionary();
    }
    Require(held == heldAfter, "assigning the held value changes nothing");
}

void Session::SetField() {
    const Place place = Choose();
    const std::wstring key = _input.Line();
    const std::wstring text = _input.Line();
    if (place.model->type != ValueType::Dictionary) {
        *place.variant = Dictionary();
        *place.model = Model(Model::Fields());
    }
    place.variant->AsDictionary()[key] = text;
    place.model->fields[key] = Model(text);
}

void Session::EraseField() {
    const Place place = Choose();
    const std::wstring key = _input.Line();
    if (place.model->type != ValueType::Dictionary)
        return;
    Require(place.variant->AsDictionary().erase(key) == place.model->fields.erase(key),
            "a field is there or not");
}

std::wstring JoinedKeysOfBoth(const Model& model, const StringDictionary& fields) {
    std::wstring joined;
    const wchar_t* separator = L"";
    for (const auto& [key, value] : model.fields) {
        if (!fields.contains(key))
            continue;
        joined += separator + key;
        separator = L", ";
    }
    return joined;
}

void Session::AddFields() {
    const Place place = Choose();
    const StringDictionary fields = _input.Fields();
    if (place.model->type != ValueType::Dictionary)
        return;
    const bool hasDuplicates = std::any_of(fields.begin(), fields.end(), [&place](const auto& field) {
        return place.model->fields.contains(field.first);
    });
    std::wstring failure;
    try {
        AddStringDictionary(place.variant->AsDictionary(), fields);
        place.model->fields.merge(TextFields(fields));
    } catch (const Common::ArgumentException& refused) {
        failure = refused.FullMessage();
    } catch (const std::range_error&) {
        failure = L"(keys that have no UTF-8)";
    }
    Require(hasDuplicates == !failure.empty(), "a key that is there already is refused");
    if (hasDuplicates && failure.front() != L'(')
        Require(failure == L"Contains one or more duplicate keys: " + JoinedKeysOfBoth(*place.model, fields) +
                               L"\nParameter name: stringDictionary",
                "the refusal names the keys in order");
}

/// One level deeper.
void Session::Wrap() {
    const Place place = Choose();
    const std::wstring key = _input.Line();
    Dictionary outer;
    outer[key] = std::move(*place.variant);
    *place.variant = std::move(outer);
    Require(outer.empty(), "a dictionary that was moved from is empty");
    Model::Fields fields;
    fields[key] = std::exchange(*place.model, Model());
    *place.model = Model(std::move(fields));
}

void Session::ConstructFrom() {
    const Place place = Choose();
    const Variant copy(*place.variant);
    Require(ModelOf(copy) == *place.model, "a copy is equal");
    Variant taken(std::move(*place.variant));
    Require(place.variant->Type() == ValueType::Null, "a value that was moved from is Null");
    *place.variant = copy;
    Require(ModelOf(taken) == *place.model, "a moved value is the value");
}

void Session::Renew() {
    const std::size_t root = _input.Choice(_variants.size());
    _variants[root] = Variant();
    _models[root] = Model();
}

void Session::Access() {
    const Place place = Choose();
    constexpr const char* Names[] = {"Null", "String", "StringList", "Dictionary"};
    const std::string actual = Names[static_cast<std::size_t>(place.model->type)];
    const auto requireAccess = [&](ValueType type, auto access) {
        const std::string expected = Names[static_cast<std::size_t>(type)];
        const auto failure = Thrown<Common::InvalidOperationException>(access);
        Require(failure == (type == place.model->type
                                ? std::nullopt
                                : std::optional("Expected type: " + expected + ", Actual type: " + actual)),
                "a value is read as what it is and as nothing else");
    };
    requireAccess(ValueType::String, [&] { place.variant->AsString(); });
    requireAccess(ValueType::StringList, [&] { place.variant->AsStringList(); });
    requireAccess(ValueType::Dictionary, [&] { place.variant->AsDictionary(); });
}

void Session::Run() {
    while (!_input.IsAtEnd() && Size() < LargestTree) {
        (this->*Steps[_input.Choice(std::size(Steps))])();
        RequireSame();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Session(input).Run();
    return 0;
}
