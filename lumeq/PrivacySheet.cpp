#include "lumeq/RecordFields.h"
#include "lumeq/Schema.h"

#include <map>
#include <utility>

namespace Zuvan::Lumeq::Tool {

namespace {

/// The fields of all records, once each, with the operations that record them.
class FieldsByName {
public:
    void Add(const RecordField& field, const std::string& operation) {
        const auto [found, isNew] = _index.try_emplace({field.name, field.privacy}, _fields.size());
        if (isNew)
            _fields.push_back({field, {}});
        std::string& operations = _fields[found->second].second;
        operations += (operations.empty() ? "" : ", ") + operation;
        ++_uses[found->second];
    }

    const std::vector<std::pair<RecordField, std::string>>& Fields() const { return _fields; }
    std::size_t UsesOf(std::size_t field) const { return _uses.at(field); }

private:
    std::map<std::pair<std::string, std::string>, std::size_t> _index;
    std::vector<std::pair<RecordField, std::string>> _fields;
    std::map<std::size_t, std::size_t> _uses;
};

std::string Answers(const Catalogue& catalogue, const std::string& privacy) {
    const Json& its = catalogue.PrivacyClasses().at(privacy);
    return privacy + " | " + TextOf(its, "person") + " | " + TextOf(its, "device") + " | " +
           TextOf(its, "file") + " |\n";
}

constexpr char Answered[] = " | privacy class | person | device | file |\n";

std::string ClassTable(const Catalogue& catalogue) {
    std::string table = "| class | what it is | person | device | file |\n| --- | --- | --- | --- | --- |\n";
    for (const auto& [name, its] : catalogue.PrivacyClasses().items())
        table += "| " + name + " | " + TextOf(its, "words") + " | " + TextOf(its, "person") + " | " +
                 TextOf(its, "device") + " | " + TextOf(its, "file") + " |\n";
    return table;
}

std::string RecordTable(const Catalogue& catalogue) {
    FieldsByName fields;
    std::size_t recording = 0;
    for (const Json& operation : catalogue.Operations()) {
        const auto its = FieldsOf(catalogue, operation);
        recording += ValueOf(operation.value("record", Json::object()), "kind", std::string()) == "event";
        for (const RecordField& field : its)
            fields.Add(field, TextOf(operation, "name"));
    }
    std::string table =
        std::string("| field | recorded by") + Answered + "| --- | --- | --- | --- | --- | --- |\n";
    for (std::size_t i = 0; i < fields.Fields().size(); ++i) {
        const auto& [field, operations] = fields.Fields()[i];
        table += "| `" + field.name + "` | " + (fields.UsesOf(i) == recording ? "every event" : operations) +
                 " | " + Answers(catalogue, field.privacy);
    }
    return table;
}

std::string MessageTable(const Catalogue& catalogue) {
    std::string table = std::string("| field | holds") + Answered + "| --- | --- | --- | --- | --- | --- |\n";
    for (const Json& field : catalogue.Whole().at("message").at("fields"))
        table += "| `" + TextOf(field, "field") + "` | " + HeldBy(field) + " | " +
                 Answers(catalogue, TextOf(field, "privacy"));
    return table;
}

} // namespace

std::string PrivacySheet(const Catalogue& catalogue) {
    std::string page = "# Privacy sheet\n\n"
                       "What Lumeq records and sends, field by field, and whether a field identifies a "
                       "person, a device or a file. "
                       "Written by\n`lumeq schema export --format md --page privacy` from "
                       "`schema/lumeq.json`; do not edit it.\n\n"
                       "Lumeq checks the form of a text, not its meaning. A field with \"no\" identifies "
                       "nobody as long as the host "
                       "passes names\nfrom its own code. `lumeq lint` warns of values that look personal.\n\n"
                       "## Privacy classes\n\n" +
                       ClassTable(catalogue) +
                       "\n## Records of events, and data handed to the companion library\n\n"
                       "`*` stands for the host's own fields.\n\n" +
                       RecordTable(catalogue) + "\n## The message about the machine\n\n" +
                       TextOf(catalogue.Whole().at("message"), "sentence") + "\n\n" + MessageTable(catalogue);
    page.pop_back();
    return page;
}

} // namespace Zuvan::Lumeq::Tool
