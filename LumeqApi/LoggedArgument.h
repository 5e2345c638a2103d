// How each type of argument reaches the log: as a text for %s, or as it is for %d, %p and %S.
#pragma once

#include "Common/Format.h"
#include "LumeqApi/Enumerations.h"
#include "LumeqApi/Validation.h"

#include <cstdint>
#include <string>
#include <type_traits>

namespace Zuvan::Lumeq::API {

inline std::wstring Render(const wchar_t* text) { return QuoteArg(text); }
inline std::wstring Render(const std::wstring& text) { return QuoteArg(text); }
inline std::wstring Render(const StringDictionary* dictionary) { return CountArg(dictionary); }
inline std::wstring Render(const StringDictionary& dictionary) { return CountArg(dictionary); }
inline std::wstring Render(bool flag) { return flag ? L"1" : L"0"; }
inline std::wstring Render(unsigned char byte) { return std::to_wstring(byte); }
inline std::int32_t Render(std::int32_t number) { return number; }
inline const void* Render(TaskHandle handle) { return handle; }
inline Common::NarrowArgument Render(const std::string& text) { return Common::NarrowArgument(text.c_str()); }

template <class Enumeration>
requires std::is_enum_v<Enumeration> std::wstring Render(Enumeration value) { return ApiText(value); }

/// What printf takes of a rendering.
inline const wchar_t* PrintfArgument(const std::wstring& text) { return text.c_str(); }
inline const char* PrintfArgument(const Common::NarrowArgument& text) { return text.Text(); }
template <class Plain>
requires std::is_scalar_v<Plain> Plain PrintfArgument(Plain value) { return value; }

} // namespace Zuvan::Lumeq::API
