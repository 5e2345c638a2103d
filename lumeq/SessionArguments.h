// The arguments of a call as the library sees them.
#pragma once

#include "lumeq/Catalogue.h"

#include <Lumeq/LumeqApi.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// None for null. A text that the library takes by pointer ends at its first zero.
std::optional<std::wstring> TextArgument(const Json& argument, const Json& call);
std::int32_t NumberArgument(const Json& argument, const Json& call);
/// Empty for null.
API::StringDictionary FieldsArgument(const Json& argument, const Json& call);
std::vector<API::StringDictionary> DevicesArgument(const Json& argument, const Json& call);

/// What is checked of the text of a URL: all up to the query.
std::wstring WithoutQuery(const std::wstring& url);

/// A value that an event class composes of a template's arguments, and the argument of each of its
/// characters.
struct ComposedText {
    std::wstring text;
    std::vector<std::string> arguments; ///< Empty for a character of the template.
};
ComposedText Compose(const std::string& pattern, const Json& operation, const Json& call);

} // namespace Zuvan::Lumeq::Tool
