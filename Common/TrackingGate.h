// What every layer may ask about the process: whether tracking is disabled, and the device model in force.
// Only under the API lock.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// Whether the user's registry disables tracking. The registry is read once per process, so a later change
/// has no effect.
bool IsTrackingDisabled();

/// The device model of events that have none of their own: the last valid value of SetGlobalContextEx, empty
/// until then.
const std::wstring& GlobalContext();
void SetGlobalContext(const std::wstring& deviceModel);

} // namespace Zuvan::Lumeq::Common
