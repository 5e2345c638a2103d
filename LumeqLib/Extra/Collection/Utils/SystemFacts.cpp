#include "LumeqLib/Extra/Collection/Utils/SystemFacts.h"

#include "Common/HostFile.h"
#include "LumeqLib/Extra/Collection/Utils/SystemTexts.h"

#include <windows.h>

#include <oleauto.h>
#include <shlobj.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

SAFEARRAY* ArrayIn(const VARIANT& value) {
    if ((value.vt & VT_ARRAY) == 0)
        return nullptr;
    if ((value.vt & VT_BYREF) == 0)
        return value.parray;
    return value.pparray ? *value.pparray : nullptr;
}

/// Whether elements are plain numbers of at most eight bytes, so that reading one takes no ownership.
bool HoldsIntegers(SAFEARRAY* array) {
    VARTYPE type = VT_EMPTY;
    if (FAILED(SafeArrayGetVartype(array, &type)))
        return false;
    switch (type) {
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<PowerStatus> ReadPowerStatus() {
    SYSTEM_POWER_STATUS status{};
    if (!GetSystemPowerStatus(&status))
        return std::nullopt;
    return PowerStatus{status.ACLineStatus, status.BatteryFlag};
}

std::optional<std::wstring> FindSystemFolder() {
    wchar_t folder[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_SYSTEM, nullptr, SHGFP_TYPE_CURRENT, folder)))
        return std::nullopt;
    return folder;
}

std::wstring GetKernelFileVersion() { return KernelFileVersionIn(FindSystemFolder()); }

std::wstring KernelFileVersionIn(const std::optional<std::wstring>& systemFolder) {
    return systemFolder ? Common::GetFileVersion(*systemFolder + L"\\kernel32.dll", UnknownText)
                        : UnknownText;
}

std::optional<std::wstring> TextIn(const VARIANT& value) {
    if (value.vt != VT_BSTR)
        return std::nullopt;
    return value.bstrVal ? value.bstrVal : L"";
}

std::optional<std::uint16_t> LastNumberIn(const VARIANT& value) {
    SAFEARRAY* array = ArrayIn(value);
    LONG first = 0;
    LONG last = 0;
    if (!array || SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &first)) ||
        FAILED(SafeArrayGetUBound(array, 1, &last)))
        return std::nullopt;

    std::uint64_t number = 0;
    if (HoldsIntegers(array))
        for (LONG i = first; i <= last; ++i)
            SafeArrayGetElement(array, &i, &number);
    return static_cast<std::uint16_t>(number);
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
