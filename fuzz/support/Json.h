// JSON as a strict parser reads it.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Zuvan::Lumeq::Fuzzing {

using JsonFields = std::vector<std::pair<std::string, std::string>>;

/// The fields, sorted, of an object that contains only texts; a key may occur twice. None for any other text.
std::optional<JsonFields> FieldsOfFlatObject(const std::string& text);

/// The body in {"messages":[{"body":"..."}]}. None for any other text.
std::optional<std::string> BodyOfOnlyMessage(const std::string& text);

} // namespace Zuvan::Lumeq::Fuzzing
