#include "Common/ThreadNumber.h"

#include <windows.h>

namespace Zuvan::Lumeq::Common {

std::uint32_t ThreadNumber() noexcept { return GetCurrentThreadId(); }

} // namespace Zuvan::Lumeq::Common
