#include "lumeq/view/Markup.h"
#include "lumeq/view/Outcome.h"
#include "lumeq/view/Sections.h"

#include <algorithm>
#include <cstdio>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t LongestCell = 300;

/// Cut between characters.
std::string Cut(const std::string& text) {
    if (text.size() <= LongestCell)
        return text;
    std::size_t end = LongestCell;
    while ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end) + "...";
}

std::string ArgumentsHtml(const ViewedCall& call) {
    std::string text;
    for (const ViewedArgument& argument : call.arguments)
        if (!argument.isNull)
            text += (text.empty() ? "" : ", ") + (argument.name.empty() ? "" : argument.name + " ") +
                    argument.value;
    return text.empty() ? "" : Element("span", Html(Cut(text)));
}

std::string CallCell(const ViewedCall& call) {
    return Element("td", " class=\"call\"", Element("b", Html(call.name)) + " " + ArgumentsHtml(call));
}

/// "not made" is one class.
std::string ClassOf(const ViewedCall& call) {
    const std::string word = VerdictWord(call);
    return word.substr(0, word.find(' '));
}

std::string OutcomeCell(const ViewedCall* call) {
    if (call == nullptr)
        return "<td class=\"outcome none\">no such call</td>";
    return Element("td", Attribute("class", "outcome " + ClassOf(*call)),
                   Element("em", VerdictWord(*call)) + " " + Html(Cut(call->outcome)));
}

std::string LinkCell(const std::string& id, const std::string& text) {
    return Element("td", " class=\"number\"", Element("a", Attribute("href", "#" + id), text));
}

std::string TimeCell(const std::optional<std::int64_t>& time, const std::optional<std::int64_t>& begin) {
    if (!time || !begin)
        return "<td class=\"time\"></td>";
    char text[32];
    std::snprintf(text, sizeof text, "%.3f", static_cast<double>(*time - *begin) / 1000);
    return Element("td", " class=\"time\"", text);
}

/// The browser lays out only the groups in sight, so that a long table opens at once.
constexpr std::size_t RowsOfGroup = 100;

std::string Table(const std::string& kind, const std::string& data, const std::vector<std::string>& heads,
                  const std::vector<std::string>& rows) {
    std::string head, groups;
    for (const std::string& text : heads)
        head += Element("th", " scope=\"col\"", Html(text));
    for (std::size_t begin = 0; begin < rows.size(); begin += RowsOfGroup) {
        std::string group;
        for (std::size_t i = begin; i < std::min(begin + RowsOfGroup, rows.size()); ++i)
            group += rows[i] + "\n";
        groups += Element("tbody", group) + "\n";
    }
    return Element("table", Attribute("class", kind) + data,
                   Element("thead", Element("tr", head)) + "\n" + groups) +
           "\n";
}

Json ReasonJson(const Reason& reason) {
    Json json{{"argument", reason.argument}, {"layer", reason.layer}, {"message", reason.message}};
    if (!reason.words.empty())
        json.update(
            {{"text", reason.text}, {"at", reason.at}, {"words", reason.words}, {"nearest", reason.nearest}});
    return json;
}

Json DetailsJson(const ViewedCall& call) {
    Json json = Json::object();
    const auto add = [&json](const char* name, Json value) {
        if (!value.empty())
            json[name] = std::move(value);
    };
    Json arguments = Json::array(), reasons = Json::array(), lines = Json::array();
    for (const ViewedArgument& argument : call.arguments)
        arguments.push_back({argument.name, argument.value});
    for (const Reason& reason : call.reasons)
        reasons.push_back(ReasonJson(reason));
    for (const LogLine& line : call.log)
        lines.push_back({line.severity, line.text});
    add("arguments", arguments);
    add("reasons", reasons);
    add("remarks", call.remarks);
    add("companion", call.handedOver);
    add("answer", call.answer.is_null() ? Json::object() : call.answer);
    add("log", lines);
    if (call.line != 0)
        json["line"] = call.line;
    return json;
}

} // namespace

Place PlaceOf(std::size_t run, std::size_t runs) {
    const std::string number = std::to_string(run + 1);
    return {runs == 1 ? "" : "run" + number + "-", "data-" + number};
}

std::string CallsHtml(const Run& run, const Place& place) {
    std::optional<std::int64_t> begin;
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < run.calls.size(); ++i) {
        const ViewedCall& call = run.calls[i];
        if (!begin)
            begin = call.time;
        const std::string id = place.IdOf(i);
        rows.push_back(Element("tr", Attribute("id", id) + Attribute("class", ClassOf(call)),
                               LinkCell(id, std::to_string(i + 1)) + TimeCell(call.time, begin) +
                                   CallCell(call) + OutcomeCell(&call)));
    }
    return Table("calls", Attribute("data-details", place.data), {"#", "Seconds", "Call", "What came of it"},
                 rows);
}

std::string ComparedCallsHtml(const Run& a, const Run& b, const std::vector<ComparedCall>& calls) {
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const ComparedCall& compared = calls[i];
        const ViewedCall* const left = compared.a ? &a.calls[*compared.a] : nullptr;
        const ViewedCall* const right = compared.b ? &b.calls[*compared.b] : nullptr;
        const std::string id = "pair-" + std::to_string(i + 1);
        std::string attributes =
            Attribute("id", id) + Attribute("class", compared.differences.empty() ? "same" : "different");
        std::string words;
        for (const std::string& difference : compared.differences)
            words += (words.empty() ? "" : ", ") + difference;
        if (left)
            attributes += Attribute("data-a", std::to_string(*compared.a));
        if (right)
            attributes += Attribute("data-b", std::to_string(*compared.b));
        rows.push_back(Element("tr", attributes,
                               LinkCell(id, std::to_string(i + 1)) +
                                   Element("td", " class=\"differences\"", words.empty() ? "same" : words) +
                                   CallCell(left ? *left : *right) + OutcomeCell(left) + OutcomeCell(right)));
    }
    return Table("calls compared", "", {"#", "Difference", "Call", "A: " + a.name, "B: " + b.name}, rows);
}

std::string DataBlock(const Run& run, const Place& place) {
    std::string lines;
    for (const ViewedCall& call : run.calls)
        lines += (lines.empty() ? "" : "\n") + DataBlockJson(DetailsJson(call));
    return Element("script", " type=\"application/json\"" + Attribute("id", place.data), lines) + "\n";
}

} // namespace Zuvan::Lumeq::Tool
