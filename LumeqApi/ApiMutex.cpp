#include "LumeqApi/ApiMutex.h"

#include <system_error>

namespace Zuvan::Lumeq::API {

void ApiMutex::lock() {
    const std::uint32_t caller = Common::ThreadNumber();
    if (IsHeldBy(caller))
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
    _mutex.lock();
    SetHolder(caller);
}

} // namespace Zuvan::Lumeq::API
