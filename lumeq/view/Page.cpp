#include "lumeq/view/Page.h"

#include "lumeq/Resource.h"
#include "lumeq/view/Comparison.h"
#include "lumeq/view/Counts.h"
#include "lumeq/view/Markup.h"
#include "lumeq/view/Masking.h"
#include "lumeq/view/Outcome.h"
#include "lumeq/view/Sections.h"

#include <map>
#include <set>

namespace Zuvan::Lumeq::Tool {

namespace {

std::string Head(const std::string& title, std::string_view style, std::string_view script) {
    // Whatever a mistake lets through, the browser runs nothing else and loads nothing.
    const std::string policy = "default-src 'none'; script-src '" + PolicyHash(script) + "'; style-src '" +
                               PolicyHash(style) + "'; base-uri 'none'; form-action 'none'";
    return "<meta charset=\"utf-8\">\n<meta http-equiv=\"Content-Security-Policy\" content=\"" + policy +
           "\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n<meta name=\"referrer\" "
           "content=\"no-referrer\">\n" +
           Element("title", Html(title)) + "\n" + Element("style", style) + "\n";
}

using CountsByName = std::map<std::string, std::size_t>;

std::string OptionsHtml(const CountsByName& counts) {
    std::string options = "<option value=\"\">all</option>";
    for (const auto& [name, count] : counts)
        options +=
            Element("option", Attribute("value", name), Html(name) + " (" + std::to_string(count) + ")");
    return options;
}

/// Hidden until the script runs.
std::string FiltersHtml(const std::vector<Run>& runs, bool isComparison) {
    CountsByName exports, verdicts;
    for (const Run& run : runs)
        for (const ViewedCall& call : run.calls) {
            ++exports[call.name];
            ++verdicts[VerdictWord(call)];
        }
    return R"(<form class="filters" role="search" hidden>
<label>Text <input type="search" name="text" placeholder="calls, records, log lines" autocomplete="off" spellcheck="false"></label>
<label>Export <select name="export">)" +
           OptionsHtml(exports) + R"(</select></label>
<label>Verdict <select name="verdict">)" +
           OptionsHtml(verdicts) +
           (isComparison ? R"(<option value="different">different</option><option value="same">same</option>)"
                         : "") +
           R"(</select></label>
<output aria-live="polite"></output>
<button type="reset">Clear</button>
<p class="keys"><kbd>/</kbd> search <kbd>j</kbd><kbd>k</kbd> move <kbd>Enter</kbd> details <kbd>Esc</kbd> close</p>
</form>
)";
}

std::string MaskingNote(bool isUnmasked) {
    return Element("p", " class=\"masking\"",
                   isUnmasked ? "Nothing is masked: this page can contain tokens and identifiers."
                              : "Tokens, identifiers of devices and user names in paths are masked with "
                                "\u201cx\u201d; a number at "
                                "the end says which value is the same.");
}

std::string RunSection(const Catalogue& catalogue, const Run& run, const Place& place, bool isAlone) {
    // The page's header names and describes a run that is alone.
    const std::string heading = isAlone ? "" : Element("h2", Html(run.name)) + DescriptionHtml(run);
    return Element("section", Attribute("class", "run") + Attribute("id", place.prefix + "run"),
                   heading + SummaryHtml(catalogue, run, place) + CallsHtml(run, place) + RestHtml(run)) +
           "\n";
}

std::string TitleOf(const std::vector<Run>& runs, const PageOptions& options) {
    if (!options.title.empty())
        return options.title;
    if (options.isComparison)
        return runs[0].name + " and " + runs[1].name;
    return runs.size() == 1 ? runs[0].name : std::to_string(runs.size()) + " runs";
}

std::string Header(const std::vector<Run>& runs, const std::string& title, bool isUnmasked) {
    return Element("header", "<p class=\"brand\">Lumeq</p>" + Element("h1", Html(title)) +
                                 (runs.size() == 1 ? DescriptionHtml(runs[0]) : "") +
                                 MaskingNote(isUnmasked)) +
           "\n";
}

std::string Contents(const std::vector<Run>& runs) {
    std::string items;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const Counts counts = CountsOf(runs[i]);
        items += Element("li", Element("a", Attribute("href", "#" + PlaceOf(i, runs.size()).prefix + "run"),
                                       Html(runs[i].name)) +
                                   " " +
                                   Element("span", std::to_string(counts.calls) + " calls, " +
                                                       std::to_string(counts.refused) + " refused"));
    }
    return Element("nav", " aria-label=\"Runs\"", Element("ol", items)) + "\n";
}

std::string ComparisonHtml(const std::vector<Run>& runs) {
    const Run &a = runs[0], &b = runs[1];
    std::string html;
    for (const Run* run : {&a, &b})
        html += Element("section", " class=\"side\"",
                        Element("h2", (run == &a ? "A: " : "B: ") + Html(run->name)) + DescriptionHtml(*run));
    const auto compared = Compare(a, b);
    std::size_t different = 0;
    for (const ComparedCall& call : compared)
        different += !call.differences.empty();
    return Element("div", " class=\"sides\"", html) +
           Element("p", " class=\"remark\"",
                   std::to_string(compared.size() - different) + " calls are the same, " +
                       std::to_string(different) +
                       " differ. Times, durations and the random identifiers of tasks make no difference.") +
           ComparedCallsHtml(a, b, compared);
}

/// What the catalogue says about the operations that the runs use.
std::string WordsBlock(const Catalogue& catalogue, const std::vector<Run>& runs) {
    std::set<std::string> names;
    for (const Run& run : runs)
        for (const ViewedCall& call : run.calls)
            names.insert(call.name);
    Json words = Json::object();
    for (const std::string& name : names)
        if (const Json* const operation = catalogue.FindOperation(name))
            words[name] = TextOf(*operation, "sentence");
    return Element("script", " type=\"application/json\" id=\"words\"", DataBlockJson(words)) + "\n";
}

} // namespace

std::string RenderPage(const Catalogue& catalogue, std::vector<Run> runs, const PageOptions& options) {
    if (!options.isUnmasked)
        Masking(catalogue).Hide(runs);
    const std::string_view style = ProgramResource(L"PAGE_CSS"), script = ProgramResource(L"PAGE_JS");
    const std::string title = TitleOf(runs, options);
    std::string body = Header(runs, title, options.isUnmasked);
    if (runs.size() > 1 && !options.isComparison)
        body += Contents(runs);
    body += FiltersHtml(runs, options.isComparison) + "<main>\n";
    if (options.isComparison)
        body += ComparisonHtml(runs);
    else
        for (std::size_t i = 0; i < runs.size(); ++i)
            body += RunSection(catalogue, runs[i], PlaceOf(i, runs.size()), runs.size() == 1);
    body += "</main>\n";
    for (std::size_t i = 0; i < runs.size(); ++i)
        body += DataBlock(runs[i], PlaceOf(i, runs.size()));
    body += WordsBlock(catalogue, runs) + Element("script", script);
    return "<!DOCTYPE html>\n<html lang=\"en\">\n" + Element("head", Head("Lumeq: " + title, style, script)) +
           "\n" + Element("body", body) + "\n</html>\n";
}

} // namespace Zuvan::Lumeq::Tool
