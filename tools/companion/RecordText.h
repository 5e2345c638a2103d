// Records as JSON text. Written by hand, because a Windows text may contain unpaired surrogates. They are
// kept here as \uXXXX; a JSON library would refuse them.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <string>
#include <utility>
#include <vector>

namespace Companion {

/// Names in output order, with values that are JSON text already.
using Members = std::vector<std::pair<std::wstring, std::string>>;

std::string JsonText(const std::wstring& text);
std::string JsonText(bool flag);
std::string JsonText(const Zuvan::Lumeq::Extra::Eventing::Variant& value);
std::string JsonText(const Members& members);

/// Names in order of their code units, because the order of a map is arbitrary.
std::string JsonText(const Zuvan::Lumeq::Extra::Eventing::Dictionary& dictionary);
std::string JsonText(const Zuvan::Lumeq::Extra::Eventing::StringDictionary& dictionary);

} // namespace Companion
