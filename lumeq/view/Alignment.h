// Which elements of two lists correspond.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Zuvan::Lumeq::Tool {

using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

/// Equal elements of both lists, in rising order of both indices. The longest such pairing, unless the lists
/// are long and differ much: then elements that each list has once divide them first.
Pairs Align(const std::vector<std::string>& a, const std::vector<std::string>& b);

} // namespace Zuvan::Lumeq::Tool
