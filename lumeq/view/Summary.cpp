#include "lumeq/view/Counts.h"
#include "lumeq/view/Markup.h"
#include "lumeq/view/Outcome.h"
#include "lumeq/view/Sections.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t MostTasks = 200;

std::string Counted(std::size_t count, const std::string& word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

std::string Figure(std::size_t count, const std::string& words, const std::string& kind) {
    return Element("li", Attribute("class", kind),
                   Element("b", std::to_string(count)) + " " + Element("span", Html(words)));
}

std::string FiguresHtml(const Run& run) {
    const Counts counts = CountsOf(run);
    std::string figures = Figure(counts.calls, counts.calls == 1 ? "call" : "calls", "all") +
                          Figure(counts.accepted, "accepted", "accepted") +
                          Figure(counts.refused, "refused", counts.refused ? "refused" : "zero");
    if (counts.failed > 0)
        figures += Figure(counts.failed, "failed or not made", "failed");
    if (run.road != "basic")
        figures += Figure(counts.recorded, "recorded", counts.recorded ? "recorded" : "zero");
    if (!run.tasks.empty())
        figures += Figure(run.tasks.size(), run.tasks.size() == 1 ? "task" : "tasks", "all");
    if (run.road == "basic" || !run.messages.empty())
        figures += Figure(run.messages.size(), run.messages.size() == 1 ? "message" : "messages", "all");
    return Element("ul", " class=\"figures\"", figures);
}

std::string Panel(const std::string& kind, const std::string& title, const std::string& content) {
    return Element("section", Attribute("class", "panel " + kind), Element("h3", Html(title)) + content) +
           "\n";
}

std::string LinkTo(const Place& place, std::size_t call) {
    return Element("a", Attribute("href", "#" + place.IdOf(call)), std::to_string(call + 1));
}

/// What is wrong, without the value.
std::string KindOf(const Reason& reason) {
    return reason.words.empty() ? reason.message : reason.argument + ": " + reason.words;
}

std::string ReasonsHtml(const Run& run, const Place& place) {
    struct Group {
        std::size_t count = 0;
        std::size_t first = 0;
        std::string layer;
    };
    std::map<std::string, Group> groups;
    for (std::size_t i = 0; i < run.calls.size(); ++i)
        for (const Reason& reason : run.calls[i].reasons) {
            Group& group = groups[KindOf(reason)];
            if (group.count++ == 0)
                group = {1, i, reason.layer};
        }
    std::vector<std::pair<std::string, Group>> sorted(groups.begin(), groups.end());
    std::sort(sorted.begin(), sorted.end(), [](const auto& one, const auto& other) {
        return std::pair(other.second.count, one.second.first) <
               std::pair(one.second.count, other.second.first);
    });
    std::string rows;
    for (const auto& [kind, group] : sorted)
        rows += Element("tr", Element("td", " class=\"count\"", std::to_string(group.count)) +
                                  Element("td", Html(kind)) +
                                  Element("td", " class=\"tight\"", Html(group.layer)) +
                                  Element("td", LinkTo(place, group.first)));
    if (rows.empty())
        return "";
    return Panel("reasons", "Refused, by reason",
                 "<div class=\"scroll\" tabindex=\"0\" role=\"region\" aria-label=\"Refused, by "
                 "reason\"><table><thead><tr><th scope=\"col\">Count</th>"
                 "<th scope=\"col\">Reason</th><th scope=\"col\">Refused by</th><th scope=\"col\">First "
                 "call</th></tr></thead>" +
                     Element("tbody", rows) + "</table></div>");
}

std::string Rounded(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

/// Where in the run the task was open. Without a style attribute, which the page's policy forbids.
std::string BarHtml(const Run& run, const ViewedTask& task, const RunSpan& span) {
    const auto begin = run.calls[task.begun].time;
    const auto end = task.completed ? run.calls[*task.completed].time : std::optional(span.end);
    if (!begin || !end || span.end <= span.begin)
        return "";
    const double scale = 100.0 / static_cast<double>(span.end - span.begin);
    const double from = std::clamp(static_cast<double>(*begin - span.begin) * scale, 0.0, 99.0);
    const double width = std::clamp(static_cast<double>(*end - *begin) * scale, 1.0, 100.0 - from);
    return "<svg viewBox=\"0 0 100 10\" preserveAspectRatio=\"none\" aria-hidden=\"true\"><rect" +
           Attribute("x", Rounded(from)) + Attribute("width", Rounded(width)) + " height=\"10\" rx=\"1\"" +
           (task.completed ? "" : " class=\"open\"") + "/></svg>";
}

std::string DurationText(const ViewedTask& task) {
    if (!task.milliseconds)
        return task.completed ? "" : "never completed";
    return *task.milliseconds < 10000 ? std::to_string(*task.milliseconds) + " ms"
                                      : Rounded(static_cast<double>(*task.milliseconds) / 1000) + " s";
}

std::string TasksHtml(const Run& run, const Place& place) {
    if (run.tasks.empty())
        return "";
    const RunSpan span = SpanOf(run);
    std::string rows;
    for (std::size_t i = 0; i < std::min(MostTasks, run.tasks.size()); ++i) {
        const ViewedTask& task = run.tasks[i];
        rows += Element("tr",
                        Element("td", " class=\"tight\"", Html(task.name)) +
                            Element("td", " class=\"tight\"",
                                    LinkTo(place, task.begun) +
                                        (task.completed ? " \u2013 " + LinkTo(place, *task.completed) : "")) +
                            Element("td", Html(task.result)) +
                            Element("td", " class=\"count\"", DurationText(task)) +
                            Element("td", " class=\"bar\"", BarHtml(run, task, span)));
    }
    std::string more;
    if (run.tasks.size() > MostTasks)
        more = Element("p", Html("The first " + std::to_string(MostTasks) + " of " +
                                 std::to_string(run.tasks.size()) + " tasks."));
    return Panel(
        "tasks", "Tasks",
        "<div class=\"scroll\" tabindex=\"0\" role=\"region\" aria-label=\"Tasks\"><table><thead><tr><th "
        "scope=\"col\">Task</th><th scope=\"col\">Calls</th>"
        "<th scope=\"col\">Result</th><th scope=\"col\">Duration</th><th scope=\"col\">During the "
        "run</th></tr></thead>" +
            Element("tbody", rows) + "</table></div>" + more);
}

std::string MeaningOf(const Catalogue& catalogue, const std::string& name) {
    for (const Json& field : catalogue.Whole().at("message").at("fields"))
        if (field.at("field") == name)
            return field.contains("constant") ? "Always this." : TextOf(field, "meaning");
    return {};
}

/// Line by line, so that the line ends stay.
std::string Preformatted(const std::string& text) {
    std::string html;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        if (line.ends_with('\r'))
            line.pop_back();
        html += (at > 0 ? "\n" : "") + Html(line);
        at = end + 1;
    }
    return Element("pre", " tabindex=\"0\"", html);
}

std::string MessageHtml(const Catalogue& catalogue, const ViewedMessage& message) {
    std::string rows;
    for (const auto& [name, value] : message.fields)
        rows += Element("tr", Element("th", " scope=\"row\"", Html(name)) + Element("td", Html(value)) +
                                  Element("td", " class=\"meaning\"", Html(MeaningOf(catalogue, name))));
    std::string html = Element("p", "To " + Element("code", Html(message.path)));
    for (const std::string& wrong : message.wrong)
        html += Element("p", " class=\"wrong\"", "Wrong with it: " + Html(wrong));
    html += "<div class=\"scroll\" tabindex=\"0\" role=\"region\" aria-label=\"The message, "
            "decoded\"><table><thead><tr><th scope=\"col\">Field</th><th scope=\"col\">Value</th>"
            "<th scope=\"col\">Meaning</th></tr></thead>" +
            Element("tbody", rows) + "</table></div>";
    if (!message.wire.empty())
        html += Element("details",
                        Element("summary", std::to_string(message.wire.size()) + " bytes on the wire") +
                            Preformatted(message.wire));
    std::string answer;
    for (const std::string& line : message.answer)
        answer += (answer.empty() ? "" : "\n") + line;
    if (!answer.empty())
        html += Element("details", Element("summary", "What the log shows of the post and its answer") +
                                       Preformatted(answer));
    return html;
}

std::string LinesHtml(const std::vector<LogLine>& lines) {
    std::string text;
    for (const LogLine& line : lines)
        text += (text.empty() ? "" : "\n") + line.text;
    return Preformatted(text);
}

std::string Details(const std::string& title, const std::string& content) {
    return Element("details", " class=\"rest\"", Element("summary", Html(title)) + content) + "\n";
}

} // namespace

std::string SummaryHtml(const Catalogue& catalogue, const Run& run, const Place& place) {
    std::string html = FiguresHtml(run);
    for (const std::string& remark : run.remarks)
        html += Element("p", " class=\"remark\"", Html(remark));
    std::string panels = ReasonsHtml(run, place) + TasksHtml(run, place);
    for (std::size_t i = 0; i < run.messages.size(); ++i)
        panels += Panel("message",
                        run.messages.size() == 1 ? "The message about the machine"
                                                 : "Message " + std::to_string(i + 1),
                        MessageHtml(catalogue, run.messages[i]));
    return html + "\n" + (panels.empty() ? "" : Element("div", " class=\"panels\"", panels));
}

std::string DescriptionHtml(const Run& run) {
    std::string text = Counted(run.calls.size(), "call");
    const RunSpan span = SpanOf(run);
    if (span.end > 0)
        text += " in " + Rounded(static_cast<double>(span.end - span.begin) / 1000) + " s from " +
                UtcText(span.begin);
    if (!run.road.empty())
        text += ", on the " + run.road + " road";
    return Element("p", " class=\"description\"", Html(text + "."));
}

std::string RestHtml(const Run& run) {
    std::string html;
    if (!run.otherHandedOver.empty()) {
        std::string text;
        for (const Json& operation : run.otherHandedOver)
            text +=
                (text.empty() ? "" : "\n") + operation.dump(-1, ' ', false, Json::error_handler_t::replace);
        html += Details(Counted(run.otherHandedOver.size(), "operation") +
                            " of the companion library of no known call",
                        Preformatted(text));
    }
    if (!run.otherLines.empty())
        html +=
            Details(Counted(run.otherLines.size(), "log line") + " of no call", LinesHtml(run.otherLines));
    if (!run.settings.empty())
        html += Details("The local settings at the end", Preformatted(run.settings));
    if (!run.source.empty())
        html += Element("p", " class=\"description\"", Html("Read from " + run.source + "."));
    return html;
}

} // namespace Zuvan::Lumeq::Tool
