#include "lumeq/view/Correlation.h"

#include "lumeq/SessionArguments.h"
#include "lumeq/view/Arguments.h"
#include "lumeq/view/Outcome.h"

#include <algorithm>
#include <deque>
#include <unordered_map>
#include <utility>

namespace Zuvan::Lumeq::Tool {

namespace {

using Queues = std::unordered_map<std::string, std::deque<std::size_t>>;

constexpr std::size_t None = static_cast<std::size_t>(-1);

std::size_t TakeFirst(Queues& queues, const std::string& key) {
    const auto found = queues.find(key);
    if (found == queues.end() || found->second.empty())
        return None;
    const std::size_t first = found->second.front();
    found->second.pop_front();
    return first;
}

std::string KeyOf(const Catalogue& catalogue, const LoggedCall& logged) {
    const Json* const operation = catalogue.FindOperation(logged.name);
    return operation == nullptr
               ? logged.name
               : KeyOfTrace(*operation, ArgumentsOfTrace(*operation, logged.lines.front().message));
}

void Give(LoggedCall& logged, ViewedCall& call) {
    call.time = logged.lines.front().time;
    call.log = std::move(logged.lines);
}

/// Long lines are cut, and texts can look like other arguments. What is left of a name is paired in order if
/// nothing of it is lost.
void AttachByName(std::vector<LoggedCall>& logged, std::vector<SoughtCall>& calls) {
    Queues lines, sought;
    for (std::size_t i = 0; i < logged.size(); ++i)
        if (!logged[i].lines.empty())
            lines[logged[i].name].push_back(i);
    for (std::size_t i = 0; i < calls.size(); ++i)
        if (calls[i].call.log.empty() && !calls[i].logKey.empty())
            sought[LoggedNameOf(calls[i].call.name)].push_back(i);
    for (const auto& [name, left] : sought)
        if (const auto& its = lines[name]; its.size() == left.size())
            for (std::size_t i = 0; i < left.size(); ++i)
                Give(logged[its[i]], calls[left[i]].call);
}

/// "PostEventInternal clicked button /Home#ok". A task can be completed as one of another kind: its label
/// stays, and the schema of its details is that of the call.
std::string KeyOfOperation(const Json& operation) {
    std::string key = TextOf(operation, "operation");
    if (operation.contains("record")) {
        const std::string action = TextUnder(operation, "/record/app_event_action");
        const bool isCompleted = action == "completed";
        key += ' ' + action + ' ' + TextUnder(operation, "/record/app_event_object") + ' ' +
               TextUnder(operation,
                         isCompleted ? "/record/app_event_details/schema" : "/record/app_event_object_label");
    }
    if (operation.contains("data"))
        key += ' ' + TextUnder(operation, "/data/dev_biid");
    if (const auto choice = operation.find("userHasOptedIn"); choice != operation.end())
        key += *choice == true ? " true" : " false";
    return key;
}

/// What is left of the operations, in order. Threads can interleave calls, so a call looks a little ahead.
class Remaining {
public:
    explicit Remaining(const std::vector<Json>& operations) : _operations(operations) {
        for (const Json& operation : operations)
            _keys.push_back(KeyOfOperation(operation));
        _isTaken.resize(operations.size());
    }

    /// Null if there is none.
    const Json* Take(const std::string& sought) {
        while (_first < _keys.size() && _isTaken[_first])
            ++_first;
        for (std::size_t at = _first; at < std::min(_first + FarthestAhead, _keys.size()); ++at)
            if (!_isTaken[at] && _keys[at] == sought) {
                _isTaken[at] = true;
                return &_operations[at];
            }
        return nullptr;
    }

    std::vector<Json> Rest() const {
        std::vector<Json> rest;
        for (std::size_t at = 0; at < _keys.size(); ++at)
            if (!_isTaken[at])
                rest.push_back(_operations[at]);
        return rest;
    }

private:
    static constexpr std::size_t FarthestAhead = 256;

    const std::vector<Json>& _operations;
    std::vector<std::string> _keys;
    std::vector<bool> _isTaken;
    std::size_t _first = 0;
};

/// The end of a pause, of which the companion library hears only if the user had opted in before it.
constexpr char EndOfPause[] = "(end of a pause)";

/// Knows what the end of a pause does.
class PauseTracker {
public:
    /// Returns the key to look for instead, or an empty text.
    std::string Resolve(const std::string& key) {
        if (key != EndOfPause)
            return key;
        _isPaused = false;
        return std::exchange(_restoresOptIn, false) ? "SetUserOptInInternal true" : "";
    }

    void Hear(const ViewedCall& call, const Json& operation) {
        if (call.name == "Pause" && TextOf(operation, "operation") == "SetLocalValueInternal") {
            _isPaused = true;
            _restoresOptIn = ValueOf(operation, "value", Json()) == "True";
        } else if (call.name == "SetUserOptInEx" && _isPaused)
            _restoresOptIn = ValueOf(operation, "userHasOptedIn", Json()) == true;
    }

private:
    bool _isPaused = false;
    bool _restoresOptIn = false;
};

std::string SchemaOfDetails(const Json& record) {
    for (const Json& field : record.at("details"))
        if (field.at("field") == "schema")
            return TextOf(field, "constant");
    return {};
}

std::vector<std::string> EventKeys(const Json& operation, const Json& record, const Json& call) {
    if (call.contains("taskHandle"))
        return {"PostEventInternal completed task " + SchemaOfDetails(record)};
    const std::wstring composed = Compose(TextOf(record, "label"), operation, call).text;
    const bool isUrl = TextOf(record, "object") == "url";
    const std::string label = SampleHost::ToUtf8(isUrl ? WithoutQuery(composed) : composed);
    std::string action = record.at("action")[0];
    if (operation.at("name") == "CheckboxChanged" && call.contains("isChecked")) {
        const Json& isChecked = call.at("isChecked");
        const bool isUnchecked = isChecked.is_boolean() ? !isChecked.get<bool>() : isChecked == 0;
        action = isUnchecked ? "unchecked" : "checked";
    }
    return {"PostEventInternal " + action + ' ' + TextOf(record, "object") + ' ' + label};
}

std::vector<std::string> PrinterKeys(const Json& call) {
    std::vector<std::string> keys;
    for (const Json& device : call.at("discoveredDeviceList")) {
        const auto fields = SampleHost::ReadDictionary(device);
        if (const auto biid = fields.find(L"dev_biid"); biid != fields.end())
            keys.push_back("PostDataInternal " + SampleHost::ToUtf8(biid->second));
    }
    return keys;
}

} // namespace

void AttachLog(const Catalogue& catalogue, LoggedCalls logged, std::vector<SoughtCall>& calls, Run& run) {
    Queues byKey;
    for (std::size_t i = 0; i < logged.calls.size(); ++i)
        byKey[KeyOf(catalogue, logged.calls[i])].push_back(i);
    for (SoughtCall& sought : calls)
        if (const std::size_t i = TakeFirst(byKey, sought.logKey); i != None)
            Give(logged.calls[i], sought.call);
    AttachByName(logged.calls, calls);
    run.otherLines = std::move(logged.otherLines);
    for (LoggedCall& left : logged.calls)
        std::move(left.lines.begin(), left.lines.end(), std::back_inserter(run.otherLines));
}

void AttachOperations(const std::vector<Json>& operations, std::vector<SoughtCall>& calls, Run& run) {
    Remaining remaining(operations);
    PauseTracker pause;
    for (SoughtCall& sought : calls)
        for (const std::string& key : sought.operationKeys)
            if (const Json* const operation = remaining.Take(pause.Resolve(key))) {
                sought.call.handedOver.push_back(*operation);
                pause.Hear(sought.call, *operation);
            }
    run.otherHandedOver = remaining.Rest();
}

void AttachAnswers(const std::vector<Json>& lines, std::vector<SoughtCall>& calls, Run& run) {
    Queues byName;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].contains("call"))
            byName[TextOf(lines[i], "call")].push_back(i);
    std::size_t unanswered = 0;
    for (SoughtCall& sought : calls) {
        const std::size_t i = TakeFirst(byName, sought.call.name);
        unanswered += i == None;
        if (i == None)
            continue;
        sought.call.answer = lines[i];
        sought.call.answer.erase("call");
    }
    if (unanswered > 0)
        run.remarks.push_back("The host printed nothing for " + std::to_string(unanswered) +
                              (unanswered == 1 ? " call." : " calls.") +
                              " It ended before, or is still running.");
}

std::vector<std::string> OperationKeysOf(const Json& operation, const Json& call, bool isRefused) {
    const std::string name = TextOf(operation, "name");
    if (name == "TrackDiscoveredPrintersEx")
        return PrinterKeys(call);
    // A pause that is still marked ends first, also if the call is refused.
    if (name == "StartupEx")
        return isRefused ? std::vector<std::string>{EndOfPause}
                         : std::vector<std::string>{EndOfPause, "StartupInternal"};
    if (isRefused)
        return {};
    if (const auto record = operation.find("record");
        record != operation.end() && TextOf(*record, "kind") == "event")
        return EventKeys(operation, *record, call);
    if (name == "Pause")
        return {"SetLocalValueInternal", "SetUserOptInInternal false"};
    if (name == "Resume")
        return {EndOfPause};
    if (name == "ShutdownEx")
        return {EndOfPause, "ShutdownInternal"};
    if (name == "SetUserOptInEx")
        return {ValueOf(call, "userHasOptedIn", false) ? "SetUserOptInInternal true"
                                                       : "SetUserOptInInternal false"};
    if (name == "SetLocalSubfolderPathEx")
        return {"LocalSettingsSubfolderInternal"};
    const std::string plain = name.ends_with("Ex") ? name.substr(0, name.size() - 2) : name;
    return {plain + "Internal"};
}

} // namespace Zuvan::Lumeq::Tool
