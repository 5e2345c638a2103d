// The text of the basic road's message. Pure functions.
#pragma once

#include <string>
#include <unordered_map>

namespace Zuvan::LumeqShim {

using MessageDictionary = std::unordered_map<std::wstring, std::wstring>;

/// One flat JSON object of strings, in the dictionary's own order, without spaces. Escapes only quotation
/// marks and backslashes, because the post replaces what cannot be printed.
std::wstring SerializeFlatJson(MessageDictionary message);

/// The GUID without its braces and in lower case, as the message contains it.
std::wstring UuidFromGuid(const std::wstring& bracedGuid);

} // namespace Zuvan::LumeqShim
