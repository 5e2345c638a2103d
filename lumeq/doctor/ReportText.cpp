#include "lumeq/doctor/ReportText.h"

#include "lumeq/doctor/Doctor.h"
#include "lumeq/doctor/Texts.h"
#include "samples/host/Json.h"

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

using Json = SampleHost::Json;

struct Mark {
    const char* text;
    Colour colour;
};

Mark MarkOf(const Finding& finding) {
    if (!finding.id)
        return {"[ok]", Colour::Green};
    switch (finding.effect) {
    case Effect::StopsAll:
    case Effect::LosesEvents:
        return {"[x] ", Colour::Red};
    case Effect::Warns:
        return {"[!] ", Colour::Yellow};
    default:
        return {"[i] ", Colour::Blue};
    }
}

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string HostName(const Examination& examination) {
    const Host& host = examination.host;
    std::string name = host.path.empty() ? "this machine" : Utf8(host.path);
    return host.processId == 0 ? name : name + ", process " + std::to_string(host.processId);
}

std::string Verdict(const Examination& examination, const Output& output) {
    const Finding* const blocker = examination.report.Blocker();
    if (!blocker)
        return output.Paint(Colour::Green, "Nothing that was checked keeps messages from arriving.");
    const Kind& kind = KindOf(*blocker->id);
    return output.Paint(Colour::Red, blocker->effect == Effect::StopsAll ? "Nothing arrives: "
                                                                         : "Events do not arrive: ") +
           kind.cause + "\n  " + kind.remedy;
}

std::string LineOf(const Finding& finding, const Output& output) {
    const Mark mark = MarkOf(finding);
    const std::string start =
        "  " + output.Paint(mark.colour, mark.text) + " " + Padded(NameOf(finding.check), 9);
    if (!finding.id)
        return start + finding.detail;
    const Kind& kind = KindOf(*finding.id);
    return start + kind.cause + (finding.detail.empty() ? "" : "\n" + std::string(16, ' ') + finding.detail) +
           "\n" + std::string(16, ' ') + "Remedy: " + kind.remedy;
}

std::string MessagePart(const Examination& examination) {
    const Message& message = examination.message;
    return "\n\nThe message about the machine that a start sends" +
           std::string(examination.isManaged ? " if the companion library fails" : "") + ":\n  POST " +
           message.url + "\n  " + message.text;
}

Json FindingJson(const Finding& finding) {
    Json json{{"check", NameOf(finding.check)}};
    if (!finding.id) {
        json["finding"] = nullptr;
    } else {
        const Kind& kind = KindOf(*finding.id);
        json.update({{"finding", kind.name},
                     {"effect", NameOf(finding.effect)},
                     {"cause", kind.cause},
                     {"remedy", kind.remedy}});
    }
    json["detail"] = finding.detail;
    return json;
}

} // namespace

std::string ReportText(const Examination& examination, const Output& output) {
    std::string text = output.Paint(Colour::Bold, "lumeq doctor: " + HostName(examination)) + "\n\n" +
                       Verdict(examination, output) + "\n";
    for (const Finding& finding : examination.report.Findings())
        text += "\n" + LineOf(finding, output);
    return examination.message.text.empty() ? text : text + MessagePart(examination);
}

std::string ReportJson(const Examination& examination) {
    const Finding* const blocker = examination.report.Blocker();
    Json json{{"host", Utf8(examination.host.path)},
              {"processId", examination.host.processId},
              {"blocker", blocker ? Json(KindOf(*blocker->id).name) : Json()},
              {"findings", Json::array()}};
    for (const Finding& finding : examination.report.Findings())
        json["findings"].push_back(FindingJson(finding));
    const Message& message = examination.message;
    if (!message.text.empty())
        json["message"] = {{"url", message.url},
                           {"headers", message.headers},
                           {"text", message.text},
                           {"body", message.body}};
    return json.dump(1);
}

std::string KindsTable() {
    std::string table = "| finding | check | effect | cause | remedy |\n| --- | --- | --- | --- | --- |";
    for (int i = 0; i < static_cast<int>(Id::Count); ++i) {
        const Kind& kind = KindOf(static_cast<Id>(i));
        table += std::string("\n| `") + kind.name + "` | " + NameOf(kind.check) + " | " +
                 NameOf(kind.effect) + " | " + kind.cause + " | " + kind.remedy + " |";
    }
    return table;
}

} // namespace Zuvan::Lumeq::Tool::Doctor
