// The text of a COM failure.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// The system's message for the code where there is one, without its line end; otherwise a text that names
/// the code.
std::wstring ComErrorText(std::int32_t hresult);

/// The same from what the system had to say, empty for nothing. Pure.
std::wstring ComErrorText(std::int32_t hresult, std::wstring systemMessage);

} // namespace Zuvan::Lumeq::Common
