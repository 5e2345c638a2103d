// What every layer may ask about the process: whether tracking is disabled, and the device model in force.
// Both are touched only under the API lock.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// Whether the user's registry disables tracking. Read once per process: a later change is not noticed.
bool IsTrackingDisabled();

/// The last valid value of SetGlobalContextEx; empty until then.
std::wstring& GlobalContext();

} // namespace Zuvan::Lumeq::Common
