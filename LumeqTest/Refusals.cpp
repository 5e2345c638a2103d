#include "LumeqTest/Refusals.h"

#include "LumeqTest/Recording.h"
#include "lumeq/CallCheck.h"

#include <algorithm>

namespace Zuvan::Lumeq::Double {

namespace {

using SampleHost::Json;
using Tool::Finding;
using Tool::Findings;
using Tool::Severity;

bool IsHandleRefused(const std::vector<std::wstring>& reports) {
    return std::any_of(reports.begin(), reports.end(), [](const std::wstring& report) {
        return report.find(L"null taskHandle arg") != report.npos;
    });
}

/// A number that is reported, and replaced.
Findings ReplacedNumbers(const Json& operation, const Json& call) {
    Findings findings = Tool::LossesOf(operation, call);
    std::erase_if(findings, [](const Finding& finding) { return finding.rule != "number-replaced"; });
    for (Finding& finding : findings)
        finding.refusedBy = "export";
    return findings;
}

/// What the linter says of the call. The library has refused it, so it says something, but of a failure that
/// no argument has caused.
Findings WordsFor(const Json& call, const std::vector<std::wstring>& reports) {
    const Tool::Catalogue& catalogue = Tool::Catalogue::OfThisProgram();
    const Json& operation = *catalogue.FindOperation(call.at("call"));
    Findings findings = Tool::RefusalsOf(catalogue, operation, call);
    if (IsHandleRefused(reports))
        findings.insert(findings.begin(),
                        {Severity::Error, "task-not-begun", "taskHandle",
                         "there is no task; the null handle is refused by the export", "export"});
    if (findings.empty())
        findings = ReplacedNumbers(operation, call);
    if (findings.empty())
        for (const std::wstring& report : reports)
            findings.push_back({Severity::Error, "failed", "", SampleHost::ToUtf8(report), ""});
    return findings;
}

std::string Text(const Json& call, const Finding& finding) {
    const auto value = call.find(finding.argument);
    const Json json{
        {"export", call.at("call")},
        {"argument", finding.argument},
        {"value", value == call.end() ? Json() : *value},
        {"refusedBy", finding.refusedBy},
        {"message", finding.message},
        {"advice", finding.text ? Tool::AdviceFor(Tool::Catalogue::OfThisProgram(), *finding.text) : ""},
        {"call", call}};
    return json.dump();
}

} // namespace

void RecordRefusals(const Json& call, const std::vector<std::wstring>& reports) noexcept {
    Texts texts;
    for (const Finding& finding : WordsFor(call, reports))
        texts.push_back(Text(call, finding));
    const LockedRecording recording;
    std::move(texts.begin(), texts.end(), std::back_inserter(recording->refusals));
}

} // namespace Zuvan::Lumeq::Double
