// Records as JSON text. Written by hand because a Windows text may hold unpaired surrogates: here they stay
// what they are, as \uXXXX, where a JSON library would refuse them.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <string>
#include <utility>
#include <vector>

namespace Companion {

/// Names, in the order in which they are to stand, with values that are JSON text already.
using Members = std::vector<std::pair<std::wstring, std::string>>;

std::string JsonText(const std::wstring& text);
std::string JsonText(bool flag);
std::string JsonText(const Zuvan::Lumeq::Extra::Eventing::Variant& value);
std::string JsonText(const Members& members);

/// Names in order of their code units, since a map's own order means nothing.
std::string JsonText(const Zuvan::Lumeq::Extra::Eventing::Dictionary& dictionary);
std::string JsonText(const Zuvan::Lumeq::Extra::Eventing::StringDictionary& dictionary);

} // namespace Companion
