#include "lumeq/RecordFields.h"

namespace Zuvan::Lumeq::Tool {

namespace {

std::string Listed(const Json& words) {
    std::string listed;
    for (const Json& word : words)
        listed += (listed.empty() ? "\"" : " or \"") + word.get<std::string>() + "\"";
    return listed;
}

/// What this operation's record has for a field that all events share; empty if nothing of its own.
std::string OwnValue(const Json& record, const std::string& field) {
    if (field == "app_event_actor")
        return "\"" + TextOf(record, "actor") + "\"";
    if (field == "app_event_action")
        return Listed(record.at("action"));
    if (field == "app_event_object")
        return "\"" + TextOf(record, "object") + "\"";
    if (field == "app_event_object_label") {
        const std::string label = TextOf(record, "label");
        return label.find('{') == label.npos ? "\"" + label + "\"" : label;
    }
    return field == "app_event_details" ? "null" : "";
}

bool Concerns(const Json& record, const std::string& field) {
    if (field == "app_event_context.context_local._app_event_task_guid")
        return TextOf(record, "object") == "task";
    return field != "app_event_details" || record.at("details").empty();
}

} // namespace

std::string HeldBy(const Json& field) {
    if (field.contains("constant"))
        return "\"" + TextOf(field, "constant") + "\"";
    if (field.contains("composed"))
        return TextOf(field, "composed");
    const std::string argument = field.contains("argument") ? "{" + TextOf(field, "argument") + "}" : "";
    const std::string meaning = TextOf(field, "meaning");
    return argument.empty() || meaning.empty() ? argument + meaning : argument + ": " + meaning;
}

std::vector<RecordField> FieldsOf(const Catalogue& catalogue, const Json& operation) {
    std::vector<RecordField> fields;
    const auto found = operation.find("record");
    if (found == operation.end())
        return fields;
    const Json& record = *found;
    const bool isEvent = record.at("kind") == "event";
    if (isEvent)
        for (const Json& field : catalogue.Whole().at("event").at("fields")) {
            const std::string name = TextOf(field, "field");
            if (!Concerns(record, name))
                continue;
            const std::string own = OwnValue(record, name);
            fields.push_back({name, own.empty() ? HeldBy(field) : own,
                              TextOf(name == "app_event_object_label" ? record : field,
                                     name == "app_event_object_label" ? "labelPrivacy" : "privacy")});
        }
    for (const Json& field : record.at("details"))
        fields.push_back({(isEvent ? "app_event_details." : "") + TextOf(field, "field"), HeldBy(field),
                          TextOf(field, "privacy")});
    return fields;
}

} // namespace Zuvan::Lumeq::Tool
