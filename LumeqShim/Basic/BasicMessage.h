// The text of the basic road's message. Pure functions.
#pragma once

#include <string>
#include <unordered_map>

namespace Zuvan::LumeqShim {

using MessageDictionary = std::unordered_map<std::wstring, std::wstring>;

/// One flat JSON object of texts, in the dictionary's own order, without blanks. Only quotation marks and
/// backslashes are escaped: what cannot be printed is dealt with where the message is posted.
std::wstring SerializeFlatJson(MessageDictionary message);

/// A GUID as the message carries it: without its braces and in lower case.
std::wstring UuidFromGuid(const std::wstring& bracedGuid);

} // namespace Zuvan::LumeqShim
