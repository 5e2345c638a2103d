#include "LumeqTest/RecordedCall.h"

#include "LumeqTest/Refusals.h"
#include "lumeq/Catalogue.h"

#include <algorithm>
#include <exception>
#include <map>
#include <mutex>

namespace Zuvan::Lumeq::Double {

namespace {

thread_local RecordedCall* current = nullptr;

/// The names under which sessions know tasks.
class TaskNames {
public:
    /// The name of the task that begins next.
    std::string Next() {
        const std::scoped_lock hold(_lock);
        return "task " + std::to_string(++_begun);
    }
    /// Tasks that are open keep their names.
    void Restart() {
        const std::scoped_lock hold(_lock);
        _begun = 0;
    }
    void Set(API::TaskHandle task, const std::string& name) {
        const std::scoped_lock hold(_lock);
        _names[task] = name;
    }
    Json Of(API::TaskHandle task) {
        const std::scoped_lock hold(_lock);
        const auto found = _names.find(task);
        return found == _names.end() ? Json() : Json(found->second);
    }

private:
    std::mutex _lock;
    int _begun = 0;
    std::map<API::TaskHandle, std::string> _names;
};

TaskNames& Tasks() {
    static TaskNames names;
    return names;
}

bool IsUnpaired(const std::wstring& text, std::size_t at) {
    const auto isHigh = [](wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; };
    const auto isLow = [](wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
    return isHigh(text[at])  ? at + 1 == text.size() || !isLow(text[at + 1])
           : isLow(text[at]) ? at == 0 || !isHigh(text[at - 1])
                             : false;
}

/// Text that JSON cannot express.
bool IsOdd(const std::wstring& text) {
    for (std::size_t at = 0; at < text.size(); ++at)
        if (IsUnpaired(text, at))
            return true;
    return false;
}

template <class Text>
Json Units(const Text& text) {
    using Unit = std::make_unsigned_t<typename Text::value_type>;
    Json units = Json::array();
    for (const auto unit : text)
        units.push_back(static_cast<Unit>(unit));
    return {{"units", units}};
}

/// In the order of the names, because that of a map is arbitrary.
template <class Map>
std::vector<typename Map::const_pointer> Sorted(const Map& map) {
    std::vector<typename Map::const_pointer> sorted;
    for (const auto& entry : map)
        sorted.push_back(&entry);
    std::sort(sorted.begin(), sorted.end(),
              [](const auto* one, const auto* other) { return one->first < other->first; });
    return sorted;
}

} // namespace

Json Spelled(const std::wstring& text) { return IsOdd(text) ? Units(text) : Json(SampleHost::ToUtf8(text)); }

Json Spelled(const wchar_t* text) { return text ? Spelled(std::wstring(text)) : Json(); }

Json Spelled(const std::string& text) {
    const bool isAscii = std::all_of(text.begin(), text.end(),
                                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    return isAscii ? Json(text) : Units(text);
}

Json Spelled(const char* text) { return Spelled(std::string(text ? text : "")); }

Json Spelled(const API::StringDictionary& fields) {
    const auto sorted = Sorted(fields);
    const bool isObject =
        std::none_of(sorted.begin(), sorted.end(), [](const auto* field) { return IsOdd(field->first); });
    Json json = isObject ? Json::object() : Json::array();
    for (const auto* field : sorted)
        if (isObject)
            json[SampleHost::ToUtf8(field->first)] = Spelled(field->second);
        else
            json.push_back({Spelled(field->first), Spelled(field->second)});
    return json;
}

Json Spelled(const API::StringDictionary* fields) { return fields ? Spelled(*fields) : Json(); }

Json Spelled(const API::ScanFeatureMap& features) {
    Json json = Json::object();
    for (const auto* feature : Sorted(features))
        json[SampleHost::ToUtf8(feature->first)] = feature->second;
    return json;
}

Json Spelled(const API::DiscoveredDeviceList& devices) {
    Json json = Json::array();
    for (const API::DiscoveredDevice& device : devices)
        json.push_back(Spelled(device.information));
    return json;
}

Json Spelled(const API::TaskHandle* variable) { return Tasks().Of(*variable); }

RecordedCall::RecordedCall(const char* name, const std::vector<Json>& arguments) : _line{{"call", name}} {
    const Json& operation = *Tool::Catalogue::OfThisProgram().FindOperation(name);
    const Json& signature = operation.at("arguments");
    for (std::size_t at = 0; at < arguments.size(); ++at)
        if (!arguments[at].is_null())
            _line[Tool::TextOf(signature.at(at), "name")] = arguments[at];
    if (std::string_view(name).ends_with("Initiated"))
        _line["handle"] = Tasks().Next();
    current = this;
}

RecordedCall::~RecordedCall() {
    current = nullptr;
    if (!_reports.empty())
        RecordRefusals(_line, _reports);
}

void RecordedCall::Begun(API::TaskHandle task) const {
    if (task)
        Tasks().Set(task, _line.at("handle"));
}

RecordedCall* RecordedCall::Current() noexcept { return current; }

std::string TextOfCurrentCall() { return current ? current->Line().dump() : "null"; }

void RestartTaskNames() { Tasks().Restart(); }

} // namespace Zuvan::Lumeq::Double
