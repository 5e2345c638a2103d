#include "LumeqLib/Extra/Collection/Utils/OsVersion.h"

#include "Common/SystemHandles.h"

#include <windows.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

OsVersion ReadOsVersion() {
    OSVERSIONINFOEXW info{};
    static_assert(sizeof info == 284);
    info.dwOSVersionInfoSize = sizeof info;
    const Common::UniqueModule module(LoadLibraryW(L"ntdll.dll"));
    if (module)
        if (auto* getVersion =
                Common::FindFunction<LONG WINAPI(OSVERSIONINFOEXW*)>(module.Get(), "RtlGetVersion"))
            getVersion(&info);
    return {info.dwPlatformId, info.dwMajorVersion * 100 + info.dwMinorVersion};
}

std::uint32_t GetOsVersionNumber() { return ReadOsVersion().number; }

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
