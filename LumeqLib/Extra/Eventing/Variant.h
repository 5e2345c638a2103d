// Names of Variant's types, and helpers that fill a record.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Extra::Eventing {

/// "Null", "String", "StringList" or "Dictionary"; for any other number a text that contains it. Never fails.
std::string ValueTypeName(Variant::ValueType type);
std::wstring ValueTypeNameWide(Variant::ValueType type);

/// Adds every pair as a String. Throws ArgumentException and adds nothing if a key exists already.
void AddStringDictionary(Dictionary& target, const StringDictionary& stringDictionary);

/// The elements with `separator` between them; nothing for an empty list.
std::wstring JoinStrings(const std::vector<std::wstring>& elements, const std::wstring& separator);

} // namespace Zuvan::Lumeq::Extra::Eventing
