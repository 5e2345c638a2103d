// How each kind of export parameter is read from a session, passed, and shown after the call.
//
// Argument<Parameter> has Read (`json` is null if omitted; throws BadLine), Pass, and Show, which adds to the
// printed line. Each kind is declared here once, so an export needs only the names of its arguments.
#pragma once

#include "samples/host/Steps.h"

#include <array>
#include <limits>
#include <optional>
#include <type_traits>

namespace SampleHost {

namespace API = Zuvan::Lumeq::API;

inline const Json& Required(const Json* json) {
    if (json == nullptr)
        throw BadLine("missing");
    return *json;
}

inline bool IsNull(const Json* json) { return json == nullptr || json->is_null(); }

/// Parameters that only take a value in.
template <class Value>
struct InArgument {
    Value value{};
    void Show(Json&) const {}
};

template <class Parameter>
struct Argument;

template <class Parameter>
requires std::is_enum_v<Parameter> || std::is_same_v<Parameter, std::int32_t>
struct Argument<Parameter> : InArgument<Parameter> {
    void Read(const Json* json) {
        using Limits = std::numeric_limits<std::int32_t>;
        this->value = static_cast<Parameter>(ReadNumber(Required(json), Limits::min(), Limits::max()));
    }
    Parameter Pass(Session&) const { return this->value; }
};

template <>
struct Argument<bool> : InArgument<bool> {
    void Read(const Json* json) { value = ReadFlag(Required(json)); }
    bool Pass(Session&) const { return value; }
};

/// A byte, or true or false.
template <>
struct Argument<unsigned char> : InArgument<unsigned char> {
    void Read(const Json* json) {
        value = Required(json).is_boolean() ? ReadFlag(*json)
                                            : static_cast<unsigned char>(ReadNumber(*json, 0, 255));
    }
    unsigned char Pass(Session&) const { return value; }
};

template <>
struct Argument<const std::wstring&> : InArgument<std::wstring> {
    void Read(const Json* json) { value = ReadText(Required(json)); }
    const std::wstring& Pass(Session&) const { return value; }
};

template <>
struct Argument<const wchar_t*> : InArgument<std::optional<std::wstring>> {
    void Read(const Json* json) {
        if (!IsNull(json))
            value = ReadText(*json);
    }
    const wchar_t* Pass(Session&) const { return value ? value->c_str() : nullptr; }
};

template <>
struct Argument<const std::string&> : InArgument<std::string> {
    void Read(const Json* json) { value = ReadNarrowText(Required(json)); }
    const std::string& Pass(Session&) const { return value; }
};

template <>
struct Argument<const char*> : InArgument<std::string> {
    void Read(const Json* json) { value = ReadNarrowText(Required(json)); }
    const char* Pass(Session&) const { return value.c_str(); }
};

template <>
struct Argument<const API::StringDictionary&> : InArgument<API::StringDictionary> {
    void Read(const Json* json) { value = ReadDictionary(Required(json)); }
    const API::StringDictionary& Pass(Session&) const { return value; }
};

template <>
struct Argument<const API::StringDictionary*> : InArgument<std::optional<API::StringDictionary>> {
    void Read(const Json* json) {
        if (!IsNull(json))
            value = ReadDictionary(*json);
    }
    const API::StringDictionary* Pass(Session&) const { return value ? &*value : nullptr; }
};

template <>
struct Argument<const API::ScanFeatureMap&> : InArgument<API::ScanFeatureMap> {
    void Read(const Json* json) {
        if (!Required(json).is_object())
            throw BadLine("expected an object");
        for (const auto& feature : json->items())
            value[ReadText(Json(feature.key()))] = ReadFlag(feature.value());
    }
    const API::ScanFeatureMap& Pass(Session&) const { return value; }
};

template <>
struct Argument<const API::DiscoveredDeviceList&> : InArgument<API::DiscoveredDeviceList> {
    void Read(const Json* json) {
        if (!Required(json).is_array())
            throw BadLine("expected an array of dictionaries");
        for (const Json& device : *json)
            value.emplace_back().information = ReadDictionary(device);
    }
    const API::DiscoveredDeviceList& Pass(Session&) const { return value; }
};

/// The host's handle variable of that name.
template <>
struct Argument<API::TaskHandle*> {
    std::string name;
    bool isSet = false;

    void Read(const Json* json) {
        if (!Required(json).is_string())
            throw BadLine("expected the name of a handle");
        name = json->get<std::string>();
    }
    API::TaskHandle* Pass(Session& session) {
        _variable = &session.Handle(name);
        return _variable;
    }
    void Show(Json& line) const { line["handle"] = *_variable != nullptr ? "set" : "null"; }

private:
    API::TaskHandle* _variable = nullptr;
};

/// A text that the export sets. The session sets its contents before the call, empty by default.
template <>
struct Argument<std::wstring&> {
    void Read(const Json* json) {
        if (!IsNull(json))
            _before = ReadText(*json);
    }
    std::wstring& Pass(Session&) {
        _text = _before;
        return _text;
    }
    void Show(Json& line) const { line["returns"] = ToUtf8(_text); }

private:
    std::wstring _before;
    std::wstring _text;
};

/// A buffer that the export fills. It has room for Capacity characters, whatever size the export receives;
/// null for null.
template <>
struct Argument<wchar_t*> {
    static constexpr std::size_t Capacity = 256;

    void Read(const Json* json) {
        if (json != nullptr && json->is_null())
            _isNull = true;
        else if (json != nullptr)
            _before = ReadText(*json);
        if (_before.size() >= Capacity)
            throw BadLine("a buffer holds at most " + std::to_string(Capacity - 1) + " characters");
    }
    wchar_t* Pass(Session&) {
        _buffer.fill(L'\0');
        _before.copy(_buffer.data(), _before.size());
        return _isNull ? nullptr : _buffer.data();
    }
    void Show(Json& line) const {
        const std::wstring_view whole(_buffer.data(), _buffer.size());
        line["returns"]["text"] = _isNull ? Json() : Json(ToUtf8(whole.substr(0, whole.find(L'\0'))));
    }

private:
    bool _isNull = false;
    std::wstring _before;
    std::array<wchar_t, Capacity> _buffer{};
};

/// The buffer size that the export receives.
template <>
struct Argument<std::size_t> : InArgument<std::size_t> {
    void Read(const Json* json) {
        constexpr std::size_t most = Argument<wchar_t*>::Capacity;
        value = json == nullptr ? most : static_cast<std::size_t>(ReadNumber(*json, 0, most));
    }
    std::size_t Pass(Session&) const { return value; }
};

} // namespace SampleHost
