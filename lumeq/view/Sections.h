// The parts of the page, as markup.
#pragma once

#include "lumeq/view/Comparison.h"
#include "lumeq/view/Run.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// What names the parts of one run on the page: "" alone, or "run2-".
struct Place {
    std::string prefix;
    std::string data; ///< The id of its data block.

    std::string IdOf(std::size_t call) const { return prefix + "call-" + std::to_string(call + 1); }
};
Place PlaceOf(std::size_t run, std::size_t runs);

/// Counts, refusals by reason, tasks and messages.
std::string SummaryHtml(const Catalogue& catalogue, const Run& run, const Place& place);
/// "34 calls in 1.2 s from 2026-11-22 10:04:03 UTC, on the managed road"
std::string DescriptionHtml(const Run& run);

std::string CallsHtml(const Run& run, const Place& place);
std::string ComparedCallsHtml(const Run& a, const Run& b, const std::vector<ComparedCall>& calls);
/// What belongs to no call.
std::string RestHtml(const Run& run);

/// The details of each call for the script, a line each.
std::string DataBlock(const Run& run, const Place& place);

} // namespace Zuvan::Lumeq::Tool
