#include "LumeqShim/BasicFunctionality.h"

namespace Zuvan::LumeqShim {

void BasicStart(const std::wstring& /*appName*/) {}

} // namespace Zuvan::LumeqShim
