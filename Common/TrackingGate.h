// What every layer may ask about the process: whether tracking is disabled, and the device model in force.
// Only under the API lock, unless said otherwise.
#pragma once

#include <atomic>
#include <string>

namespace Zuvan::Lumeq::Common {

/// Whether the user's registry disables tracking. The registry is read once per process, so a later change
/// has no effect.
bool IsTrackingDisabled();

/// Only for the two functions around it.
inline constinit std::atomic<bool> trackingKnownDisabled{false};

/// True once IsTrackingDisabled has returned true. Any thread may ask, with or without the lock: relaxed,
/// because the answer is all that it needs to see.
inline bool IsTrackingKnownDisabled() noexcept {
    return trackingKnownDisabled.load(std::memory_order_relaxed);
}

/// The device model of events that have none of their own: the last valid value of SetGlobalContextEx, empty
/// until then.
const std::wstring& GlobalContext();
void SetGlobalContext(const std::wstring& deviceModel);

} // namespace Zuvan::Lumeq::Common
