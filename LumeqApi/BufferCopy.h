#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::API {

/// wcscpy_s with its results: 0; 22 for a null buffer or one of no size; 34 for one that is too small, which
/// then holds an empty text. Never reaches the runtime's handler for invalid parameters, which is the host's
/// and may end the process. `size` in characters, terminator included.
std::int32_t CopyToBuffer(wchar_t* buffer, std::size_t size, const std::wstring& text) noexcept;

} // namespace Zuvan::Lumeq::API
