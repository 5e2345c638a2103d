#include "Common/TrackingGate.h"

#include "Common/SystemHandles.h"

#include <cstdint>

namespace Zuvan::Lumeq::Common {

namespace {

constinit bool trackingGateRead = false;
constinit bool trackingGateDisabled = false;

bool ReadTrackingDisabled() {
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", 0, KEY_READ,
                      key.Receive()) != ERROR_SUCCESS)
        return false;
    std::uint32_t value = 0;
    DWORD size = sizeof value;
    // Whatever its registry type, up to four bytes that hold 1 disable tracking.
    return RegQueryValueExW(key.Get(), L"TrackingDisabled", nullptr, nullptr, reinterpret_cast<BYTE*>(&value),
                            &size) == ERROR_SUCCESS &&
           value == 1;
}

} // namespace

bool IsTrackingDisabled() {
    if (!trackingGateRead) {
        trackingGateDisabled = ReadTrackingDisabled();
        trackingGateRead = true;
    }
    return trackingGateDisabled;
}

std::wstring& GlobalContext() {
    static std::wstring globalContext;
    return globalContext;
}

} // namespace Zuvan::Lumeq::Common
