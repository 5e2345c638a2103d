#include "lumeq/RecordFields.h"
#include "lumeq/Schema.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

/// Code in a table. A vertical line would end the cell.
std::string Code(std::string text) {
    if (text.empty())
        return {};
    for (std::size_t at = text.find('|'); at != text.npos; at = text.find('|', at + 2))
        text.insert(at, 1, '\\');
    return "`" + text + "`";
}

std::string Row(std::initializer_list<std::string> cells) {
    std::string row = "|";
    for (const std::string& cell : cells)
        row += " " + cell + " |";
    return row + "\n";
}

std::string Link(const std::string& name) {
    std::string anchor;
    for (const char letter : name)
        if (letter != ':')
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return "[" + name + "](#" + anchor + ")";
}

std::string RuleOf(const Json& argument) {
    if (argument.contains("enumeration"))
        return "a value of " + Link(TextOf(argument, "enumeration"));
    std::string rule = argument.contains("pattern") ? "pattern " + Link(TextOf(argument, "pattern")) : "";
    if (argument.contains("least"))
        rule = std::to_string(ValueOf(argument, "least", 0)) + " or more";
    return rule;
}

std::string ArgumentTable(const Json& operation) {
    if (operation.at("arguments").empty())
        return "No arguments.\n\n";
    std::string table = Row({"argument", "type", "rule", "what it is"}) + "| --- | --- | --- | --- |\n";
    for (const Json& argument : operation.at("arguments"))
        table += Row(
            {Code(TextOf(argument, "name")),
             Code(TextOf(argument, "cppType")) + (ValueOf(argument, "required", true) ? "" : ", may be null"),
             RuleOf(argument), TextOf(argument, "sentence")});
    return table + "\n";
}

std::string RecordTable(const Catalogue& catalogue, const Json& operation) {
    const auto fields = FieldsOf(catalogue, operation);
    if (fields.empty())
        return "Nothing is recorded.\n\n";
    std::string table = Row({"field", "holds", "privacy"}) + "| --- | --- | --- |\n";
    for (const RecordField& field : fields) {
        const bool isSentence = field.holds.ends_with('.');
        table += Row({Code(field.name), isSentence ? field.holds : Code(field.holds), field.privacy});
    }
    return table + "\n";
}

std::string Examples(const Json& operation) {
    std::string examples = "```json\n" + ExampleCall(operation).dump() + "\n```\n\n";
    for (const Json& refusal : operation.at("refused"))
        examples += "Refused by the " + TextOf(refusal, "refusedBy") + " with " +
                    Code(refusal.at("with").dump()) + ": " + TextOf(refusal, "because") + ".\n\n";
    return examples;
}

std::string OperationSection(const Catalogue& catalogue, const Json& operation) {
    std::string section = "### " + TextOf(operation, "name") + "\n\n" + TextOf(operation, "sentence") +
                          " In `lumeq.h`: " + Code(TextOf(operation, "cFunction")) + ".\n\n" +
                          ArgumentTable(operation);
    if (const auto check = operation.find("eventClassCheck"); check != operation.end())
        section += "The event class then checks " + Code(TextOf(*check, "value")) + " by the pattern " +
                   Link(TextOf(*check, "pattern")) + ".\n\n";
    return section + RecordTable(catalogue, operation) + Examples(operation);
}

std::string PatternSection(const Catalogue& catalogue, const std::string& name) {
    const Json& pattern = catalogue.Patterns().at(name);
    std::string section = "### " + name + "\n\n" + TextOf(pattern, "words") + "\n\n```text\n" +
                          TextOf(pattern, "expression") + "\n```\n\n";
    if (ValueOf(pattern, "ignoresCase", false))
        section += "The case of the letters of ASCII is ignored. ";
    section += "Checked by the " + TextOf(pattern, "checkedBy") + ".";
    if (const std::string stricter = TextOf(pattern, "stricter"); !stricter.empty())
        section += " The event class then asks for " + Link(stricter) + ".";
    for (const char* verdict : {"accepted", "refused"}) {
        section += std::string(" ") + (*verdict == 'a' ? "Accepted" : "Refused") + ":";
        std::string separator = " ";
        for (const Json& text : pattern.at(verdict)) {
            section += separator + Code(Json(Shown(SampleHost::ReadText(text))).dump());
            separator = ", ";
        }
        section += ".";
    }
    return section + "\n\n";
}

std::string EnumerationSection(const std::string& name, const Json& enumeration) {
    std::string section = "### " + name + "\n\n" + TextOf(enumeration, "sentence") +
                          " In `lumeq.h`: " + Code(TextOf(enumeration, "cEnumeration")) + ".\n\n" +
                          Row({"value", "name", "text in records", "number in event classes"}) +
                          "| ---: | --- | --- | ---: |\n";
    for (const Json& row : enumeration.at("values"))
        section += Row({std::to_string(ValueOf(row, "value", 0)), Code(TextOf(row, "name")),
                        Code(TextOf(row, "text")), std::to_string(ValueOf(row, "record", 0))});
    return section + "\n";
}

} // namespace

std::string ReferencePage(const Catalogue& catalogue) {
    std::string page =
        "# Reference\n\n"
        "Each operation with its arguments, its record and examples; then the patterns and enumerations. "
        "Written by\n`lumeq schema export --format md` from `schema/lumeq.json`; do not edit it. "
        "[privacy.md](privacy.md) explains the privacy classes.\n\n"
        "A pattern covers a whole text. `\\w`, `\\d` and `\\s` know the letters, digits and spaces of all "
        "scripts. In a record,\n`{name}` stands for the argument of that name; a part in brackets is "
        "missing if its argument is null or empty.\n\n";
    std::string group;
    for (const Json& operation : catalogue.Operations()) {
        if (std::exchange(group, TextOf(operation, "group")) != TextOf(operation, "group"))
            page += "## " +
                    std::string(1, static_cast<char>(std::toupper(static_cast<unsigned char>(group[0])))) +
                    group.substr(1) + "\n\n";
        page += OperationSection(catalogue, operation);
    }
    page += "## Patterns\n\n";
    for (const auto& [name, pattern] : catalogue.Patterns().items())
        page += PatternSection(catalogue, name);
    page += "## Enumerations\n\n";
    for (const auto& [name, enumeration] : catalogue.Enumerations().items())
        page += EnumerationSection(name, enumeration);
    page.pop_back();
    return page;
}

} // namespace Zuvan::Lumeq::Tool
