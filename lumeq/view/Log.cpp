#include "lumeq/view/Log.h"

#include <chrono>
#include <cstdio>
#include <map>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::string_view Namespace = "Zuvan::Lumeq::API::";
constexpr std::size_t TimeLength = 24; // 2026-11-22T11:04:03.958Z

std::optional<std::int64_t> ReadTime(const std::string& text) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, milliseconds = 0, read = 0;
    if (std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d.%3dZ%n", &year, &month, &day, &hour, &minute,
                    &second, &milliseconds, &read) != 7 ||
        read != static_cast<int>(TimeLength))
        return std::nullopt;
    using namespace std::chrono;
    const auto days = sys_days(std::chrono::year(year) / month / day).time_since_epoch();
    // The log shows the hour plus one, 01 to 24.
    return duration_cast<std::chrono::milliseconds>(days + hours(hour - 1) + minutes(minute) +
                                                    seconds(second))
               .count() +
           milliseconds;
}

/// Takes the text up to `end` off the front. False if there is none.
bool TakeUpTo(std::string_view& rest, std::string_view end, std::string& taken) {
    const std::size_t at = rest.find(end);
    if (at == rest.npos)
        return false;
    taken = rest.substr(0, at);
    rest.remove_prefix(at + end.size());
    return true;
}

std::optional<LogLine> ReadLine(const std::string& text) {
    const auto time = ReadTime(text);
    if (!time)
        return std::nullopt;
    LogLine line;
    line.time = *time;
    line.text = text;
    std::string_view rest(text);
    rest.remove_prefix(TimeLength);
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    if (!TakeUpTo(rest, "0x", line.severity) || !TakeUpTo(rest, " | ", line.thread))
        return std::nullopt;
    line.severity.resize(line.severity.find_last_not_of(' ') + 1);
    if (rest.starts_with('<') && rest.find("> ") != rest.npos) {
        rest.remove_prefix(1);
        TakeUpTo(rest, "> ", line.function);
        line.isOfExport = line.function.starts_with(Namespace);
        if (line.isOfExport)
            line.function.erase(0, Namespace.size());
    }
    line.message = rest;
    return line;
}

bool BeginsCall(const LogLine& line) {
    return line.isOfExport && line.severity == "TRACE" && !line.message.starts_with("...");
}

/// Three exports log their control's name without the "l".
std::string LoggedName(const std::string& name, const std::string& message) {
    return name == "controlName" && message.find("controName: ") != message.npos ? "controName" : name;
}

} // namespace

std::vector<LogLine> ReadLog(const std::string& text) {
    std::vector<LogLine> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        if (line.ends_with('\r'))
            line.pop_back();
        if (auto read = ReadLine(line))
            lines.push_back(std::move(*read));
        else if (!lines.empty() && !line.empty())
            lines.back().text += '\n' + line;
        at = end + 1;
    }
    return lines;
}

std::string ReportedExport(const LogLine& line) {
    const std::size_t begin = line.severity == "ERROR" ? line.message.find(Namespace) : std::string::npos;
    if (begin == std::string::npos)
        return {};
    const std::size_t name = begin + Namespace.size();
    return line.message.substr(name, line.message.find(':', name) - name);
}

LoggedCalls SplitIntoCalls(std::vector<LogLine> lines, bool withRefusals) {
    LoggedCalls split;
    std::map<std::string, std::size_t> lastOfThread;
    for (LogLine& line : lines) {
        auto own = lastOfThread.find(line.thread);
        std::string begun = BeginsCall(line) ? line.function : "";
        if (withRefusals && begun.empty() &&
            (own == lastOfThread.end() || split.calls[own->second].name != ReportedExport(line)))
            begun = ReportedExport(line);
        if (!begun.empty()) {
            own = lastOfThread.insert_or_assign(line.thread, split.calls.size()).first;
            split.calls.push_back({begun, {}});
        }
        if (own != lastOfThread.end())
            split.calls[own->second].lines.push_back(std::move(line));
        else if (!split.calls.empty())
            split.calls.back().lines.push_back(std::move(line));
        else
            split.otherLines.push_back(std::move(line));
    }
    return split;
}

std::vector<ViewedArgument> ArgumentsOfTrace(const Json& operation, const std::string& message) {
    std::vector<std::pair<std::string, std::size_t>> begins; // name, place
    std::string before;                                      // what ends the value before
    std::size_t from = 0;
    for (const Json& argument : operation.at("arguments")) {
        const std::string name = TextOf(argument, "name");
        const std::string label = before + LoggedName(name, message) + ": ";
        const std::size_t at = message.find(label, from);
        if (at == message.npos || (begins.empty() && at != 0))
            continue;
        begins.emplace_back(name, at + before.size());
        from = at + label.size();
        // Nothing in a quoted text is escaped, so it can contain what looks like the next argument.
        const bool isQuoted = from < message.size() && (message[from] == '"' || message[from] == '\'');
        before = (isQuoted ? std::string(1, message[from]) : "") + ", ";
    }
    std::vector<ViewedArgument> arguments;
    for (std::size_t i = 0; i < begins.size(); ++i) {
        const std::size_t end = i + 1 < begins.size() ? begins[i + 1].second - 2 : message.size();
        const std::string whole = message.substr(begins[i].second, end - begins[i].second);
        const std::string value = whole.substr(whole.find(": ") + 2);
        arguments.push_back({begins[i].first, value, value == "(null)"});
    }
    if (arguments.empty() && !message.empty())
        arguments.push_back({"", message, false});
    return arguments;
}

} // namespace Zuvan::Lumeq::Tool
