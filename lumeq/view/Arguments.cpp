#include "lumeq/view/Arguments.h"

#include "lumeq/Output.h"
#include "lumeq/SessionArguments.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t LongestValue = 2000;

std::string ShownText(std::wstring_view text) {
    if (text.size() <= LongestValue)
        return Quoted(text);
    return Quoted(text.substr(0, LongestValue)) + "... (" + std::to_string(text.size()) + " characters)";
}

std::string ShownFields(const API::StringDictionary& fields) {
    std::vector<std::string> members;
    for (const auto& [name, value] : fields)
        members.push_back(Shown(name) + ": " + ShownText(value));
    std::sort(members.begin(), members.end());
    std::string shown;
    for (const std::string& member : members)
        shown += (shown.empty() ? "" : ", ") + member;
    return "{" + shown + "}";
}

std::string ShownDevices(const std::vector<API::StringDictionary>& devices) {
    std::string shown;
    for (const API::StringDictionary& device : devices)
        shown += (shown.empty() ? "" : ", ") + ShownFields(device);
    return "[" + shown + "]";
}

std::string ShownEnumeration(const Catalogue& catalogue, const Json& argument, const Json& call) {
    const auto number = NumberArgument(argument, call);
    const Json& values = catalogue.Enumerations().at(TextOf(argument, "enumeration")).at("values");
    if (number < 0 || static_cast<std::size_t>(number) >= values.size())
        return std::to_string(number);
    return TextOf(values[static_cast<std::size_t>(number)], "text") + " (" + std::to_string(number) + ")";
}

std::string ShownValue(const Catalogue& catalogue, const Json& argument, const Json& call) {
    const std::string type = TextOf(argument, "type");
    const Json& value = call.at(TextOf(argument, "name"));
    if (type == "text")
        return ShownText(*TextArgument(argument, call));
    if (type == "narrow text")
        return ShownText(SampleHost::ReadText(Json(SampleHost::ReadNarrowText(value))));
    if (type == "fields")
        return ShownFields(FieldsArgument(argument, call));
    if (type == "devices")
        return ShownDevices(DevicesArgument(argument, call));
    if (type == "enumeration")
        return ShownEnumeration(catalogue, argument, call);
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool IsText(const Json& argument) { return TextOf(argument, "type") == "text"; }

/// As the log writes it on its line.
std::string OnOneLine(const std::wstring& text) {
    std::string line;
    for (const char byte : SampleHost::ToUtf8(text.substr(0, text.find(L'\0'))))
        if (byte == '\n' || byte == '\r')
            line += byte == '\n' ? "\\n" : "\\r";
        else
            line += byte;
    return line;
}

std::string WithoutMarks(const std::string& value) {
    const std::size_t begin = value.find_first_not_of("'");
    const std::size_t end = value.find_last_not_of("'");
    return begin == value.npos ? value : value.substr(begin, end - begin + 1);
}

} // namespace

std::vector<ViewedArgument> ArgumentsOfSession(const Catalogue& catalogue, const Json& operation,
                                               const Json& call) {
    std::vector<ViewedArgument> arguments;
    for (const Json& argument : operation.at("arguments")) {
        const std::string name = TextOf(argument, "name");
        const auto value = call.find(name);
        if (value == call.end())
            continue;
        if (value->is_null())
            arguments.push_back({name, "null", true});
        else
            arguments.push_back({name, ShownValue(catalogue, argument, call), false});
    }
    return arguments;
}

std::string KeyOfSession(const Json& operation, const Json& call) {
    std::string key = LoggedNameOf(TextOf(operation, "name"));
    for (const Json& argument : operation.at("arguments"))
        if (IsText(argument)) {
            const auto text = TextArgument(argument, call);
            key += '\n' + (text ? '"' + OnOneLine(*text) + '"' : "(null)");
        }
    return key;
}

std::string KeyOfTrace(const Json& operation, const std::vector<ViewedArgument>& arguments) {
    std::string key = LoggedNameOf(TextOf(operation, "name"));
    for (const Json& argument : operation.at("arguments"))
        if (IsText(argument)) {
            const auto found = std::find_if(arguments.begin(), arguments.end(), [&](const auto& its) {
                return its.name == TextOf(argument, "name");
            });
            key += '\n' + (found == arguments.end() ? "" : WithoutMarks(found->value));
        }
    return key;
}

std::string LoggedNameOf(const std::string& name) {
    constexpr std::string_view Form = "_Internal";
    return name.ends_with(Form) ? name.substr(0, name.size() - Form.size()) : name;
}

} // namespace Zuvan::Lumeq::Tool
