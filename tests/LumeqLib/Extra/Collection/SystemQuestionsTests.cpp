// What the record of the machine asks of the system: the receivers of its calls see how often and in what
// order.
#include "LumeqLib/Extra/Collection/SystemInformation.h"

#include "FakeSources.h"
#include "support/ImportedFunction.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <shlobj.h>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

using testing::ElementsAre;

std::vector<std::wstring> asked;
int maximumTouches = 0;
SYSTEM_POWER_STATUS powerStatus{};

/// Notes the version too.
class NotingSources : public Testing::FakeSources {
public:
    Utils::OsVersion Version() const override {
        asked.emplace_back(L"version");
        return version;
    }
    _variant_t WmiProperty(const std::wstring& className, const std::wstring& propertyName) const override {
        asked.push_back(className + L"." + propertyName);
        return FakeSources::WmiProperty(className, propertyName);
    }
    std::wstring RegistryString(const std::wstring& subKey, const std::wstring& valueName) const override {
        asked.push_back(subKey + L":" + valueName);
        return FakeSources::RegistryString(subKey, valueName);
    }
};

/// Notes every question to the system, and answers it.
class QuestionsToTheSystem : public testing::Test {
protected:
    QuestionsToTheSystem() {
        asked.clear();
        maximumTouches = 0;
        powerStatus = {};
    }

    SystemInformation Ask() { return GetSysInfoBase(sources); }

    NotingSources sources;

private:
    static int WINAPI Metric(int index) {
        asked.push_back(L"metric " + std::to_wstring(index));
        return index == 95 ? maximumTouches : 1000 + index;
    }
    static BOOL WINAPI Power(SYSTEM_POWER_STATUS* status) {
        asked.emplace_back(L"power");
        *status = powerStatus;
        return TRUE;
    }
    static HRESULT WINAPI Folder(HWND, int folder, HANDLE, DWORD, wchar_t*) {
        asked.push_back(L"folder " + std::to_wstring(folder));
        return E_FAIL;
    }
    static int WINAPI LocaleInfo(LCID locale, LCTYPE type, wchar_t* text, int size) {
        asked.push_back(L"locale " + std::to_wstring(locale) + L" " + std::to_wstring(type) + L" " +
                        std::to_wstring(size));
        if (text)
            text[0] = L'\0';
        return 1;
    }

    Testing::ImportedFunction<decltype(GetSystemMetrics)> _metrics{"user32.dll", "GetSystemMetrics", &Metric};
    Testing::ImportedFunction<decltype(GetSystemPowerStatus)> _power{"kernel32.dll", "GetSystemPowerStatus",
                                                                     &Power};
    Testing::ImportedFunction<decltype(SHGetFolderPathW)> _folder{"shell32.dll", "SHGetFolderPathW", &Folder};
    Testing::ImportedFunction<decltype(GetLocaleInfoW)> _locale{"kernel32.dll", "GetLocaleInfoW",
                                                                &LocaleInfo};
};

} // namespace

TEST_F(QuestionsToTheSystem, AreTheseInThisOrderEachOnce) {
    sources.wmi[L"Win32_OperatingSystem.Version"] = L"10.0.17763";
    Ask();
    // 0x5A is the country, 0x59 the language, each with a question for its size before it.
    EXPECT_THAT(asked,
                ElementsAre(L"version", L"metric 95", L"power", L"Win32_OperatingSystem.Caption",
                            L"Win32_OperatingSystem.Version", L"folder 37", L"metric 0", L"metric 1",
                            L"locale 2048 90 0", L"locale 2048 90 1", L"locale 2048 89 0",
                            L"locale 2048 89 1", L"locale 1024 90 0", L"locale 1024 90 1",
                            L"Win32_ComputerSystem.Manufacturer", L"Win32_ComputerSystem.Model",
                            L"Win32_SystemEnclosure.ChassisTypes", L"Win32_ComputerSystemProduct.SKUNumber",
                            L"HARDWARE\\DESCRIPTION\\System\\BIOS:SystemSKU", L"Win32_BIOS.SerialNumber"));
}

TEST_F(QuestionsToTheSystem, TouchIsTrueFromOneTouchOn) {
    EXPECT_EQ(Ask().at(L"pc_touchenabled"), L"false");
    maximumTouches = 1;
    EXPECT_EQ(Ask().at(L"pc_touchenabled"), L"true");
    maximumTouches = 10;
    EXPECT_EQ(Ask().at(L"pc_touchenabled"), L"true");
}

TEST_F(QuestionsToTheSystem, ResolutionIsWidthAndThenHeight) {
    EXPECT_EQ(Ask().at(L"os_screenresolution"), L"1000x1001");
}

TEST_F(QuestionsToTheSystem, MainsAndBatteryAreNotMistakenForEachOther) {
    powerStatus.ACLineStatus = 0; // on battery
    powerStatus.BatteryFlag = 255;
    EXPECT_EQ(Ask().at(L"pc_battery"), L"true");
    powerStatus.ACLineStatus = 1; // on mains
    powerStatus.BatteryFlag = 0;
    EXPECT_EQ(Ask().at(L"pc_battery"), L"true");
    powerStatus.BatteryFlag = 128; // no battery
    EXPECT_EQ(Ask().at(L"pc_battery"), L"false");
}

} // namespace Zuvan::Lumeq::Extra::Collection
