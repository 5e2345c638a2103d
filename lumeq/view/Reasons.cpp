#include "lumeq/view/Reasons.h"

#include "lumeq/LibraryTables.h"
#include "lumeq/view/Arguments.h"

#include <algorithm>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t LongestBrief = 40;

std::string BriefText(const std::wstring& text) {
    return text.size() <= LongestBrief ? Quoted(std::wstring_view(text))
                                       : Quoted(std::wstring_view(text).substr(0, LongestBrief)) + "...";
}

void AddRefusedText(const Catalogue& catalogue, const RefusedText& refused, Reason& reason) {
    const Json its = RefusedTextJson(catalogue, refused);
    reason.pattern = refused.pattern;
    reason.text = Shown(refused.text);
    // Counted in what is shown, in which an escape takes several characters.
    reason.at = ColumnsOf(std::wstring_view(refused.text).substr(0, its.at("at").get<std::size_t>()));
    reason.words = its.at("words");
    reason.nearest = its.at("nearest").is_null() ? "" : its.at("nearest").get<std::string>();
}

/// The verdict is known; the linter ends its sentences with it.
std::string WithoutVerdict(std::string message) {
    for (const char* verdict : {" is refused by the ", "; the null handle"})
        message.resize(std::min(message.size(), message.find(verdict)));
    if (message.ends_with(','))
        message.pop_back();
    return message;
}

/// What stands between two marks of a line. A long line is cut before the second.
std::string Between(const std::string& line, std::string_view begin, std::string_view end) {
    const std::size_t from = line.find(begin);
    if (from == line.npos)
        return {};
    const std::string rest = line.substr(from + begin.size());
    return rest.substr(0, rest.rfind(end));
}

const Json* FindArgument(const Json& operation, const std::string& name) {
    for (const Json& argument : operation.at("arguments"))
        if (argument.at("name") == name)
            return &argument;
    return nullptr;
}

/// `detail` reads: invalid [REQUIRED] name arg: "text"
Reason ReasonOfValidation(const Catalogue& catalogue, const Json& operation, const std::string& detail) {
    Reason reason{"", "export", detail, "", "", 0, "", ""};
    const std::size_t end = detail.find(" arg");
    if (end == detail.npos)
        return reason;
    const std::size_t begin = detail.rfind(' ', end - 1);
    reason.argument = detail.substr(begin + 1, end - begin - 1);
    if (reason.argument == "urlNoPii")
        reason.argument = "url";
    const std::string value = Between(detail, " arg: ", "");
    reason.message = reason.argument + " " + (value.empty() ? "null" : value);
    const Json* const argument = FindArgument(operation, reason.argument);
    const std::string pattern = argument ? TextOf(*argument, "pattern") : "";
    if (pattern.empty() || value.size() < 2 || value.front() != '"')
        return reason;
    const std::wstring text = SampleHost::ReadText(Json(value.substr(1, value.size() - 2)));
    // The log escapes a line feed, so the text itself may pass.
    if (!LibraryPattern(pattern).Matches(text))
        AddRefusedText(catalogue, {pattern, text}, reason);
    reason.message = reason.argument + " " + BriefText(text);
    return reason;
}

} // namespace

Reason ReasonOf(const Catalogue& catalogue, const Finding& finding) {
    Reason reason{finding.argument, finding.refusedBy, WithoutVerdict(finding.message), "", "", 0, "", ""};
    if (!finding.text)
        return reason;
    AddRefusedText(catalogue, *finding.text, reason);
    reason.message =
        finding.argument + (finding.refusedBy == "export" ? " " : ", in ") + BriefText(finding.text->text);
    return reason;
}

std::vector<Reason> ReasonsOfLog(const Catalogue& catalogue, const Json& operation,
                                 const std::vector<LogLine>& lines) {
    std::vector<Reason> reasons;
    const std::string where = " in Zuvan::Lumeq::API::" + LoggedNameOf(TextOf(operation, "name")) + ": ";
    for (const LogLine& line : lines) {
        if (line.severity != "ERROR")
            continue;
        const std::string detail = Between(line.message, where, ". LumeqApi(");
        if (line.message.find("Validation failed" + where) != line.message.npos) {
            if (detail.find("timeoutMsec") == detail.npos)
                reasons.push_back(ReasonOfValidation(catalogue, operation, detail));
        } else if (line.message.find("xception" + where) != line.message.npos)
            reasons.push_back({"", "event class", detail, "", "", 0, "", ""});
    }
    return reasons;
}

std::string BriefReasons(const std::vector<Reason>& reasons) {
    constexpr std::size_t Most = 3;
    std::string brief;
    for (std::size_t i = 0; i < std::min(Most, reasons.size()); ++i)
        brief += (i > 0 ? ", " : "") + reasons[i].message;
    if (reasons.size() == 1 && !reasons[0].nearest.empty() && reasons[0].layer == "export" &&
        reasons[0].nearest.size() <= LongestBrief)
        brief += " (nearest: " + Quoted(reasons[0].nearest) + ")";
    if (reasons.size() > Most)
        brief += " and " + std::to_string(reasons.size() - Most) + " more";
    return brief;
}

} // namespace Zuvan::Lumeq::Tool
