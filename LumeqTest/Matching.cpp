#include "LumeqTest/Matching.h"

#include "LumeqTest/Recording.h"
#include "lumeq/Catalogue.h"
#include "lumeq/LibraryTables.h"
#include "lumeq/Output.h"

#include <optional>

namespace Zuvan::Lumeq::Double {

namespace {

using SampleHost::Json;
using Tool::Quoted;

/// Null outside of the export's signature.
const Json* FindArgument(const Json& operation, const std::string& name) {
    for (const Json& argument : operation.at("arguments"))
        if (argument.at("name") == name)
            return &argument;
    return nullptr;
}

/// Whether a path begins with a part of what was recorded. All others begin with an argument of the call.
bool IsOfRecorded(const std::string& path) {
    return path.starts_with("record.") || path.starts_with("data.") || path.starts_with("refusal.");
}

/// The value at the end of a path such as "localContext.shop".
Json ValueAt(const Json& recorded, std::string path) {
    Json value = IsOfRecorded(path) ? recorded : recorded.at("call");
    if (path.starts_with("refusal."))
        path.erase(0, std::string_view("refusal.").size());
    for (std::size_t begin = 0; begin <= path.size() && value.is_object();) {
        const std::size_t end = std::min(path.find('.', begin), path.size());
        value = Tool::ValueOf(value, path.substr(begin, end - begin).c_str(), Json());
        begin = end + 1;
    }
    return value;
}

std::optional<std::string> TextOfValue(const Json& value) {
    if (value.is_null())
        return std::nullopt;
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_object() && value.contains("units"))
        return SampleHost::ToUtf8(SampleHost::ReadText(value));
    return value.dump();
}

/// The other text of a value that has two: a byte as a flag, an enumerated value in the event.
std::optional<std::string> OtherText(const Json* argument, const Json& value) {
    if (!argument || !value.is_number())
        return std::nullopt;
    if (argument->contains("enumeration"))
        return SampleHost::ToUtf8(
            Tool::EnumerationOfLibrary(argument->at("enumeration")).textOf(value.get<std::int32_t>()));
    if (argument->at("type") == "byte")
        return value == 0 ? "false" : "true";
    return std::nullopt;
}

std::string ShownValue(const Json* argument, const Json& value) {
    if (value.is_string() || (value.is_object() && value.contains("units")))
        return Quoted(*TextOfValue(value));
    const auto other = OtherText(argument, value);
    return value.dump() + (other ? " (" + *other + ")" : "");
}

bool IsKnown(const Json& operation, const std::string& path) {
    return IsOfRecorded(path) || path == "handle" || FindArgument(operation, path.substr(0, path.find('.')));
}

std::string ArgumentMismatch(const Json& operation, const Json& recorded,
                             const lumeq_test_argument& expected) {
    const std::string name = expected.name ? expected.name : "";
    if (!IsKnown(operation, name))
        return Tool::TextOf(operation, "name") + " has no argument " + Quoted(name);
    const Json* const argument = FindArgument(operation, name);
    const Json value = ValueAt(recorded, name);
    const auto text = TextOfValue(value);
    if (!expected.value)
        return text ? name + " is " + ShownValue(argument, value) + ", not null" : "";
    if (text == expected.value || OtherText(argument, value) == expected.value)
        return {};
    return name + " is " + ShownValue(argument, value) + ", not " + Quoted(expected.value);
}

std::string ShownCall(const Json& call) {
    if (!call.is_object())
        return "no call";
    const Json& operation = *Tool::Catalogue::OfThisProgram().FindOperation(call.at("call"));
    std::string text;
    for (const auto& [name, value] : call.items())
        if (name != "call")
            text +=
                (text.empty() ? "" : ", ") + name + ": " + ShownValue(FindArgument(operation, name), value);
    return call.at("call").get<std::string>() + "(" + text + ")";
}

std::string ShownRefusal(const Json& refusal) {
    const std::string advice = Tool::TextOf(refusal, "advice");
    return refusal.at("export").get<std::string>() + ": " + refusal.at("message").get<std::string>() +
           (advice.empty() ? "" : ": " + advice);
}

std::string Lines(const char* kind, const Texts& texts) {
    std::string lines;
    for (std::size_t at = 0; at < texts.size(); ++at)
        lines +=
            std::string("  ") + kind + " " + std::to_string(at) + ": " + Shown(Json::parse(texts[at])) + "\n";
    return lines;
}

} // namespace

std::string Mismatch(const Json& recorded, const std::string& exportName, Expected arguments) {
    const Json& call = recorded.at("call");
    const Json* const operation = Tool::Catalogue::OfThisProgram().FindOperation(exportName);
    if (!operation)
        return "Lumeq has no export " + Quoted(exportName);
    if (!call.is_object() || call.at("call") != exportName)
        return "is " + Shown(recorded) + ", not " + exportName;
    std::string differences;
    for (const lumeq_test_argument& expected : arguments)
        if (const std::string difference = ArgumentMismatch(*operation, recorded, expected);
            !difference.empty())
            differences += (differences.empty() ? "" : "; ") + difference;
    return differences;
}

std::string Shown(const Json& recorded) {
    return recorded.contains("message") ? ShownRefusal(recorded) : ShownCall(recorded.at("call"));
}

std::string Shown(const std::string& exportName, Expected arguments) {
    std::string text;
    for (const lumeq_test_argument& expected : arguments)
        text += (text.empty() ? "" : ", ") + std::string(expected.name ? expected.name : "") + ": " +
                (expected.value ? Quoted(expected.value) : "null");
    return exportName + "(" + text + ")";
}

std::string ShownRecording() {
    const LockedRecording recording;
    const std::string lines = Lines("event", recording->events) + Lines("refusal", recording->refusals);
    return lines.empty() ? "  nothing was recorded\n" : lines;
}

std::string MissingEvent(const std::string& exportName, Expected arguments) {
    {
        const LockedRecording recording;
        for (const std::string& event : recording->events)
            if (Mismatch(Json::parse(event), exportName, arguments).empty())
                return {};
    }
    return "no event " + Shown(exportName, arguments) + "; there are:\n" + ShownRecording();
}

} // namespace Zuvan::Lumeq::Double
