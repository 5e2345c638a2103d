#pragma once

#include "LumeqApi/CallFrame.h"

namespace Zuvan::Lumeq::API {

/// Hands one device over, or skips it with a line in the log. Throws std::out_of_range if it has information
/// but no `dev_biid`, which ends the whole list: receivers of a list rely on that.
void PostDiscoveredDevice(const Call& call, const DiscoveredDevice& device);

} // namespace Zuvan::Lumeq::API
