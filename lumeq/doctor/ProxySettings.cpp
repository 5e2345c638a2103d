#include "lumeq/doctor/ProxySettings.h"

#include <windows.h>

#include <winhttp.h>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

std::wstring TakeText(wchar_t* text) {
    const std::wstring taken = text ? text : L"";
    GlobalFree(text);
    return taken;
}

} // namespace

ProxySettings ReadProxySettings() {
    WINHTTP_CURRENT_USER_IE_PROXY_CONFIG settings{};
    if (!WinHttpGetIEProxyConfigForCurrentUser(&settings))
        return {};
    return {TakeText(settings.lpszProxy), TakeText(settings.lpszProxyBypass),
            !TakeText(settings.lpszAutoConfigUrl).empty()};
}

} // namespace Zuvan::Lumeq::Tool::Doctor
