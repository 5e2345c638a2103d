#include "Common/TrackingSwitch.h"

#include "Common/SystemHandles.h"

#include <cstdint>

namespace Zuvan::Lumeq::Common {

bool ReadTrackingDisabled() {
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", 0, KEY_READ,
                      key.Receive()) != ERROR_SUCCESS)
        return false;
    std::uint32_t value = 0;
    DWORD size = sizeof value;
    // A value of any registry type disables tracking if it has at most four bytes and they contain 1.
    return RegQueryValueExW(key.Get(), L"TrackingDisabled", nullptr, nullptr, reinterpret_cast<BYTE*>(&value),
                            &size) == ERROR_SUCCESS &&
           value == 1;
}

} // namespace Zuvan::Lumeq::Common
