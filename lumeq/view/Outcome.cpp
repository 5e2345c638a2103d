#include "lumeq/view/Outcome.h"

#include "lumeq/Output.h"
#include "lumeq/view/Reasons.h"

#include <algorithm>
#include <deque>
#include <map>

namespace Zuvan::Lumeq::Tool {

namespace {

bool HandsOver(const Json& operation, const char* name) { return TextOf(operation, "operation") == name; }

std::size_t CountHandedOver(const ViewedCall& call, const char* name) {
    return static_cast<std::size_t>(
        std::count_if(call.handedOver.begin(), call.handedOver.end(),
                      [&](const Json& operation) { return HandsOver(operation, name); }));
}

/// "clicked button /Home#ok", or "completed task_sw_install: success, 41 ms".
std::string NameOfEvent(const Json& operation) {
    const std::string action = TextUnder(operation, "/record/app_event_action");
    const std::string object = TextUnder(operation, "/record/app_event_object");
    const std::string label = TextUnder(operation, "/record/app_event_object_label");
    if (object != "task")
        return action + " " + object + " " + label;
    const std::string result = TextUnder(operation, "/record/app_event_details/task_result");
    const std::string duration = TextUnder(operation, "/record/app_event_details/task_duration");
    return action + " " + label + (result.empty() ? "" : ": " + result + ", " + duration + " ms");
}

std::string AnswerText(const Json& answer) {
    if (!answer.is_object() || !answer.contains("returns"))
        return {};
    const Json& value = answer.at("returns");
    const bool isStructured = value.is_object() && value.contains("text");
    return "returns " +
           (isStructured ? value.at("text") : value).dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// From the line "...returns textValue: "wifi_direct"".
std::string LoggedAnswer(const ViewedCall& call) {
    for (const LogLine& line : call.log)
        if (line.message.starts_with("...returns"))
            return line.message.substr(3);
    return {};
}

std::string NameOfOperation(const Json& operation) {
    std::string name = TextOf(operation, "operation");
    return name.ends_with("Internal") ? name.substr(0, name.size() - 8) : name;
}

std::string OfCompanion(const ViewedCall& call) {
    if (CountHandedOver(call, "PostEventInternal") > 0)
        return NameOfEvent(call.handedOver.back());
    if (const std::size_t printers = CountHandedOver(call, "PostDataInternal"); printers > 0)
        return std::to_string(printers) + (printers == 1 ? " printer" : " printers");
    std::string names;
    for (const Json& operation : call.handedOver)
        names += (names.empty() ? "" : ", ") + NameOfOperation(operation);
    return names.empty() ? "" : "companion library: " + names;
}

bool SendsMessage(const ViewedCall& call) {
    return std::any_of(call.log.begin(), call.log.end(), [](const LogLine& line) {
        return line.severity == "DATA" && line.message.find("->HTTP POST") != line.message.npos;
    });
}

bool RecordsEvent(const Catalogue& catalogue, const std::string& name) {
    const Json* const operation = catalogue.FindOperation(name);
    return operation && operation->contains("record") && operation->at("record").at("kind") == "event";
}

std::string OutcomeOf(const Catalogue& catalogue, const Run& run, const ViewedCall& call) {
    if (call.verdict == Verdict::NotMade)
        return "the library is not loaded";
    if (call.verdict == Verdict::Failed)
        return TextOf(call.answer, "error");
    if (call.verdict == Verdict::Refused)
        return BriefReasons(call.reasons);
    if (const std::string answer = AnswerText(call.answer); !answer.empty())
        return answer;
    if (const std::string answer = LoggedAnswer(call); !answer.empty())
        return answer;
    if (SendsMessage(call))
        return "sends the message about the machine";
    if (const std::string got = OfCompanion(call); !got.empty())
        return got;
    return run.road == "basic" && RecordsEvent(catalogue, call.name) ? "the basic road records no events"
                                                                     : "";
}

/// Without its quotation marks.
std::string ResultOf(const ViewedCall& call) {
    for (const ViewedArgument& argument : call.arguments)
        if (argument.name == "taskResult" && argument.value.size() >= 2)
            return argument.value.substr(1, argument.value.size() - 2);
    return {};
}

std::optional<std::int64_t> RecordedDuration(const ViewedCall& call) {
    for (const Json& operation : call.handedOver)
        if (const std::string text = TextUnder(operation, "/record/app_event_details/task_duration");
            !text.empty() && text.find_first_not_of("0123456789") == text.npos && text.size() < 16)
            return std::stoll(text);
    return std::nullopt;
}

std::optional<std::int64_t> Duration(const ViewedCall& begun, const ViewedCall& completed) {
    if (const auto recorded = RecordedDuration(completed))
        return recorded;
    if (begun.time && completed.time)
        return *completed.time - *begun.time;
    return std::nullopt;
}

/// Pairs calls by their handle. The log does not show the handle of a call that begins a task, so there the
/// tasks of a kind are paired in order.
void FindTasks(Run& run) {
    std::map<std::string, std::deque<std::size_t>> open;
    for (std::size_t i = 0; i < run.calls.size(); ++i) {
        const ViewedCall& call = run.calls[i];
        if (call.task.empty() || call.verdict != Verdict::Accepted)
            continue;
        auto& its = open[call.handle.empty() ? "kind " + call.task : "handle " + call.handle];
        if (call.name.ends_with("Initiated")) {
            if (!call.handle.empty())
                its.clear(); // the host's variable is overwritten
            its.push_back(run.tasks.size());
            run.tasks.push_back({call.task, i, std::nullopt, "", std::nullopt});
        } else if (!its.empty()) {
            ViewedTask& task = run.tasks[its.front()];
            its.pop_front();
            task.completed = i;
            task.result = ResultOf(call);
            task.milliseconds = Duration(run.calls[task.begun], call);
        }
    }
}

} // namespace

void Conclude(const Catalogue& catalogue, Run& run) {
    const bool hasCompanion = std::any_of(run.calls.begin(), run.calls.end(),
                                          [](const ViewedCall& call) { return !call.handedOver.empty(); });
    if (run.road.empty())
        run.road = hasCompanion ? "managed" : run.messages.empty() ? "" : "basic";
    for (ViewedCall& call : run.calls)
        call.outcome = OutcomeOf(catalogue, run, call);
    FindTasks(run);
}

std::string TextUnder(const Json& json, const char* pointer) {
    const Json::json_pointer place(pointer);
    return json.contains(place) && json.at(place).is_string() ? json.at(place).get<std::string>() : "";
}

bool IsRecorded(const ViewedCall& call) {
    return CountHandedOver(call, "PostEventInternal") + CountHandedOver(call, "PostDataInternal") > 0;
}

const char* VerdictWord(const ViewedCall& call) {
    switch (call.verdict) {
    case Verdict::Refused:
        return "refused";
    case Verdict::Failed:
        return "failed";
    case Verdict::NotMade:
        return "not made";
    default:
        return IsRecorded(call) ? "recorded" : "accepted";
    }
}

} // namespace Zuvan::Lumeq::Tool
