// The reference for Common/Utf: the C++ library's own conversion, made strict.
#pragma once

#include <optional>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// Nothing for an unpaired surrogate.
std::optional<std::string> FacetToUtf8(const std::wstring& text);

/// Nothing for anything but complete, valid UTF-8.
std::optional<std::wstring> FacetFromUtf8(const std::string& utf8);

} // namespace Zuvan::Lumeq::Testing
