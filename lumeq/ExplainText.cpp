#include "lumeq/Explanation.h"
#include "lumeq/LibraryTables.h"
#include "lumeq/Lint.h"

#include <stdexcept>

namespace Zuvan::Lumeq::Tool {

namespace {

std::wstring TextFrom(const ExplainOptions& options) {
    if (!options.isSpelled)
        return SampleHost::ReadText(Json(options.text));
    try {
        return SampleHost::ReadText(Json::parse(options.text));
    } catch (const std::exception& problem) {
        throw std::runtime_error("the text is not spelled as in a session: " + std::string(problem.what()));
    }
}

void RequirePattern(const Catalogue& catalogue, const std::string& name) {
    if (catalogue.Patterns().contains(name))
        return;
    std::string names;
    for (const auto& [known, pattern] : catalogue.Patterns().items())
        names += (names.empty() ? "" : ", ") + known;
    throw std::runtime_error("no pattern is named " + Quoted(name) + "; there are " + names);
}

/// The pattern that refuses the text: the given one, or the stricter one of the event class behind it. Empty
/// if none does.
std::string RefusingPattern(const Catalogue& catalogue, const std::string& name, const std::wstring& text) {
    if (!LibraryPattern(name).Matches(text))
        return name;
    const std::string stricter = TextOf(catalogue.Patterns().at(name), "stricter");
    return stricter.empty() || LibraryPattern(stricter).Matches(text) ? "" : stricter;
}

} // namespace

ExitCode ExplainText(const Catalogue& catalogue, const ExplainOptions& options, const Output& output) {
    RequirePattern(catalogue, options.pattern);
    const std::wstring text = TextFrom(options);
    const std::string refusing = RefusingPattern(catalogue, options.pattern, text);
    const std::string layer = refusing.empty() ? "" : TextOf(catalogue.Patterns().at(refusing), "checkedBy");
    if (options.asJson) {
        Json json{{"pattern", options.pattern}, {"verdict", refusing.empty() ? "accepted" : "refused"}};
        if (!refusing.empty()) {
            json["refusedBy"] = layer;
            json["refusedText"] = RefusedTextJson(catalogue, {refusing, text});
        }
        output.Line(json.dump(2));
    } else if (refusing.empty()) {
        output.Line(options.pattern + ": " + output.Paint(Colour::Green, "accepted") + " (" +
                    catalogue.WordsOf(options.pattern) + ")");
    } else {
        output.Line(options.pattern + ": " + output.Paint(Colour::Red, "refused") + " by the " + layer +
                    (refusing == options.pattern ? "" : ", which asks for " + refusing));
        ShowRefusedText(catalogue, {refusing, text}, output);
    }
    return refusing.empty() ? Clean : FoundSomething;
}

} // namespace Zuvan::Lumeq::Tool
