// The parts of a session file: JSON, texts and dictionaries.
#pragma once

#include <Lumeq/LumeqApi.h>

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace SampleHost {

/// Keeps the order of members, so that printed lines begin with the important ones.
using Json = nlohmann::ordered_json;

/// A malformed line of the session.
class BadLine : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws BadLine unless `object` is an object and `names` contains all its members.
void RequireMembers(const Json& object, std::initializer_list<std::string_view> names);

/// A whole number from `least` to `most`. Throws BadLine for anything else.
std::int64_t ReadNumber(const Json& json, std::int64_t least, std::int64_t most);

/// Throws BadLine unless `json` is true or false.
bool ReadFlag(const Json& json);

/// A text: a string; {"repeat": text, "times": number}; {"units": [number, ...]}, UTF-16 code units for texts
/// that JSON cannot express, such as unpaired surrogates; or an array of texts, which are joined.
std::wstring ReadText(const Json& json);

/// The same in UTF-8; the numbers of "units" are bytes.
std::string ReadNarrowText(const Json& json);

/// An object, or an array of pairs if names need one of the other forms of text.
Zuvan::Lumeq::API::StringDictionary ReadDictionary(const Json& json);

/// Unpaired surrogates become U+FFFD.
std::string ToUtf8(std::wstring_view text);

} // namespace SampleHost
