// The text of a COM failure.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// The system's message for the code without its line end; a text that names the code if the system has none.
std::wstring ComErrorText(std::int32_t hresult);

/// The same from the system's message, which may be empty. Pure.
std::wstring ComErrorText(std::int32_t hresult, std::wstring systemMessage);

} // namespace Zuvan::Lumeq::Common
