#include "Common/TrackingGate.h"

#include "Common/TrackingSwitch.h"

namespace Zuvan::Lumeq::Common {

namespace {

constinit bool trackingGateRead = false;
std::wstring globalContext;

} // namespace

bool IsTrackingDisabled() {
    if (!trackingGateRead) {
        trackingKnownDisabled.store(ReadTrackingDisabled(), std::memory_order_relaxed);
        trackingGateRead = true;
    }
    return IsTrackingKnownDisabled();
}

const std::wstring& GlobalContext() { return globalContext; }

void SetGlobalContext(const std::wstring& deviceModel) { globalContext = deviceModel; }

} // namespace Zuvan::Lumeq::Common
