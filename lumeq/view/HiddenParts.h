// The parts of a text that identify a device or a user, found by their looks.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct HiddenPart {
    std::size_t begin;
    std::size_t size;
};

/// UUIDs, runs of 32 and more hexadecimal digits, hardware addresses, the user's name in a path, and the user
/// and password of a URL. In order, none inside another.
std::vector<HiddenPart> PartsToHide(std::string_view text);

} // namespace Zuvan::Lumeq::Tool
