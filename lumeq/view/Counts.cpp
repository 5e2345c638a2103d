#include "lumeq/view/Counts.h"

#include "lumeq/view/Outcome.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace Zuvan::Lumeq::Tool {

Counts CountsOf(const Run& run) {
    Counts counts;
    counts.calls = run.calls.size();
    for (const ViewedCall& call : run.calls) {
        counts.accepted += call.verdict == Verdict::Accepted;
        counts.refused += call.verdict == Verdict::Refused;
        counts.failed += call.verdict == Verdict::Failed || call.verdict == Verdict::NotMade;
        counts.recorded += call.verdict == Verdict::Accepted && IsRecorded(call);
    }
    return counts;
}

RunSpan SpanOf(const Run& run) {
    RunSpan span;
    const auto add = [&span](std::int64_t time) {
        span.begin = span.begin == 0 ? time : std::min(span.begin, time);
        span.end = std::max(span.end, time);
    };
    for (const ViewedCall& call : run.calls) {
        if (call.time)
            add(*call.time);
        for (const LogLine& line : call.log)
            add(line.time);
    }
    return span;
}

std::string UtcText(std::int64_t milliseconds) {
    using namespace std::chrono;
    const sys_time<std::chrono::milliseconds> time{std::chrono::milliseconds(milliseconds)};
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(floor<seconds>(time - day));
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d UTC", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text;
}

} // namespace Zuvan::Lumeq::Tool
