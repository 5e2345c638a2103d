#include "lumeq/PatternLanguage.h"
#include "lumeq/RecordFields.h"
#include "lumeq/Schema.h"

#include <map>

namespace Zuvan::Lumeq::Tool {

namespace {

using Breaks = SchemaChange::Breaks;

PatternLanguage LanguageOf(const std::string& where, const Json& pattern) {
    try {
        return PatternLanguage(SampleHost::ReadText(pattern.at("expression")),
                               ValueOf(pattern, "ignoresCase", false));
    } catch (const BadExpression& problem) {
        throw CatalogueError("the expression of " + where + " cannot be read: " + problem.what());
    }
}

class Comparison {
public:
    Comparison(const Catalogue& older, const Catalogue& newer) : _older(older), _newer(newer) {}

    std::vector<SchemaChange> All() {
        for (const auto& [name, pattern] : _older.Patterns().items())
            if (_newer.Patterns().contains(name))
                ComparePatterns("pattern " + name, pattern, _newer.Patterns().at(name));
        for (const auto& [name, enumeration] : _older.Enumerations().items())
            if (_newer.Enumerations().contains(name))
                CompareEnumerations(name, enumeration, _newer.Enumerations().at(name));
        for (const Json& operation : _older.Operations()) {
            const std::string name = TextOf(operation, "name");
            if (const Json* other = _newer.FindOperation(name))
                CompareOperations(name, operation, *other);
            else {
                Add(Breaks::Hosts, name, "the operation is gone");
                if (operation.contains("record"))
                    Add(Breaks::Receivers, name, "its records do not come any more");
            }
        }
        for (const Json& operation : _newer.Operations())
            if (!_older.FindOperation(TextOf(operation, "name")))
                Add(Breaks::Nothing, TextOf(operation, "name"), "a new operation");
        return std::move(_changes);
    }

private:
    void Add(Breaks breaks, const std::string& where, const std::string& what) {
        _changes.push_back({breaks, where, what});
    }

    void ComparePatterns(const std::string& where, const Json& before, const Json& now) {
        const PatternLanguage old = LanguageOf(where, before);
        const PatternLanguage young = LanguageOf(where, now);
        if (const auto lost = AcceptedOnlyBy(old, young))
            Add(Breaks::Hosts, where, "refuses " + Quoted(*lost) + ", which it accepted");
        if (const auto gained = AcceptedOnlyBy(young, old))
            Add(Breaks::Receivers, where, "accepts " + Quoted(*gained) + ", which it refused");
    }

    void CompareEnumerations(const std::string& name, const Json& before, const Json& now) {
        std::map<int, const Json*> rows;
        for (const Json& row : now.at("values"))
            rows[ValueOf(row, "value", 0)] = &row;
        for (const Json& row : before.at("values")) {
            const auto found = rows.find(ValueOf(row, "value", 0));
            const std::string where = name + " " + TextOf(row, "name");
            if (found == rows.end()) {
                Add(Breaks::Hosts, where, "the value is gone");
                continue;
            }
            CompareRows(where, row, *found->second);
            rows.erase(found);
        }
        for (const auto& [value, row] : rows)
            Add(Breaks::Receivers, name + " " + TextOf(*row, "name"),
                "a new value, recorded as " + Quoted(TextOf(*row, "text")));
    }

    void CompareRows(const std::string& where, const Json& before, const Json& now) {
        if (before.at("name") != now.at("name"))
            Add(Breaks::Hosts, where, "is now named " + TextOf(now, "name"));
        if (before.at("text") != now.at("text"))
            Add(Breaks::Receivers, where,
                "is recorded as " + Quoted(TextOf(now, "text")) + " instead of " +
                    Quoted(TextOf(before, "text")));
        if (before.at("record") != now.at("record"))
            Add(Breaks::Receivers, where,
                "has the number " + now.at("record").dump() + " in records instead of " +
                    before.at("record").dump());
    }

    void CompareOperations(const std::string& name, const Json& before, const Json& now) {
        CompareArguments(name, before.at("arguments"), now.at("arguments"));
        if (TextOf(before, "returns") != TextOf(now, "returns"))
            Add(Breaks::Hosts, name, "returns something else");
        if (TextOf(before, "cFunction") != TextOf(now, "cFunction"))
            Add(Breaks::Hosts, name, "the function of lumeq.h is now " + TextOf(now, "cFunction"));
        CompareRecords(name, before, now);
    }

    void CompareArguments(const std::string& operation, const Json& before, const Json& now) {
        const auto shape = [](const Json& arguments) {
            std::string shape;
            for (const Json& argument : arguments)
                shape += (shape.empty() ? "" : ", ") + TextOf(argument, "cppType") + " " +
                         TextOf(argument, "name");
            return shape;
        };
        if (shape(before) != shape(now)) {
            Add(Breaks::Hosts, operation, "takes (" + shape(now) + ") instead of (" + shape(before) + ")");
            return;
        }
        for (std::size_t i = 0; i < before.size(); ++i)
            CompareRules(operation + " " + TextOf(before[i], "name"), before[i], now[i]);
    }

    void CompareRules(const std::string& where, const Json& before, const Json& now) {
        if (!ValueOf(before, "required", true) && ValueOf(now, "required", true))
            Add(Breaks::Hosts, where, "may no longer be null");
        if (ValueOf(before, "required", true) && !ValueOf(now, "required", true))
            Add(Breaks::Receivers, where, "may be null");
        const int least = ValueOf(before, "least", 0), nowLeast = ValueOf(now, "least", 0);
        if (least != nowLeast)
            Add(nowLeast > least ? Breaks::Hosts : Breaks::Receivers, where,
                "must be " + std::to_string(nowLeast) + " or more");
        const std::string old = TextOf(before, "pattern"), young = TextOf(now, "pattern");
        if (old != young && !old.empty() && !young.empty()) {
            Add(Breaks::Nothing, where, "is checked by the pattern " + young + " instead of " + old);
            ComparePatterns(where, _older.Patterns().at(old), _newer.Patterns().at(young));
        }
        if (TextOf(before, "enumeration") != TextOf(now, "enumeration"))
            Add(Breaks::Hosts, where, "takes another enumeration");
    }

    void CompareRecords(const std::string& name, const Json& before, const Json& now) {
        std::map<std::string, RecordField> fields;
        for (const RecordField& field : FieldsOf(_newer, now))
            fields[field.name] = field;
        for (const RecordField& field : FieldsOf(_older, before)) {
            const auto found = fields.find(field.name);
            const std::string where = name + " " + field.name;
            if (found == fields.end()) {
                Add(Breaks::Receivers, where, "the field is gone");
                continue;
            }
            if (found->second.holds != field.holds)
                Add(Breaks::Receivers, where, "holds " + found->second.holds + " instead of " + field.holds);
            if (found->second.privacy != field.privacy)
                Add(Breaks::Nothing, where,
                    "has the privacy class " + found->second.privacy + " instead of " + field.privacy);
            fields.erase(found);
        }
        for (const auto& [field, its] : fields)
            Add(Breaks::Nothing, name + " " + field, "a new field, of the privacy class " + its.privacy);
    }

    const Catalogue& _older;
    const Catalogue& _newer;
    std::vector<SchemaChange> _changes;
};

constexpr const char* WordFor(Breaks breaks) {
    return breaks == Breaks::Hosts ? "hosts" : breaks == Breaks::Receivers ? "receivers" : "nothing";
}

} // namespace

std::vector<SchemaChange> CompareSchemas(const Catalogue& older, const Catalogue& newer) {
    return Comparison(older, newer).All();
}

ExitCode ShowSchemaDiff(const Catalogue& older, const Catalogue& newer, bool asJson, const Output& output) {
    const auto changes = CompareSchemas(older, newer);
    Json json = Json::array();
    bool anyBreaks = false;
    for (const Breaks breaks : {Breaks::Hosts, Breaks::Receivers, Breaks::Nothing}) {
        bool isFirst = true;
        for (const SchemaChange& change : changes) {
            if (change.breaks != breaks)
                continue;
            anyBreaks |= breaks != Breaks::Nothing;
            json.push_back({{"breaks", WordFor(breaks)}, {"where", change.where}, {"what", change.what}});
            if (asJson)
                continue;
            if (std::exchange(isFirst, false))
                output.Line(output.Paint(Colour::Bold, std::string("Breaks ") + WordFor(breaks) + ":"));
            output.Line("  " + change.where + ": " + change.what);
        }
    }
    if (asJson)
        output.Line(json.dump(2));
    else if (changes.empty())
        output.Line("Nothing differs.");
    return anyBreaks ? FoundSomething : Clean;
}

} // namespace Zuvan::Lumeq::Tool
