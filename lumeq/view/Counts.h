// The figures of a run.
#pragma once

#include "lumeq/view/Run.h"

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Tool {

struct Counts {
    std::size_t calls = 0;
    std::size_t accepted = 0; ///< Recorded ones too.
    std::size_t refused = 0;
    std::size_t failed = 0; ///< Or not made.
    std::size_t recorded = 0;
};
Counts CountsOf(const Run& run);

/// From the first to the last time that is known; zeros without one. As in LogLine.
struct RunSpan {
    std::int64_t begin = 0, end = 0;
};
RunSpan SpanOf(const Run& run);

/// "2026-11-22 10:04:03 UTC"
std::string UtcText(std::int64_t milliseconds);

} // namespace Zuvan::Lumeq::Tool
