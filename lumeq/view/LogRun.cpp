#include "lumeq/view/Arguments.h"
#include "lumeq/view/Log.h"
#include "lumeq/view/Messages.h"
#include "lumeq/view/Outcome.h"
#include "lumeq/view/ReadRun.h"
#include "lumeq/view/Reasons.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

ViewedCall CallOfLog(const Catalogue& catalogue, LoggedCall logged) {
    ViewedCall call;
    call.name = logged.name;
    call.time = logged.lines.front().time;
    if (const Json* const operation = catalogue.FindOperation(logged.name)) {
        if (logged.lines.front().severity == "TRACE")
            call.arguments = ArgumentsOfTrace(*operation, logged.lines.front().message);
        call.task = TextOf(*operation, "task");
        call.reasons = ReasonsOfLog(catalogue, *operation, logged.lines);
    }
    if (!call.reasons.empty())
        call.verdict = Verdict::Refused;
    call.log = std::move(logged.lines);
    return call;
}

} // namespace

Run RunOfLog(const Catalogue& catalogue, const std::string& text) {
    std::vector<LogLine> lines = ReadLog(text);
    const bool hasTraces = std::any_of(lines.begin(), lines.end(), [](const LogLine& line) {
        return line.isOfExport && line.severity == "TRACE";
    });
    LoggedCalls logged = SplitIntoCalls(std::move(lines), !hasTraces);
    Run run;
    run.messages = MessagesOfLog(ReadLog(text));
    run.otherLines = std::move(logged.otherLines);
    for (LoggedCall& call : logged.calls)
        run.calls.push_back(CallOfLog(catalogue, std::move(call)));
    if (!hasTraces)
        run.remarks.push_back("The log has no lines at TRACE. It shows refused calls only, and several of "
                              "one export in a row as one.");
    Conclude(catalogue, run);
    return run;
}

} // namespace Zuvan::Lumeq::Tool
