#include "lumeq/view/View.h"

#include "lumeq/view/Counts.h"
#include "lumeq/view/Masking.h"
#include "lumeq/view/Outcome.h"
#include "lumeq/view/Page.h"
#include "lumeq/view/ReadRun.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace Zuvan::Lumeq::Tool {

namespace {

std::string CountsText(const Run& run) {
    const Counts counts = CountsOf(run);
    std::string text = std::to_string(counts.calls) + (counts.calls == 1 ? " call, " : " calls, ") +
                       std::to_string(counts.accepted) + " accepted, " + std::to_string(counts.refused) +
                       " refused";
    if (counts.failed > 0)
        text += ", " + std::to_string(counts.failed) + " failed or not made";
    return text;
}

void WritePage(const std::string& path, const std::string& page) {
    std::ofstream file(std::filesystem::path(SampleHost::ReadText(Json(path))), std::ios::binary);
    file << page;
    file.close();
    if (!file)
        throw std::runtime_error(path + " cannot be written");
}

Colour ColourOf(const ViewedCall& call) {
    return call.verdict != Verdict::Accepted ? Colour::Red : IsRecorded(call) ? Colour::Green : Colour::Plain;
}

void PrintRun(const Run& run, const Output& output) {
    constexpr std::size_t WidestName = 25, WidestVerdict = 8;
    const auto padded = [](std::string text, std::size_t width) {
        text.resize(std::max(text.size(), width), ' ');
        return text;
    };
    for (const ViewedCall& call : run.calls)
        output.Line("  " + padded(call.name, WidestName) + " " +
                    output.Paint(ColourOf(call), padded(VerdictWord(call), WidestVerdict)) +
                    (call.outcome.empty() ? "" : " " + Shown(SampleHost::ReadText(Json(call.outcome)))));
    output.Line(run.name + ": " + CountsText(run));
}

ExitCode Print(const Catalogue& catalogue, std::vector<Run> runs, bool isUnmasked, const Output& output) {
    if (!isUnmasked)
        Masking(catalogue).Hide(runs);
    for (const Run& run : runs)
        PrintRun(run, output);
    return Clean;
}

} // namespace

ExitCode View(const Catalogue& catalogue, const ViewOptions& options, const Output& output) {
    if (options.runs.size() > 2 && !options.isEach && !options.isText)
        throw std::runtime_error("two runs are compared; --each shows more, one after the other");
    std::vector<Run> runs;
    for (const std::string& path : options.runs)
        runs.push_back(ReadRun(catalogue, path));
    if (options.isText)
        return Print(catalogue, std::move(runs), options.isUnmasked, output);
    const bool isComparison = runs.size() == 2 && !options.isEach;
    const std::string page = RenderPage(catalogue, runs, {"", options.isUnmasked, isComparison});
    if (options.page == "-") {
        output.Line(page);
        return Clean;
    }
    WritePage(options.page, page);
    for (const Run& run : runs)
        output.Line(run.name + ": " + CountsText(run));
    output.Line("The page is " + options.page + " (" + std::to_string((page.size() + 1023) / 1024) + " KB)");
    return Clean;
}

} // namespace Zuvan::Lumeq::Tool
