#include "lumeq/Lint.h"

#include "lumeq/SessionCheck.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr const char* Words[] = {"error", "warning", "note"};
constexpr Colour Colours[] = {Colour::Red, Colour::Yellow, Colour::Blue};

struct Counts {
    std::size_t ofSeverity[3] = {};

    void Add(Severity severity) { ++ofSeverity[static_cast<int>(severity)]; }
    void Add(const Counts& other) {
        for (int i = 0; i < 3; ++i)
            ofSeverity[i] += other.ofSeverity[i];
    }
};

SessionCheck CheckFile(const Catalogue& catalogue, const std::string& path) {
    std::ifstream file(std::filesystem::path(SampleHost::ReadText(Json(path))), std::ios::binary);
    if (!file)
        throw std::runtime_error(path + " cannot be read");
    SessionCheck check(catalogue);
    std::string line;
    bool isEmpty = true;
    for (int number = 1; std::getline(file, line); ++number)
        if (line.find_first_not_of(" \t\r") != line.npos) {
            check.Line(number, line);
            isEmpty = false;
        }
    check.End();
    if (!isEmpty && !check.HasSteps())
        throw std::runtime_error(path + " is no session: none of its lines is a JSON object");
    return check;
}

std::vector<PlacedFinding> ShownFindings(const SessionCheck& check, const LintOptions& options) {
    std::vector<PlacedFinding> findings = check.FindingsByLine();
    if (options.hidesNotes)
        std::erase_if(findings,
                      [](const PlacedFinding& its) { return its.finding.severity == Severity::Note; });
    return findings;
}

Counts CountsOf(const std::vector<PlacedFinding>& findings) {
    Counts counts;
    for (const PlacedFinding& placed : findings)
        counts.Add(placed.finding.severity);
    return counts;
}

std::string Number(std::size_t count, const std::string& word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

std::size_t RefusedCalls(const SessionCheck& check) {
    return static_cast<std::size_t>(
        std::count_if(check.Calls().begin(), check.Calls().end(),
                      [](const CheckedCall& call) { return !call.isMade || !call.refusals.empty(); }));
}

void ShowFinding(const Catalogue& catalogue, const std::string& path, const PlacedFinding& placed,
                 const Output& output) {
    const auto severity = static_cast<std::size_t>(placed.finding.severity);
    const std::string call = placed.call.empty() ? "" : placed.call + ": ";
    output.Line(output.Paint(Colour::Bold, path + ":" + std::to_string(placed.line) + ": ") +
                output.Paint(Colours[severity], Words[severity]) + ": " + call + placed.finding.message);
    if (placed.finding.text)
        ShowRefusedText(catalogue, *placed.finding.text, output);
}

void ShowFile(const Catalogue& catalogue, const std::string& path, const SessionCheck& check,
              const std::vector<PlacedFinding>& findings, const Output& output) {
    for (const PlacedFinding& placed : findings)
        ShowFinding(catalogue, path, placed, output);
    const std::size_t refused = RefusedCalls(check);
    const Counts counts = CountsOf(findings);
    output.Line(path + ": " + Number(check.Calls().size(), "call") + ", " +
                std::to_string(check.Calls().size() - refused) + " accepted, " + std::to_string(refused) +
                " refused; " + Number(counts.ofSeverity[1], "warning") + ", " +
                Number(counts.ofSeverity[2], "note"));
}

Json FindingJson(const Catalogue& catalogue, const PlacedFinding& placed) {
    const Finding& finding = placed.finding;
    Json json{{"line", placed.line},          {"severity", Words[static_cast<int>(finding.severity)]},
              {"rule", finding.rule},         {"call", placed.call},
              {"argument", finding.argument}, {"message", finding.message}};
    if (!finding.refusedBy.empty())
        json["refusedBy"] = finding.refusedBy;
    if (finding.text)
        json["refusedText"] = RefusedTextJson(catalogue, *finding.text);
    return json;
}

Json CallJson(const CheckedCall& call) {
    Json refusals = Json::array();
    for (const Finding& refusal : call.refusals)
        refusals.push_back({{"refusedBy", refusal.refusedBy}, {"argument", refusal.argument}});
    Json json{{"line", call.line},
              {"call", call.call},
              {"verdict", !call.isMade            ? "not made"
                          : call.refusals.empty() ? "accepted"
                                                  : "refused"},
              {"refusals", refusals}};
    if (call.skippedPrinters > 0)
        json["skippedPrinters"] = call.skippedPrinters;
    return json;
}

Json VerdictsJson(const SessionCheck& check) {
    Json verdicts = Json::array();
    for (const CheckedCall& call : check.Calls())
        verdicts.push_back(CallJson(call));
    return verdicts;
}

Json FileJson(const Catalogue& catalogue, const std::string& path, const SessionCheck& check,
              const std::vector<PlacedFinding>& findings) {
    Json json{{"file", path}, {"findings", Json::array()}, {"calls", VerdictsJson(check)}};
    for (const PlacedFinding& placed : findings)
        json["findings"].push_back(FindingJson(catalogue, placed));
    return json;
}

} // namespace

ExitCode Lint(const Catalogue& catalogue, const LintOptions& options, const Output& output) {
    Counts all;
    Json json = Json::array();
    for (const std::string& path : options.files) {
        const SessionCheck check = CheckFile(catalogue, path);
        const auto findings = ShownFindings(check, options);
        all.Add(CountsOf(findings));
        if (options.verdictsOnly)
            json.push_back({{"file", path}, {"calls", VerdictsJson(check)}});
        else if (options.asJson)
            json.push_back(FileJson(catalogue, path, check, findings));
        else
            ShowFile(catalogue, path, check, findings, output);
    }
    if (options.asJson || options.verdictsOnly)
        output.Line(json.dump(1));
    const bool anyCounts = all.ofSeverity[0] > 0 || (options.isStrict && all.ofSeverity[1] > 0);
    return anyCounts ? FoundSomething : Clean;
}

} // namespace Zuvan::Lumeq::Tool
