#include "lumeq/Catalogue.h"

#include "lumeq/Resource.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace Zuvan::Lumeq::Tool {

namespace {

Json ParseCatalogue(std::string_view text, const std::string& source) {
    try {
        Json json = Json::parse(text);
        for (const char* member :
             {"version", "privacyClasses", "patterns", "enumerations", "event", "operations"})
            if (!json.is_object() || !json.contains(member))
                throw CatalogueError(source + " is no catalogue: \"" + member + "\" is missing");
        return json;
    } catch (const Json::exception& problem) {
        throw CatalogueError(source + " cannot be read: " + problem.what());
    }
}

} // namespace

Catalogue Catalogue::ReadFrom(const std::string& path) {
    std::ifstream file(std::filesystem::path(SampleHost::ReadText(Json(path))), std::ios::binary);
    if (!file)
        throw CatalogueError(path + " cannot be opened");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    return Catalogue(ParseCatalogue(text, path));
}

const Catalogue& Catalogue::OfThisProgram() {
    static const Catalogue catalogue(
        ParseCatalogue(ProgramResource(L"CATALOGUE"), "the program's catalogue"));
    return catalogue;
}

const Json* Catalogue::FindOperation(const std::string& name) const {
    for (const Json& operation : Operations())
        if (operation.at("name") == name)
            return &operation;
    return nullptr;
}

std::string Catalogue::WordsOf(const std::string& pattern) const {
    std::string words = Patterns().at(pattern).at("words");
    if (words.ends_with('.'))
        words.pop_back();
    return words;
}

std::string TextOf(const Json& object, const char* member) { return ValueOf(object, member, std::string()); }

std::string SignatureOf(const Json& operation) {
    std::string arguments;
    for (const Json& argument : operation.at("arguments"))
        arguments += (arguments.empty() ? "" : ", ") + TextOf(argument, "name");
    return TextOf(operation, "name") + "(" + arguments + ")";
}

std::vector<std::string> UsersOf(const Catalogue& catalogue, const std::string& pattern) {
    std::vector<std::string> users;
    for (const Json& operation : catalogue.Operations()) {
        for (const Json& argument : operation.at("arguments")) {
            const std::string its = TextOf(argument, "pattern");
            const bool isStricter =
                !its.empty() && TextOf(catalogue.Patterns().at(its), "stricter") == pattern;
            if (its == pattern || isStricter)
                users.push_back(TextOf(operation, "name") + " " + TextOf(argument, "name"));
        }
        const auto composed = operation.find("eventClassCheck");
        if (composed != operation.end() && composed->at("pattern") == pattern)
            users.push_back(TextOf(operation, "name"));
    }
    return users;
}

Json ExampleCall(const Json& operation) {
    Json call{{"call", operation.at("name")}};
    if (operation.contains("task")) {
        const bool begins = operation.contains("returns");
        call[begins ? "handle" : "taskHandle"] = "task";
    }
    call.update(operation.at("example"));
    return call;
}

} // namespace Zuvan::Lumeq::Tool
