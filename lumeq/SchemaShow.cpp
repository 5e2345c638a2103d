#include "lumeq/RecordFields.h"
#include "lumeq/Schema.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t NameWidth = 24;

std::string Padded(const std::string& text, std::size_t width = NameWidth) {
    return text.size() < width ? text + std::string(width - text.size(), ' ') : text + " ";
}

/// "text, may be null".
std::string TypeWords(const Json& argument) {
    std::string words = argument.contains("enumeration") ? "a value of " + TextOf(argument, "enumeration")
                                                         : TextOf(argument, "type");
    if (!ValueOf(argument, "required", true))
        words += ", may be null";
    if (argument.contains("least"))
        words += ", " + std::to_string(ValueOf(argument, "least", 0)) + " or more";
    return words;
}

void ShowPatternLines(const Catalogue& catalogue, const std::string& name, const Output& output) {
    const Json& pattern = catalogue.Patterns().at(name);
    const std::string indent(NameWidth + 2, ' ');
    output.Line(indent + TextOf(pattern, "words"));
    output.Line(indent + "pattern " + name + ": " + TextOf(pattern, "expression") +
                (ValueOf(pattern, "ignoresCase", false) ? " (any case)" : ""));
    if (const std::string stricter = TextOf(pattern, "stricter"); !stricter.empty())
        output.Line(indent + "The event class then asks for " + stricter + ": " +
                    TextOf(catalogue.Patterns().at(stricter), "words"));
}

void ShowRefusal(const Json& operation, const Json& refusal, const Output& output) {
    Json call = ExampleCall(operation);
    call.update(refusal.at("with"));
    output.Line("  refused by the " + TextOf(refusal, "refusedBy") + ", because " +
                TextOf(refusal, "because") + ":");
    output.Line("    " + call.dump());
}

void ShowOperation(const Catalogue& catalogue, const Json& operation, const Output& output) {
    output.Line(output.Paint(Colour::Bold, SignatureOf(operation)));
    output.Line("  " + TextOf(operation, "sentence"));
    output.Line("  In lumeq.h: " + TextOf(operation, "cFunction"));
    if (!operation.at("arguments").empty())
        output.Line("\n" + output.Paint(Colour::Bold, "Arguments"));
    for (const Json& argument : operation.at("arguments")) {
        output.Line("  " + Padded(TextOf(argument, "name")) + TypeWords(argument));
        output.Line(std::string(NameWidth + 2, ' ') + TextOf(argument, "sentence"));
        if (argument.contains("pattern"))
            ShowPatternLines(catalogue, TextOf(argument, "pattern"), output);
    }
    if (const auto check = operation.find("eventClassCheck"); check != operation.end()) {
        output.Line("\n" + output.Paint(Colour::Bold, "Check of the event class"));
        output.Line("  " + TextOf(*check, "value"));
        ShowPatternLines(catalogue, TextOf(*check, "pattern"), output);
    }
    const auto fields = FieldsOf(catalogue, operation);
    if (!fields.empty())
        output.Line("\n" + output.Paint(Colour::Bold, "Record") + " (privacy class in brackets)");
    std::size_t width = 0;
    for (const RecordField& field : fields)
        width = std::max(width, field.name.size() + 2);
    for (const RecordField& field : fields)
        output.Line("  " + Padded(field.name, width) + field.holds + " [" + field.privacy + "]");
    output.Line("\n" + output.Paint(Colour::Bold, "Examples"));
    output.Line("  accepted:\n    " + ExampleCall(operation).dump());
    for (const Json& refusal : operation.at("refused"))
        ShowRefusal(operation, refusal, output);
}

void ShowEnumeration(const std::string& name, const Json& enumeration, const Output& output) {
    output.Line(output.Paint(Colour::Bold, name));
    output.Line("  " + TextOf(enumeration, "sentence") + "\n");
    const std::size_t value = 8;
    output.Line("  " + Padded("value", value) + Padded("text in records", 32) + "constant of lumeq.h");
    for (const Json& row : enumeration.at("values")) {
        std::string constant = TextOf(row, "name");
        constant.erase(constant.find_last_not_of('_') + 1);
        std::transform(constant.begin(), constant.end(), constant.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
        output.Line("  " + Padded(std::to_string(ValueOf(row, "value", 0)), value) +
                    Padded(TextOf(row, "text"), 32) + TextOf(enumeration, "cPrefix") + constant);
    }
}

void ShowPattern(const Catalogue& catalogue, const std::string& name, const Output& output) {
    const Json& pattern = catalogue.Patterns().at(name);
    output.Line(output.Paint(Colour::Bold, name) + ", checked by the " + TextOf(pattern, "checkedBy"));
    output.Line("  " + TextOf(pattern, "words"));
    output.Line("  " + TextOf(pattern, "expression") +
                (ValueOf(pattern, "ignoresCase", false) ? " (any case)" : ""));
    if (const std::string stricter = TextOf(pattern, "stricter"); !stricter.empty())
        output.Line("  The event class then asks for " + stricter + ".");
    for (const char* verdict : {"accepted", "refused"}) {
        std::string texts;
        for (const Json& text : pattern.at(verdict))
            texts += (texts.empty() ? " " : ", ") + Quoted(text.get<std::string>());
        output.Line(std::string("  ") + verdict + ":" + texts);
    }
    for (const std::string& user : UsersOf(catalogue, name))
        output.Line("  used by " + user);
}

/// Known names that hold the wanted one, whatever the case.
std::string SimilarNames(const Catalogue& catalogue, std::string wanted) {
    const auto lower = [](std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        return text;
    };
    wanted = lower(wanted);
    std::string similar;
    const auto add = [&](const std::string& name) {
        if (lower(name).find(wanted) != std::string::npos)
            similar += (similar.empty() ? "" : ", ") + name;
    };
    for (const Json& operation : catalogue.Operations())
        add(TextOf(operation, "name"));
    for (const auto& [name, enumeration] : catalogue.Enumerations().items())
        add(name);
    for (const auto& [name, pattern] : catalogue.Patterns().items())
        add(name);
    return similar;
}

} // namespace

ExitCode ShowSchema(const Catalogue& catalogue, const std::string& name, bool asJson, const Output& output) {
    const Json* operation = catalogue.FindOperation(name);
    const bool isEnumeration = catalogue.Enumerations().contains(name);
    const bool isPattern = catalogue.Patterns().contains(name);
    if (!operation && !isEnumeration && !isPattern) {
        const std::string similar = SimilarNames(catalogue, name);
        Output(stderr).Line(
            "lumeq: no operation, enumeration or pattern is named " + Quoted(name) +
            (similar.empty() ? "; `lumeq schema list` shows all" : "; did you mean " + similar + "?"));
        return CannotRun;
    }
    const Json& entry = operation       ? *operation
                        : isEnumeration ? catalogue.Enumerations().at(name)
                                        : catalogue.Patterns().at(name);
    if (asJson)
        output.Line(entry.dump(2));
    else if (operation)
        ShowOperation(catalogue, entry, output);
    else if (isEnumeration)
        ShowEnumeration(name, entry, output);
    else
        ShowPattern(catalogue, name, output);
    return Clean;
}

ExitCode ListSchema(const Catalogue& catalogue, const Output& output) {
    output.Line(output.Paint(Colour::Bold, "Operations"));
    for (const Json& operation : catalogue.Operations())
        output.Line("  " + Padded(TextOf(operation, "name"), 28) + TextOf(operation, "sentence"));
    output.Line("\n" + output.Paint(Colour::Bold, "Enumerations"));
    for (const auto& [name, enumeration] : catalogue.Enumerations().items())
        output.Line("  " + Padded(name, 28) + TextOf(enumeration, "sentence"));
    output.Line("\n" + output.Paint(Colour::Bold, "Patterns"));
    for (const auto& [name, pattern] : catalogue.Patterns().items())
        output.Line("  " + Padded(name, 28) + TextOf(pattern, "words"));
    return Clean;
}

} // namespace Zuvan::Lumeq::Tool
