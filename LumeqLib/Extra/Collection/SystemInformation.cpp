#include "LumeqLib/Extra/Collection/SystemInformation.h"

#include "LumeqLib/Extra/Collection/Utils/Locale.h"
#include "LumeqLib/Extra/Collection/Utils/SystemFacts.h"
#include "LumeqLib/Extra/Collection/Utils/SystemTexts.h"

#include <windows.h>

#include <optional>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

using namespace Utils;

std::optional<std::wstring> WmiText(const SystemSources& sources, const wchar_t* className,
                                    const wchar_t* propertyName) {
    return TextIn(sources.WmiProperty(className, propertyName));
}

std::wstring WmiTextOrUnknown(const SystemSources& sources, const wchar_t* className,
                              const wchar_t* propertyName) {
    return WmiText(sources, className, propertyName).value_or(UnknownText);
}

std::wstring TouchEnabled(const SystemSources& sources) {
    constexpr int MaximumTouches = 95; // SM_MAXIMUMTOUCHES
    return CanReportTouches(sources.Version().number) ? TouchText(GetSystemMetrics(MaximumTouches))
                                                      : UnknownText;
}

std::wstring Battery() {
    const std::optional<PowerStatus> status = ReadPowerStatus();
    return status ? BatteryText(status->acLineStatus, status->batteryFlag) : UnknownText;
}

std::wstring OsName(const SystemSources& sources) {
    const auto caption = WmiText(sources, L"Win32_OperatingSystem", L"Caption");
    return caption ? OsNameText(*caption) : UnknownText;
}

std::wstring OsVersionWithBuild(const SystemSources& sources) {
    const auto version = WmiText(sources, L"Win32_OperatingSystem", L"Version");
    return version ? OsVersionText(*version, GetKernelFileVersion()) : UnknownText;
}

std::wstring ScreenResolution() {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    return ResolutionText(width, GetSystemMetrics(SM_CYSCREEN));
}

std::wstring Category(const SystemSources& sources) {
    const auto type = LastNumberIn(sources.WmiProperty(L"Win32_SystemEnclosure", L"ChassisTypes"));
    return type ? ChassisText(*type) : UnknownText;
}

std::wstring Sku(const SystemSources& sources) {
    if (const auto sku = WmiText(sources, L"Win32_ComputerSystemProduct", L"SKUNumber"))
        return *sku;
    const std::wstring registered =
        sources.RegistryString(L"HARDWARE\\DESCRIPTION\\System\\BIOS", L"SystemSKU");
    if (!registered.empty() && registered != UnknownText)
        return registered;
    return WmiText(sources, L"Win32_BIOS", L"SerialNumber").value_or(registered);
}

} // namespace

SystemInformation GetSysInfoBase(const SystemSources& sources) {
    return {
        {L"schema", L"sys_info_base/1.1.0"},
        {L"pc_touchenabled", TouchEnabled(sources)},
        {L"pc_battery", Battery()},
        {L"pc_architecture", L"x64"},
        {L"os_name", OsName(sources)},
        {L"os_version", OsVersionWithBuild(sources)},
        {L"os_architecture", L"bit_64"},
        {L"os_screenresolution", ScreenResolution()},
        {L"os_language", LanguageOf(LOCALE_SYSTEM_DEFAULT)},
        {L"os_country", CountryOf(LOCALE_USER_DEFAULT)},
        {L"pc_manufacturer", WmiTextOrUnknown(sources, L"Win32_ComputerSystem", L"Manufacturer")},
        {L"pc_modelname", WmiTextOrUnknown(sources, L"Win32_ComputerSystem", L"Model")},
        {L"pc_category", Category(sources)},
        {L"pc_sku", Sku(sources)},
    };
}

} // namespace Zuvan::Lumeq::Extra::Collection
