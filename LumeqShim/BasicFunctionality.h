// The basic road's start.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

void BasicStart(const std::wstring& appName);

} // namespace Zuvan::LumeqShim
