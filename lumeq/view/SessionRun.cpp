#include "lumeq/SessionCheck.h"
#include "lumeq/view/Arguments.h"
#include "lumeq/view/Correlation.h"
#include "lumeq/view/Messages.h"
#include "lumeq/view/Outcome.h"
#include "lumeq/view/ReadRun.h"
#include "lumeq/view/Reasons.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t MostCalls = 50'000;

bool IsEscapeBetween(const std::string& text, std::size_t at, unsigned least, unsigned most) {
    if (text.compare(at, 2, "\\u") != 0 || at + 6 > text.size())
        return false;
    const unsigned unit = static_cast<unsigned>(std::strtoul(text.substr(at + 2, 4).c_str(), nullptr, 16));
    return unit >= least && unit <= most;
}

/// The companion library can get unpaired surrogates, and its transcript escapes them. JSON has no text for
/// them, so they become the escapes that the page shows.
std::string WithoutUnpairedSurrogates(const std::string& json) {
    std::string mended;
    for (std::size_t at = 0; at < json.size();) {
        const bool isHigh = IsEscapeBetween(json, at, 0xD800, 0xDBFF);
        const bool isPair = isHigh && IsEscapeBetween(json, at + 6, 0xDC00, 0xDFFF);
        if (!isPair && (isHigh || IsEscapeBetween(json, at, 0xDC00, 0xDFFF)))
            mended += '\\';
        const std::size_t size = isPair ? 12 : json[at] == '\\' ? 2 : 1;
        mended += json.substr(at, size);
        at += size;
    }
    return mended;
}

/// Lines that are no JSON object are left out: a host that is killed leaves half a line.
std::vector<Json> ReadJsonLines(const std::string& text) {
    std::vector<Json> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (Json json = Json::parse(WithoutUnpairedSurrogates(line), nullptr, false); json.is_object())
            lines.push_back(std::move(json));
    return lines;
}

SoughtCall Seek(const Catalogue& catalogue, const Json& json, const CheckedCall& checked) {
    const Json& operation = *catalogue.FindOperation(checked.call);
    const bool isRefused = !checked.refusals.empty();
    SoughtCall sought;
    ViewedCall& call = sought.call;
    call.name = checked.call;
    call.line = checked.line;
    call.arguments = ArgumentsOfSession(catalogue, operation, json);
    call.verdict = !checked.isMade ? Verdict::NotMade : isRefused ? Verdict::Refused : Verdict::Accepted;
    for (const Finding& refusal : checked.refusals)
        call.reasons.push_back(ReasonOf(catalogue, refusal));
    call.task = TextOf(operation, "task");
    for (const char* member : {"handle", "taskHandle"})
        if (json.contains(member))
            call.handle = TextOf(json, member);
    if (checked.isMade) {
        sought.logKey = KeyOfSession(operation, json);
        sought.operationKeys = OperationKeysOf(operation, json, isRefused);
    }
    return sought;
}

/// Puts each finding that is no refusal at the first call of its line.
void AddRemarks(const SessionCheck& check, std::vector<SoughtCall>& calls, Run& run) {
    std::map<std::pair<int, std::string>, ViewedCall*> places;
    for (SoughtCall& sought : calls)
        places.try_emplace({sought.call.line, sought.call.name}, &sought.call);
    for (const PlacedFinding& placed : check.FindingsByLine()) {
        if (!placed.finding.refusedBy.empty() || placed.finding.rule == "not-loaded")
            continue;
        const auto place = places.find({placed.line, placed.call});
        if (place != places.end())
            place->second->remarks.push_back(placed.finding.message);
        else
            run.remarks.push_back("Line " + std::to_string(placed.line) +
                                  " of the session: " + placed.finding.message);
    }
}

/// The linter knows the session; the log knows what happened.
void CompareWithLog(const Catalogue& catalogue, ViewedCall& call) {
    if (call.log.empty() || call.verdict == Verdict::NotMade)
        return;
    const auto logged = ReasonsOfLog(catalogue, *catalogue.FindOperation(call.name), call.log);
    if (call.verdict == Verdict::Refused && logged.empty())
        call.remarks.push_back("the linter expects a refusal that the log does not show");
    if (call.verdict == Verdict::Accepted && !logged.empty()) {
        call.verdict = Verdict::Refused;
        call.reasons = logged;
        call.remarks.push_back("the linter finds nothing wrong with the call, so something else failed");
    }
}

bool HasThreads(const std::string& session) {
    return session.find("\"threads\"") != session.npos || session.find("\"background\"") != session.npos;
}

/// Threads make their calls at the same time; the log shows in which order.
void SortByTime(std::vector<SoughtCall>& calls) {
    std::int64_t last = 0;
    std::vector<std::pair<std::int64_t, SoughtCall>> timed;
    for (SoughtCall& sought : calls) {
        last = sought.call.time.value_or(last);
        timed.emplace_back(last, std::move(sought));
    }
    std::stable_sort(timed.begin(), timed.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    for (std::size_t i = 0; i < calls.size(); ++i)
        calls[i] = std::move(timed[i].second);
}

void AddTimesOfRecords(ViewedCall& call) {
    for (const Json& operation : call.handedOver)
        if (!call.time && operation.contains("timestamp") && operation.at("timestamp").is_number_integer())
            call.time = operation.at("timestamp").get<std::int64_t>();
}

} // namespace

Run RunOfSession(const Catalogue& catalogue, const RunFiles& files, const std::string& road) {
    Run run;
    run.road = road;
    std::vector<SoughtCall> calls;
    SessionCheck check(catalogue, MostCalls, [&](const Json& json, const CheckedCall& checked) {
        if (calls.size() < MostCalls)
            calls.push_back(Seek(catalogue, json, checked));
    });
    std::istringstream session(files.session);
    std::string line;
    for (int number = 1; std::getline(session, line); ++number)
        if (line.find_first_not_of(" \t\r") != line.npos)
            check.Line(number, line);
    check.End();
    if (check.Calls().size() > calls.size())
        run.remarks.push_back("Of " + std::to_string(check.Calls().size()) +
                              " calls the page shows the first " + std::to_string(calls.size()) + ".");
    std::vector<LogLine> lines = ReadLog(files.log);
    run.messages = MessagesOfLog(lines);
    AttachLog(catalogue, SplitIntoCalls(std::move(lines)), calls, run);
    AttachOperations(ReadJsonLines(files.operations), calls, run);
    if (!files.answers.empty())
        AttachAnswers(ReadJsonLines(files.answers), calls, run);
    AddRemarks(check, calls, run);
    for (SoughtCall& sought : calls) {
        CompareWithLog(catalogue, sought.call);
        AddTimesOfRecords(sought.call);
        if (sought.call.answer.is_object() && sought.call.answer.contains("error") &&
            sought.call.verdict != Verdict::NotMade)
            sought.call.verdict = Verdict::Failed;
    }
    if (HasThreads(files.session))
        SortByTime(calls);
    for (SoughtCall& sought : calls)
        run.calls.push_back(std::move(sought.call));
    Conclude(catalogue, run);
    return run;
}

} // namespace Zuvan::Lumeq::Tool
