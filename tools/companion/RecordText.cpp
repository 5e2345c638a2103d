#include "tools/companion/RecordText.h"

#include "Common/Utf.h"

#include <algorithm>
#include <cstdio>

namespace Companion {

namespace Eventing = Zuvan::Lumeq::Extra::Eventing;

namespace {

bool IsHighSurrogate(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

std::string Escaped(wchar_t unit) {
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", static_cast<unsigned>(unit));
    return text;
}

/// How many code units the character at `at` has.
std::size_t CharacterLength(const std::wstring& text, std::size_t at) {
    const bool isPair = IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
    return isPair ? 2 : 1;
}

std::string JsonCharacter(const std::wstring& character) {
    const wchar_t first = character[0];
    if (first == L'"' || first == L'\\')
        return {'\\', static_cast<char>(first)};
    const bool isUnpaired = character.size() == 1 && (IsHighSurrogate(first) || IsLowSurrogate(first));
    if (first < 0x20 || isUnpaired)
        return Escaped(first);
    return Zuvan::Lumeq::Common::ToUtf8(character);
}

template <class Map>
std::string MapText(const Map& map) {
    Members members;
    for (const auto& [name, value] : map)
        members.emplace_back(name, JsonText(value));
    std::sort(members.begin(), members.end());
    return JsonText(members);
}

std::string ListText(const std::vector<std::wstring>& list) {
    std::string text = "[";
    for (const std::wstring& element : list)
        text += (text.size() > 1 ? ", " : "") + JsonText(element);
    return text + "]";
}

} // namespace

std::string JsonText(const std::wstring& text) {
    std::string json = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = CharacterLength(text, at);
        json += JsonCharacter(text.substr(at, length));
        at += length;
    }
    return json + "\"";
}

std::string JsonText(bool flag) { return flag ? "true" : "false"; }

std::string JsonText(const Eventing::Variant& value) {
    if (const auto* text = value.StringIf())
        return JsonText(*text);
    if (const auto* list = value.StringListIf())
        return ListText(*list);
    if (const auto* dictionary = value.DictionaryIf())
        return JsonText(*dictionary);
    return "null";
}

std::string JsonText(const Members& members) {
    std::string json = "{";
    for (const auto& [name, value] : members)
        json += (json.size() > 1 ? ", " : "") + JsonText(name) + ": " + value;
    return json + "}";
}

std::string JsonText(const Eventing::Dictionary& dictionary) { return MapText(dictionary); }
std::string JsonText(const Eventing::StringDictionary& dictionary) { return MapText(dictionary); }

} // namespace Companion
