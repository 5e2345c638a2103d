#include "LumeqLib/Extra/Collection/Utils/SystemTexts.h"

#include "Common/Text.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

constexpr wchar_t True[] = L"true";
constexpr wchar_t False[] = L"false";

/// Handles ASCII only.
bool IsSpace(wchar_t unit) { return std::isspace(static_cast<int>(unit)) != 0; }

constexpr const wchar_t* ChassisTexts[] = {
    L"Computer.Desktop",
    L"Computer.Desktop.LowProfile",
    L"Computer.Desktop.Pizzabox",
    L"Computer.Tower.Mini",
    L"Computer.Tower",
    L"Computer.Portable",
    L"Computer.Laptop",
    L"Computer.Notebook",
    L"Computer.Handheld",
    L"Computer.DockingStation",
    L"Computer.AllInOne",
    L"Computer.Notebook.Sub",
    L"Computer.SpaceSaving",
    L"Computer.Lunchbox",
    L"Computer.MainSystem",
    L"Computer.Expansion",
    L"Computer.SubChassis",
    L"Computer.BusExpansion",
    L"Computer.Peripheral",
    L"Computer.Storage",
    L"Computer.Rackmount",
    L"Computer.Sealed",
};
constexpr std::uint16_t FirstChassisType = 3;

} // namespace

std::wstring BatteryText(std::uint8_t acLineStatus, std::uint8_t batteryFlag) {
    constexpr std::uint8_t OnBattery = 0;
    constexpr std::uint8_t OnMains = 1;
    constexpr std::uint8_t UnknownLine = 255;
    constexpr std::uint8_t NoBattery = 128;
    constexpr std::uint8_t UnknownBattery = 255;

    if (acLineStatus == OnBattery)
        return True;
    if (acLineStatus == UnknownLine || batteryFlag == UnknownBattery)
        return UnknownText;
    return acLineStatus == OnMains && batteryFlag != NoBattery ? True : False;
}

std::wstring TouchText(int maximumTouches) { return maximumTouches >= 1 ? True : False; }

bool CanReportTouches(std::uint32_t osVersionNumber) { return osVersionNumber >= 601; }

bool IsWindowsXp(const OsVersion& version) {
    constexpr std::uint32_t WindowsNt = 2;
    return version.platform == WindowsNt && version.number == 501;
}

std::wstring OsNameText(const std::wstring& caption) {
    std::wstring name;
    std::copy_if(caption.begin(), caption.end(), std::back_inserter(name),
                 [](wchar_t unit) { return unit <= 127; });
    name.erase(std::find_if_not(name.rbegin(), name.rend(), IsSpace).base(), name.end());
    name.erase(name.begin(), std::find_if_not(name.begin(), name.end(), IsSpace));
    return name;
}

std::wstring OsVersionText(const std::wstring& wmiVersion, const std::wstring& kernelFileVersion) {
    const std::size_t lastPart = kernelFileVersion.rfind(L'.');
    return lastPart == std::wstring::npos ? wmiVersion : wmiVersion + kernelFileVersion.substr(lastPart);
}

std::wstring ResolutionText(int width, int height) {
    return Common::DecimalText(width) + L"x" + Common::DecimalText(height);
}

std::wstring ChassisText(std::uint16_t chassisType) {
    if (chassisType < FirstChassisType || chassisType >= FirstChassisType + std::size(ChassisTexts))
        return L"Computer";
    return ChassisTexts[chassisType - FirstChassisType];
}

bool IsMissingUuid(const std::wstring& uuid) {
    return uuid == UnknownText || uuid == L"00000000-0000-0000-0000-000000000000" ||
           uuid == L"FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF";
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
