#include "lumeq/view/Correlation.h"

#include "lumeq/SessionArguments.h"
#include "lumeq/view/Arguments.h"

#include <algorithm>
#include <deque>
#include <unordered_map>

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

/// "PostEventInternal clicked button /Home#ok"
std::string KeyOfOperation(const Json& operation) {
    std::string key = TextOf(operation, "operation");
    if (const auto record = operation.find("record"); record != operation.end() && record->is_object())
        for (const char* field : {"app_event_action", "app_event_object", "app_event_object_label"})
            key += ' ' +
                   (record->contains(field) && record->at(field).is_string() ? TextOf(*record, field) : "");
    if (const auto data = operation.find("data"); data != operation.end() && data->is_object())
        key +=
            ' ' +
            (data->contains("dev_biid") && data->at("dev_biid").is_string() ? TextOf(*data, "dev_biid") : "");
    return key;
}

bool Fits(const std::string& sought, const std::string& key) {
    return sought.ends_with('*') ? key.starts_with(std::string_view(sought).substr(0, sought.size() - 1))
                                 : key == sought;
}

/// What is left of the operations, in order. Threads can interleave calls, so a call looks a little ahead.
class Remaining {
public:
    explicit Remaining(const std::vector<Json>& operations) : _operations(operations) {
        for (const Json& operation : operations)
            _keys.push_back(KeyOfOperation(operation));
        _isTaken.resize(operations.size());
    }

    std::size_t Take(const std::string& sought) {
        SkipTaken();
        const std::size_t reach = sought.ends_with('*') ? 1 : FarthestAhead;
        for (std::size_t at = _first; at < std::min(_first + reach, _keys.size()); ++at)
            if (!_isTaken[at] && Fits(sought, _keys[at])) {
                _isTaken[at] = true;
                return at;
            }
        return None;
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

    void SkipTaken() {
        while (_first < _keys.size() && _isTaken[_first])
            ++_first;
    }

    const std::vector<Json>& _operations;
    std::vector<std::string> _keys;
    std::vector<bool> _isTaken;
    std::size_t _first = 0;
};

std::vector<std::string> EventKeys(const Json& operation, const Json& record, const Json& call) {
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
    for (SoughtCall& sought : calls)
        for (const std::string& key : sought.operationKeys)
            if (const std::size_t at = remaining.Take(key); at != None)
                sought.call.handedOver.push_back(operations[at]);
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
    const std::string resumed = "SetUserOptInInternal*";
    if (name == "StartupEx")
        return isRefused ? std::vector{resumed} : std::vector<std::string>{resumed, "StartupInternal"};
    if (isRefused)
        return {};
    if (const auto record = operation.find("record");
        record != operation.end() && TextOf(*record, "kind") == "event")
        return EventKeys(operation, *record, call);
    if (name == "Pause")
        return {"SetLocalValueInternal*", "SetUserOptInInternal*"};
    if (name == "Resume")
        return {resumed};
    if (name == "ShutdownEx")
        return {resumed, "ShutdownInternal"};
    if (name == "SetLocalSubfolderPathEx")
        return {"LocalSettingsSubfolderInternal"};
    const std::string plain = name.ends_with("Ex") ? name.substr(0, name.size() - 2) : name;
    return {plain + "Internal"};
}

} // namespace Zuvan::Lumeq::Tool
