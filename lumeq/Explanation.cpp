#include "lumeq/Explanation.h"

#include "lumeq/LibraryTables.h"
#include "lumeq/NearestText.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t WidestText = 72;
constexpr std::size_t BeforeCaret = 40;
constexpr char Indent[] = "    ";

/// So that it continues a sentence.
std::string WithSmallLetter(std::string words) {
    if (words.size() > 1 && words[0] >= 'A' && words[0] <= 'Z')
        words[0] = static_cast<char>(words[0] - 'A' + 'a');
    return words;
}

std::string ExamplesOf(const Json& pattern) {
    std::string examples;
    int left = 2;
    for (const Json& text : pattern.at("accepted"))
        if (const std::string example = text;
            example.find_first_not_of(' ') != example.npos && example.size() < 40 && left-- > 0)
            examples += (examples.empty() ? "" : " or ") + Quoted(example);
    return examples;
}

std::string WordsAbout(const Explanation& explanation, std::wstring_view text, const std::string& words) {
    if (!explanation.endsTooEarly)
        return words;
    return (text.empty() ? "expected: " : "the text ends too early; expected: ") + words;
}

} // namespace

Explanation Explain(const Common::Pattern& pattern, std::wstring_view text) {
    const Common::PatternRows& rows = pattern.Rows();
    std::size_t state = rows.start;
    for (std::size_t at = 0; at < text.size(); ++at) {
        state = rows.Next(state, rows.ClassOf(text[at]));
        if (state == Common::PatternRows::Dead)
            return {false, false, at};
    }
    return {rows.Accepts(state), !rows.Accepts(state), text.size()};
}

std::string AdviceFor(const Catalogue& catalogue, const RefusedText& refused) {
    const Common::Pattern& pattern = LibraryPattern(refused.pattern);
    const std::string words = WithSmallLetter(catalogue.WordsOf(refused.pattern));
    std::string advice = WordsAbout(Explain(pattern, refused.text), refused.text, words);
    if (const auto nearest = NearestText(pattern, refused.text))
        advice += "; nearest: " + Quoted(*nearest);
    else if (const std::string examples = ExamplesOf(catalogue.Patterns().at(refused.pattern));
             !examples.empty())
        advice += "; for example " + examples;
    return advice;
}

void ShowRefusedText(const Catalogue& catalogue, const RefusedText& refused, const Output& output) {
    const std::wstring_view text = refused.text;
    if (text.empty()) {
        output.Line(Indent + AdviceFor(catalogue, refused));
        return;
    }
    const std::size_t at = Explain(LibraryPattern(refused.pattern), text).at;
    const std::size_t begin = text.size() > WidestText && at > BeforeCaret ? at - BeforeCaret : 0;
    const std::size_t end = std::min(text.size(), begin + WidestText);
    const std::string before = begin > 0 ? "..." : "";
    output.Line(Indent + before + Shown(text.substr(begin, end - begin)) + (end < text.size() ? "..." : ""));
    const std::size_t columns = before.size() + ColumnsOf(text.substr(begin, at - begin));
    output.Line(Indent + std::string(columns, ' ') + output.Paint(Colour::Green, "^ ") +
                AdviceFor(catalogue, refused));
}

Json RefusedTextJson(const Catalogue& catalogue, const RefusedText& refused) {
    const Common::Pattern& pattern = LibraryPattern(refused.pattern);
    const auto nearest = NearestText(pattern, refused.text);
    return {{"text", SampleHost::ToUtf8(refused.text)},
            {"pattern", refused.pattern},
            {"at", Explain(pattern, refused.text).at},
            {"words", TextOf(catalogue.Patterns().at(refused.pattern), "words")},
            {"nearest", nearest ? Json(SampleHost::ToUtf8(*nearest)) : Json()}};
}

} // namespace Zuvan::Lumeq::Tool
