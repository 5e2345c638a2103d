#include "lumeq/SessionCheck.h"

#include "lumeq/CallCheck.h"
#include "samples/host/Steps.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

std::string OnLine(int line) { return "line " + std::to_string(line); }

Finding Warning(const char* rule, const std::string& message) {
    return {Severity::Warning, rule, "", message, {}};
}

/// Without the library's own number in brackets.
std::string WithoutTag(const std::string& problem) {
    const std::size_t end = problem.find("] ");
    return problem.starts_with('[') && end != problem.npos ? problem.substr(end + 2) : problem;
}

bool IsStarted(const std::string& name) { return name == "StartupEx"; }
bool IsEvent(const Json& operation) {
    return operation.contains("record") && !IsStarted(TextOf(operation, "name"));
}

} // namespace

void SessionCheck::Line(int number, const std::string& line) {
    if (_hasEnded)
        return;
    _line = number;
    try {
        const Json step = Json::parse(line);
        _hasSteps |= step.is_object();
        // The sample host decides what is well formed; it stops at a line that is not.
        static_cast<void>(SampleHost::ReadStep(step));
        Play(step);
    } catch (const Json::exception& problem) {
        Add(number, "", {Severity::Error, "malformed", "", "no JSON: " + WithoutTag(problem.what()), {}});
    } catch (const SampleHost::BadLine& problem) {
        Add(number, "", {Severity::Error, "malformed", "", problem.what(), {}});
    }
}

void SessionCheck::End() {
    if (!_hasEnded)
        EndRun();
}

std::vector<PlacedFinding> SessionCheck::FindingsByLine() const {
    std::vector<PlacedFinding> sorted = _findings;
    std::stable_sort(sorted.begin(), sorted.end(), [](const PlacedFinding& one, const PlacedFinding& other) {
        return one.line < other.line;
    });
    return sorted;
}

void SessionCheck::PlayAll(const Json& steps) {
    for (const Json& step : steps)
        Play(step);
}

void SessionCheck::Play(const Json& step) {
    if (step.contains("call"))
        Call(step);
    else if (step.contains("times"))
        for (int round = 0; round < std::min(ValueOf(step, "times", 0), _mostRounds); ++round)
            PlayAll(step.at("calls"));
    else if (step.contains("threads"))
        for (const Json& steps : step.at("threads"))
            PlayAll(steps);
    else if (step.contains("background"))
        PlayAll(step.at("background"));
    else if (step.contains("unload") || step.contains("end")) {
        EndRun();
        _isLoaded = false;
        _hasEnded = step.contains("end");
    } else if (step.contains("load"))
        _isLoaded = true;
}

void SessionCheck::Call(const Json& call) {
    const std::string name = TextOf(call, "call");
    const Json& operation = *_catalogue.FindOperation(name);
    if (!_isLoaded) {
        _calls.push_back({_line, name, false, {}, 0});
        Add(_line, name,
            {Severity::Error, "not-loaded", "", "the library is not loaded, so the call is not made", {}});
    } else {
        CheckMadeCall(operation, call);
    }
    if (_listener)
        _listener(call, _calls.back());
}

void SessionCheck::CheckMadeCall(const Json& operation, const Json& call) {
    const std::string name = TextOf(call, "call");
    const Tool::Findings refusals = Check(operation, call);
    _calls.push_back({_line, name, true, refusals, 0});
    for (const Finding& finding : refusals)
        Add(_line, name, finding);
    const bool isRefused = !refusals.empty();
    if (!isRefused)
        for (const Finding& finding : LossesOf(operation, call)) {
            Add(_line, name, finding);
            _calls.back().skippedPrinters += finding.rule == "printer-skipped";
        }
    for (const Finding& finding : PersonalValuesOf(operation, call))
        Add(_line, name, finding);
    CheckOrder(operation);
    if (name.ends_with("Initiated"))
        Begin(operation, call, isRefused);
    else if (name.ends_with("Completed"))
        Complete(call, isRefused);
}

Findings SessionCheck::Check(const Json& operation, const Json& call) {
    Tool::Findings refusals = RefusalsOf(_catalogue, operation, call);
    if (call.contains("taskHandle")) {
        const auto variable = _variables.find(TextOf(call, "taskHandle"));
        if (variable == _variables.end() || variable->second.state != Variable::State::Open)
            refusals.insert(refusals.begin(), RefusedHandle(TextOf(call, "taskHandle")));
        else if (variable->second.task != TextOf(operation, "task"))
            Add(_line, TextOf(call, "call"),
                Warning("task-of-another-kind", "completes the " + variable->second.task + " task of " +
                                                    OnLine(variable->second.begun) +
                                                    " with the details of another kind"));
    }
    return refusals;
}

Finding SessionCheck::RefusedHandle(const std::string& variable) const {
    const auto found = _variables.find(variable);
    Finding finding{Severity::Error, "task-not-begun", "taskHandle", "", "export"};
    const std::string quoted = Quoted(variable);
    if (found == _variables.end())
        finding.message = "no call has begun a task in " + quoted;
    else if (found->second.state == Variable::State::Refused)
        finding.message = OnLine(found->second.line) + " was refused, so there is no task in " + quoted;
    else {
        finding.rule = "task-completed-twice";
        finding.message = "the task in " + quoted + " was completed on " + OnLine(found->second.line);
    }
    finding.message += "; the null handle is refused by the export";
    return finding;
}

void SessionCheck::CheckOrder(const Json& operation) {
    const std::string name = TextOf(operation, "name");
    if (IsStarted(name)) {
        _startLine = _line;
        _shutdownLine = 0;
        _reportedOrder = false;
    } else if (name == "ShutdownEx") {
        _shutdownLine = _line;
        _reportedOrder = false;
    } else if (IsEvent(operation) && !_reportedOrder && (_startLine == 0 || _shutdownLine != 0)) {
        // Once for all events that follow in the same state.
        _reportedOrder = true;
        Add(_line, name,
            _shutdownLine != 0
                ? Warning("after-shutdown", "comes after the ShutdownEx of " + OnLine(_shutdownLine))
                : Warning("before-start", "comes before StartupEx"));
    }
}

void SessionCheck::Begin(const Json& operation, const Json& call, bool isRefused) {
    const std::string name = TextOf(call, "handle");
    const auto before = _variables.find(name);
    if (before != _variables.end() && before->second.state == Variable::State::Open)
        Add(before->second.begun, before->second.task + "Initiated",
            Warning("task-never-completed", "the task in " + Quoted(name) + " is never completed, because " +
                                                OnLine(_line) + " overwrites its handle"));
    _variables[name] = {isRefused ? Variable::State::Refused : Variable::State::Open,
                        TextOf(operation, "task"), _line, _line};
}

void SessionCheck::Complete(const Json& call, bool isRefused) {
    const auto variable = _variables.find(TextOf(call, "taskHandle"));
    if (isRefused || variable == _variables.end())
        return;
    variable->second.state = Variable::State::Completed;
    variable->second.line = _line;
}

void SessionCheck::EndRun() {
    for (const auto& [name, variable] : _variables)
        if (variable.state == Variable::State::Open)
            Add(variable.begun, variable.task + "Initiated",
                Warning("task-never-completed", "the task in " + Quoted(name) + " is never completed"));
    _variables.clear();
    if (_startLine != 0 && _shutdownLine == 0)
        Add(_startLine, "StartupEx", Warning("no-shutdown", "is followed by no ShutdownEx"));
    _startLine = 0;
    _shutdownLine = 0;
    _reportedOrder = false;
}

void SessionCheck::Add(int line, const std::string& call, const Finding& finding) {
    // Rounds of a repetition find the same again.
    if (_seen
            .insert(std::to_string(line) + ' ' + finding.rule + ' ' + finding.argument + ' ' +
                    finding.message)
            .second)
        _findings.push_back({line, call, finding});
}

} // namespace Zuvan::Lumeq::Tool
