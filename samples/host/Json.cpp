#include "samples/host/Json.h"

#include <windows.h>

#include <algorithm>
#include <limits>

namespace SampleHost {

namespace {

constexpr std::int64_t MostRepetitions = 100'000'000;

std::wstring ToWide(const std::string& utf8) {
    const int size = static_cast<int>(utf8.size());
    std::wstring text(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), static_cast<int>(text.size()));
    return text;
}

template <class Text>
Text Repeated(const Text& text, std::int64_t times) {
    Text result;
    result.reserve(text.size() * static_cast<std::size_t>(times));
    for (; times > 0; --times)
        result += text;
    return result;
}

/// The forms of a text, written once for both widths. `fromString` converts a JSON string into a `Text`.
template <class Text, class FromString>
Text ReadAnyText(const Json& json, FromString fromString) {
    using Unit =
        std::make_unsigned_t<std::conditional_t<sizeof(typename Text::value_type) == 1, char, short>>;
    if (json.is_string())
        return fromString(json.get_ref<const std::string&>());
    Text text;
    if (json.is_array()) {
        for (const Json& part : json)
            text += ReadAnyText<Text>(part, fromString);
    } else if (json.is_object() && json.contains("units") && json["units"].is_array()) {
        RequireMembers(json, {"units"});
        for (const Json& unit : json["units"])
            text +=
                static_cast<typename Text::value_type>(ReadNumber(unit, 0, std::numeric_limits<Unit>::max()));
    } else if (json.is_object() && json.contains("repeat") && json.contains("times")) {
        RequireMembers(json, {"repeat", "times"});
        text = Repeated(ReadAnyText<Text>(json["repeat"], fromString),
                        ReadNumber(json["times"], 0, MostRepetitions));
    } else {
        throw BadLine("expected a text");
    }
    return text;
}

} // namespace

void RequireMembers(const Json& object, std::initializer_list<std::string_view> names) {
    if (!object.is_object())
        throw BadLine("expected an object");
    for (const auto& member : object.items())
        if (std::find(names.begin(), names.end(), member.key()) == names.end())
            throw BadLine("unknown member \"" + member.key() + "\"");
}

std::int64_t ReadNumber(const Json& json, std::int64_t least, std::int64_t most) {
    if (!json.is_number_integer())
        throw BadLine("expected a whole number");
    // A number beyond the signed range would become negative.
    const bool tooBig =
        json.is_number_unsigned() &&
        json.get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const auto number = json.get<std::int64_t>();
    if (tooBig || number < least || number > most)
        throw BadLine("expected a number from " + std::to_string(least) + " to " + std::to_string(most));
    return number;
}

bool ReadFlag(const Json& json) {
    if (!json.is_boolean())
        throw BadLine("expected true or false");
    return json.get<bool>();
}

std::wstring ReadText(const Json& json) { return ReadAnyText<std::wstring>(json, ToWide); }

std::string ReadNarrowText(const Json& json) {
    return ReadAnyText<std::string>(json, [](const std::string& text) { return text; });
}

Zuvan::Lumeq::API::StringDictionary ReadDictionary(const Json& json) {
    Zuvan::Lumeq::API::StringDictionary dictionary;
    if (json.is_object()) {
        for (const auto& member : json.items())
            dictionary.insert_or_assign(ToWide(member.key()), ReadText(member.value()));
        return dictionary;
    }
    if (!json.is_array())
        throw BadLine("expected a dictionary");
    for (const Json& pair : json) {
        if (!pair.is_array() || pair.size() != 2)
            throw BadLine("expected a pair of texts");
        dictionary.insert_or_assign(ReadText(pair[0]), ReadText(pair[1]));
    }
    return dictionary;
}

std::string ToUtf8(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    std::string utf8(static_cast<std::size_t>(
                         WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)),
                     '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(), static_cast<int>(utf8.size()), nullptr,
                        nullptr);
    return utf8;
}

} // namespace SampleHost
