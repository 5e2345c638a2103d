#include "lumeq/SessionArguments.h"

namespace Zuvan::Lumeq::Tool {

namespace {

/// Null if the session leaves it out.
Json MemberOf(const Json& argument, const Json& call) {
    const auto found = call.find(TextOf(argument, "name"));
    return found == call.end() ? Json() : *found;
}

std::wstring ArgumentNamed(const std::string& name, const Json& operation, const Json& call) {
    for (const Json& argument : operation.at("arguments"))
        if (argument.at("name") == name)
            return TextArgument(argument, call).value_or(L"");
    return {};
}

} // namespace

std::optional<std::wstring> TextArgument(const Json& argument, const Json& call) {
    const Json value = MemberOf(argument, call);
    if (value.is_null())
        return std::nullopt;
    std::wstring text = SampleHost::ReadText(value);
    if (argument.at("cppType") == "const wchar_t*")
        text.resize(std::min(text.size(), text.find(L'\0')));
    return text;
}

std::int32_t NumberArgument(const Json& argument, const Json& call) {
    const Json value = MemberOf(argument, call);
    return value.is_boolean() ? value.get<bool>() : value.is_number() ? value.get<std::int32_t>() : 0;
}

API::StringDictionary FieldsArgument(const Json& argument, const Json& call) {
    const Json value = MemberOf(argument, call);
    return value.is_null() ? API::StringDictionary() : SampleHost::ReadDictionary(value);
}

std::vector<API::StringDictionary> DevicesArgument(const Json& argument, const Json& call) {
    std::vector<API::StringDictionary> devices;
    for (const Json& device : MemberOf(argument, call))
        devices.push_back(SampleHost::ReadDictionary(device));
    return devices;
}

std::wstring WithoutQuery(const std::wstring& url) { return url.substr(0, url.find(L'?')); }

ComposedText Compose(const std::string& pattern, const Json& operation, const Json& call) {
    ComposedText composed;
    std::size_t beginOfPart = 0;
    bool isMissing = false;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] == '[') {
            beginOfPart = composed.text.size();
            isMissing = false;
        } else if (pattern[at] == ']') {
            if (isMissing) {
                composed.text.resize(beginOfPart);
                composed.arguments.resize(beginOfPart);
            }
        } else if (pattern[at] == '{') {
            const std::size_t end = pattern.find('}', at);
            const std::string name = pattern.substr(at + 1, end - at - 1);
            const std::wstring value = ArgumentNamed(name, operation, call);
            isMissing = value.empty();
            composed.text += value;
            composed.arguments.insert(composed.arguments.end(), value.size(), name);
            at = end;
        } else {
            composed.text += static_cast<wchar_t>(pattern[at]);
            composed.arguments.emplace_back();
        }
    }
    return composed;
}

} // namespace Zuvan::Lumeq::Tool
