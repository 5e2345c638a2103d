#include "lumeq/view/Page.h"

#include "lumeq/Resource.h"
#include "lumeq/view/Comparison.h"
#include "lumeq/view/Counts.h"
#include "lumeq/view/Markup.h"
#include "lumeq/view/Masking.h"
#include "lumeq/view/Sections.h"

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

/// Hidden until the script runs.
std::string FiltersHtml() {
    return R"(<form class="filters" role="search" hidden>
<label>Text <input type="search" name="text" placeholder="in calls, records and log lines" autocomplete="off" spellcheck="false"></label>
<label>Export <select name="export"><option value="">all</option></select></label>
<label>Verdict <select name="verdict"><option value="">all</option></select></label>
<output aria-live="polite"></output>
<button type="reset">Clear</button>
<p class="keys"><kbd>/</kbd> search <kbd>j</kbd> <kbd>k</kbd> move <kbd>Enter</kbd> details <kbd>Esc</kbd> close</p>
</form>
)";
}

std::string RunSection(const Catalogue& catalogue, const Run& run, const Place& place) {
    return Element("section", Attribute("class", "run") + Attribute("id", place.prefix + "run"),
                   Element("h2", Html(run.name)) + DescriptionHtml(run) + SummaryHtml(catalogue, run, place) +
                       CallsHtml(run, place) + RestHtml(run)) +
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

std::string MaskingNote(bool isUnmasked) {
    return Element("p", " class=\"masking\"",
                   isUnmasked ? "Nothing is masked: this page can contain tokens and identifiers."
                              : "Tokens, identifiers of devices and user names in paths are masked with "
                                "\u201cx\u201d; a number at "
                                "the end says which value is the same.");
}

} // namespace

std::string RenderPage(const Catalogue& catalogue, std::vector<Run> runs, const PageOptions& options) {
    if (!options.isUnmasked)
        Masking(catalogue).Hide(runs);
    const std::string_view style = ProgramResource(L"PAGE_CSS"), script = ProgramResource(L"PAGE_JS");
    std::string body =
        Element("header", Element("h1", Html(options.title)) + MaskingNote(options.isUnmasked)) + "\n";
    if (runs.size() > 1 && !options.isComparison)
        body += Contents(runs);
    body += FiltersHtml() + "<main>\n";
    if (options.isComparison)
        body += ComparisonHtml(runs);
    else
        for (std::size_t i = 0; i < runs.size(); ++i)
            body += RunSection(catalogue, runs[i], PlaceOf(i, runs.size()));
    body += "</main>\n";
    for (std::size_t i = 0; i < runs.size(); ++i)
        body += DataBlock(runs[i], PlaceOf(i, runs.size()));
    body += WordsBlock(catalogue, runs) + Element("script", script);
    return "<!DOCTYPE html>\n<html lang=\"en\">\n" + Element("head", Head(options.title, style, script)) +
           "\n" + Element("body", body) + "\n</html>\n";
}

} // namespace Zuvan::Lumeq::Tool
