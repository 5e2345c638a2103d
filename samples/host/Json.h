// What a session file is made of: JSON, texts and dictionaries.
#pragma once

#include <Lumeq/LumeqApi.h>

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace SampleHost {

/// Keeps the order of members, so that what is printed begins with what matters.
using Json = nlohmann::ordered_json;

/// A line of the session that cannot be played.
class BadLine : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws BadLine unless `object` is an object whose members are all among `names`.
void RequireMembers(const Json& object, std::initializer_list<std::string_view> names);

/// A whole number from `least` to `most`. Throws BadLine for anything else.
std::int64_t ReadNumber(const Json& json, std::int64_t least, std::int64_t most);

/// Throws BadLine unless `json` is true or false.
bool ReadFlag(const Json& json);

/// A text: a string; {"repeat": text, "times": number}; {"units": [number, ...]}, its UTF-16 code units, for
/// what JSON cannot spell, such as unpaired surrogates; or an array of texts, which are joined.
std::wstring ReadText(const Json& json);

/// The same in UTF-8; the numbers of "units" are bytes.
std::string ReadNarrowText(const Json& json);

/// An object, or an array of pairs where names take one of the other forms of text.
Zuvan::Lumeq::API::StringDictionary ReadDictionary(const Json& json);

/// Unpaired surrogates become U+FFFD.
std::string ToUtf8(std::wstring_view text);

} // namespace SampleHost
