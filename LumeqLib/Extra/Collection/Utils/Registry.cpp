#include "LumeqLib/Extra/Collection/Utils/Registry.h"

#include "Common/SystemHandles.h"
#include "LumeqLib/Extra/Collection/Utils/SystemTexts.h"

#include <windows.h>

#include <vector>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

std::wstring ReadRegistryString(const std::wstring& subKey, const std::wstring& valueName) {
    Common::UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, subKey.c_str(), 0, KEY_READ | KEY_WOW64_64KEY, key.Receive()) !=
        ERROR_SUCCESS)
        return UnknownText;

    DWORD type = REG_NONE;
    DWORD size = 0; // bytes
    if (RegQueryValueExW(key.Get(), valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        type != REG_SZ)
        return UnknownText;

    // Room for one more character, because the registry does not guarantee a terminator.
    std::vector<wchar_t> text(size / sizeof(wchar_t) + 2);
    if (RegQueryValueExW(key.Get(), valueName.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()),
                         &size) != ERROR_SUCCESS)
        return UnknownText;
    return text.data();
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
