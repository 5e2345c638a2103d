#include "LumeqLib/Extra/Collection/SystemInformation.h"

#include "FakeSources.h"
#include "support/Firmware.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <powrprof.h>
#include <shlobj.h>
#include <vector>
#include <wbemcli.h>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;

constexpr wchar_t SkuNumber[] = L"Win32_ComputerSystemProduct.SKUNumber";
constexpr wchar_t RegisteredSku[] = L"HARDWARE\\DESCRIPTION\\System\\BIOS:SystemSKU";
constexpr wchar_t SerialNumber[] = L"Win32_BIOS.SerialNumber";

std::wstring FieldOf(const Testing::FakeSources& sources, const wchar_t* key) {
    return GetSysInfoBase(sources).at(key);
}

_variant_t ChassisTypes(const std::vector<LONG>& types) {
    _variant_t value;
    value.vt = VT_ARRAY | VT_I4;
    value.parray = SafeArrayCreateVector(VT_I4, 0, static_cast<ULONG>(types.size()));
    for (LONG i = 0; i < static_cast<LONG>(types.size()); ++i)
        SafeArrayPutElement(value.parray, &i, const_cast<LONG*>(&types[static_cast<std::size_t>(i)]));
    return value;
}

/// A text in the kernel's version resource.
std::wstring KernelVersionText() {
    wchar_t path[MAX_PATH] = {};
    GetSystemDirectoryW(path, MAX_PATH);
    wcscat(path, L"\\kernel32.dll");
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path, nullptr));
    GetFileVersionInfoW(path, 0, static_cast<DWORD>(block.size()), block.data());
    void* text = nullptr;
    UINT length = 0;
    VerQueryValueW(block.data(), L"\\StringFileInfo\\040904b0\\FileVersion", &text, &length);
    return text ? static_cast<const wchar_t*>(text) : L"";
}

/// Empty if there is none.
std::wstring MachineText(const wchar_t* key, const wchar_t* name) {
    wchar_t text[256] = {};
    DWORD size = sizeof text;
    RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

std::wstring WindowsNtValue(const wchar_t* name) {
    return MachineText(L"Software\\Microsoft\\Windows NT\\CurrentVersion", name);
}

/// Wine's WMI uses its own texts if the firmware has none.
std::wstring Or(const std::wstring& text, const std::wstring& otherwise) {
    return text.empty() ? otherwise : text;
}

} // namespace

namespace {

/// The real machine with its WMI disabled.
class RealSystemWithoutWmi : public testing::Test {
protected:
    RealSystemWithoutWmi() { _machine.WriteFactorySettings(); }

    void ExpectUnknown(const SystemInformation& record, const std::wstring& sku) const {
        const SystemInformation expected{{L"os_name", L"unknown"},         {L"os_version", L"unknown"},
                                         {L"pc_manufacturer", L"unknown"}, {L"pc_modelname", L"unknown"},
                                         {L"pc_category", L"unknown"},     {L"pc_sku", sku}};
        for (const auto& [key, value] : expected)
            EXPECT_EQ(record.at(key), value) << key;
        // The other fields do not use WMI.
        EXPECT_EQ(record.size(), 14U);
        EXPECT_EQ(record.at(L"schema"), L"sys_info_base/1.1.0");
        EXPECT_THAT(record.at(L"os_screenresolution"), HasSubstr(L"x"));
        EXPECT_NE(record.at(L"os_language"), L"unknown");
        EXPECT_NE(record.at(L"os_country"), L"unknown");
        EXPECT_NE(record.at(L"pc_battery"), L"unknown");
    }
    std::vector<std::string> Warnings() const { return Testing::LogMessages(_machine.LogFile(), "WARNING"); }

    Testing::IsolatedMachine _machine;
};

HRESULT STDAPICALLTYPE CreateAllButTheLocator(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid,
                                              void** instance) {
    if (IsEqualGUID(classId, CLSID_WbemLocator))
        return REGDB_E_CLASSNOTREG;
    return Testing::RealFunction<decltype(CoCreateInstance)>("ole32.dll", "CoCreateInstance")(
        classId, outer, context, iid, instance);
}

HRESULT STDAPICALLTYPE RefuseBlanket(IUnknown*, DWORD, DWORD, OLECHAR*, DWORD, DWORD,
                                     RPC_AUTH_IDENTITY_HANDLE, DWORD) {
    return E_ACCESSDENIED;
}

// One each for the caption, version, manufacturer, model, chassis, SKU number and serial number.
constexpr std::size_t Questions = 7;

} // namespace

TEST_F(RealSystemWithoutWmi, LocatorThatCannotBeMadeLeavesTheFieldsUnknown) {
    {
        const Testing::ImportedFunction<decltype(CoCreateInstance)> refused("ole32.dll", "CoCreateInstance",
                                                                            &CreateAllButTheLocator);
        ExpectUnknown(GetSysInfoBase(), L"unknown");
    }
    EXPECT_EQ(Warnings(), std::vector<std::string>(Questions, "CreateInstance"));
    EXPECT_NE(GetSysInfoBase().at(L"os_name"), L"unknown");
}

TEST_F(RealSystemWithoutWmi, ServicesThatRefuseTheirBlanketLeaveTheFieldsUnknown) {
    {
        const Testing::ImportedFunction<decltype(CoSetProxyBlanket)> refused("ole32.dll", "CoSetProxyBlanket",
                                                                             &RefuseBlanket);
        ExpectUnknown(GetSysInfoBase(), L"unknown");
    }
    EXPECT_EQ(Warnings(), std::vector<std::string>(Questions, "CoSetProxyBlanket"));
    EXPECT_NE(GetSysInfoBase().at(L"os_name"), L"unknown");
}

TEST_F(RealSystemWithoutWmi, SkuIsStillTheRegistrys) {
    _machine.SetText(HKEY_LOCAL_MACHINE, L"HARDWARE\\DESCRIPTION\\System\\BIOS", L"SystemSKU", L"SKU-7");
    const Testing::ImportedFunction<decltype(CoCreateInstance)> refused("ole32.dll", "CoCreateInstance",
                                                                        &CreateAllButTheLocator);
    ExpectUnknown(GetSysInfoBase(), L"SKU-7");
    EXPECT_EQ(Warnings(), std::vector<std::string>(Questions - 1, "CreateInstance"));
}

TEST(SystemInformation, HasItsFourteenFieldsWhateverIsFound) {
    Testing::FakeSources sources;
    std::vector<std::wstring> keys;
    for (const auto& [key, value] : GetSysInfoBase(sources)) {
        keys.push_back(key);
        EXPECT_NE(value, L"") << key;
    }
    EXPECT_THAT(keys, UnorderedElementsAre(L"schema", L"pc_touchenabled", L"pc_battery", L"pc_architecture",
                                           L"os_name", L"os_version", L"os_architecture",
                                           L"os_screenresolution", L"os_language", L"os_country",
                                           L"pc_manufacturer", L"pc_modelname", L"pc_category", L"pc_sku"));
}

TEST(SystemInformation, ConstantFields) {
    Testing::FakeSources sources;
    const SystemInformation record = GetSysInfoBase(sources);
    EXPECT_EQ(record.at(L"schema"), L"sys_info_base/1.1.0");
    EXPECT_EQ(record.at(L"pc_architecture"), L"x64");
    EXPECT_EQ(record.at(L"os_architecture"), L"bit_64");
}

TEST(SystemInformation, WithoutWmiItsFieldsAreUnknown) {
    Testing::FakeSources sources;
    const SystemInformation record = GetSysInfoBase(sources);
    for (const wchar_t* key :
         {L"os_name", L"os_version", L"pc_manufacturer", L"pc_modelname", L"pc_category", L"pc_sku"})
        EXPECT_EQ(record.at(key), L"unknown") << key;
}

TEST(SystemInformation, ValuesOtherThanTextAreUnknown) {
    Testing::FakeSources sources;
    for (const wchar_t* question : {L"Win32_OperatingSystem.Caption", L"Win32_OperatingSystem.Version",
                                    L"Win32_ComputerSystem.Manufacturer", L"Win32_ComputerSystem.Model",
                                    L"Win32_SystemEnclosure.ChassisTypes", SkuNumber, SerialNumber})
        sources.wmi[question] = 7L;
    const SystemInformation record = GetSysInfoBase(sources);
    for (const wchar_t* key :
         {L"os_name", L"os_version", L"pc_manufacturer", L"pc_modelname", L"pc_category", L"pc_sku"})
        EXPECT_EQ(record.at(key), L"unknown") << key;
}

TEST(SystemInformation, OsNameIsTrimmedAndMakerAndModelAreNot) {
    Testing::FakeSources sources;
    sources.wmi[L"Win32_OperatingSystem.Caption"] = L" Windows\u00ae 10 ";
    sources.wmi[L"Win32_ComputerSystem.Manufacturer"] = L" M\u00e4ker\u00ae ";
    sources.wmi[L"Win32_ComputerSystem.Model"] = L" Model ";
    const SystemInformation record = GetSysInfoBase(sources);
    EXPECT_EQ(record.at(L"os_name"), L"Windows 10");
    EXPECT_EQ(record.at(L"pc_manufacturer"), L" M\u00e4ker\u00ae ");
    EXPECT_EQ(record.at(L"pc_modelname"), L" Model ");
}

TEST(SystemInformation, OsVersionIsUnchangedBeforeItsLastPart) {
    Testing::FakeSources sources;
    sources.wmi[L"Win32_OperatingSystem.Version"] = L" 10.0.17763 ";
    EXPECT_THAT(FieldOf(sources, L"os_version"), StartsWith(L" 10.0.17763 ."));
}

TEST(SystemInformation, TouchIsUnknownBeforeWindows7) {
    Testing::FakeSources sources;
    sources.version = {2, 600};
    EXPECT_EQ(FieldOf(sources, L"pc_touchenabled"), L"unknown");
}

TEST(SystemInformation, TouchIsFalseOnWindows8WithoutATouchScreen) {
    if (GetSystemMetrics(95) != 0)
        GTEST_SKIP() << "this machine has a touch screen";
    Testing::FakeSources sources;
    sources.version = {2, 602};
    EXPECT_EQ(FieldOf(sources, L"pc_touchenabled"), L"false");
}

TEST(SystemInformation, LastChassisTypeWins) {
    Testing::FakeSources sources;
    sources.wmi[L"Win32_SystemEnclosure.ChassisTypes"] = ChassisTypes({8, 10});
    EXPECT_EQ(FieldOf(sources, L"pc_category"), L"Computer.Notebook");
}

TEST(SystemInformation, ChassisTypesOneTwoAndNoneAreAComputer) {
    Testing::FakeSources sources;
    for (const std::vector<LONG>& types : {std::vector<LONG>{1}, {2}, {}}) {
        sources.wmi[L"Win32_SystemEnclosure.ChassisTypes"] = ChassisTypes(types);
        EXPECT_EQ(FieldOf(sources, L"pc_category"), L"Computer");
    }
}

TEST(Sku, NumberComesFirstEvenIfEmpty) {
    Testing::FakeSources sources;
    sources.registry[RegisteredSku] = L"registered";
    for (const wchar_t* number : {L"number", L"", L"unknown"}) {
        sources.wmi[SkuNumber] = number;
        sources.questions.clear();
        EXPECT_EQ(FieldOf(sources, L"pc_sku"), number);
        EXPECT_THAT(sources.questions, Not(Contains(RegisteredSku)));
        EXPECT_THAT(sources.questions, Not(Contains(SerialNumber)));
    }
}

TEST(Sku, RegistryComesSecondAndTheBiosIsNotAsked) {
    Testing::FakeSources sources;
    sources.registry[RegisteredSku] = L"registered";
    sources.wmi[SerialNumber] = L"serial";
    EXPECT_EQ(FieldOf(sources, L"pc_sku"), L"registered");
    EXPECT_THAT(sources.questions, Contains(SkuNumber));
    EXPECT_THAT(sources.questions, Not(Contains(SerialNumber)));
}

TEST(Sku, SerialNumberComesThird) {
    Testing::FakeSources sources;
    sources.wmi[SerialNumber] = L"serial";
    EXPECT_EQ(FieldOf(sources, L"pc_sku"), L"serial");
    sources.registry[RegisteredSku] = L"";
    EXPECT_EQ(FieldOf(sources, L"pc_sku"), L"serial");
    sources.wmi[SerialNumber] = L"";
    EXPECT_EQ(FieldOf(sources, L"pc_sku"), L"");
}

TEST(Sku, WithoutAnySourceIsTheRegistrysText) {
    Testing::FakeSources sources;
    EXPECT_EQ(FieldOf(sources, L"pc_sku"), L"unknown");
    sources.registry[RegisteredSku] = L"";
    EXPECT_EQ(FieldOf(sources, L"pc_sku"), L"");
}

TEST(Sku, IsReadFromTheRealRegistry) {
    Testing::IsolatedMachine machine;
    machine.SetText(HKEY_LOCAL_MACHINE, L"HARDWARE\\DESCRIPTION\\System\\BIOS", L"SystemSKU", L"SKU-7");
    const Utils::SystemSources sources;
    if (sources.WmiProperty(L"Win32_ComputerSystemProduct", L"SKUNumber").vt == VT_BSTR)
        GTEST_SKIP() << "this machine's firmware has a number of its own";
    EXPECT_EQ(GetSysInfoBase().at(L"pc_sku"), L"SKU-7");
}

TEST(RealSystemInformation, OsIsWhatTheRegistrySays) {
    const SystemInformation record = GetSysInfoBase();
    EXPECT_THAT(record.at(L"os_name"), StartsWith(WindowsNtValue(L"ProductName")));
    EXPECT_THAT(record.at(L"os_version"),
                StartsWith(WindowsNtValue(L"CurrentVersion") + L"." + WindowsNtValue(L"CurrentBuildNumber")));
}

TEST(RealSystemInformation, OsVersionEndsInTheLastPartOfTheKernelsVersionText) {
    const std::wstring kernel = KernelVersionText();
    ASSERT_THAT(kernel, HasSubstr(L"."));
    EXPECT_THAT(GetSysInfoBase().at(L"os_version"), EndsWith(kernel.substr(kernel.rfind(L'.'))));
}

TEST(RealSystemInformation, ResolutionIsThePrimaryMonitors) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ASSERT_TRUE(GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &monitor));
    EXPECT_EQ(GetSysInfoBase().at(L"os_screenresolution"),
              std::to_wstring(monitor.rcMonitor.right) + L"x" + std::to_wstring(monitor.rcMonitor.bottom));
}

TEST(RealSystemInformation, LanguageAndCountryAreThoseOfTheLocaleNames) {
    wchar_t system[LOCALE_NAME_MAX_LENGTH] = {};
    GetSystemDefaultLocaleName(system, LOCALE_NAME_MAX_LENGTH);
    wchar_t user[LOCALE_NAME_MAX_LENGTH] = {};
    GetUserDefaultLocaleName(user, LOCALE_NAME_MAX_LENGTH);
    const SystemInformation record = GetSysInfoBase();
    EXPECT_EQ(record.at(L"os_language"), system);
    EXPECT_THAT(user, EndsWith(L"-" + record.at(L"os_country")));
}

TEST(RealSystemInformation, BatteryIsWhatThePowerManagerSays) {
    SYSTEM_BATTERY_STATE state{};
    ASSERT_EQ(CallNtPowerInformation(SystemBatteryState, nullptr, 0, &state, sizeof state), 0);
    EXPECT_EQ(GetSysInfoBase().at(L"pc_battery"), state.BatteryPresent ? L"true" : L"false");
}

TEST(RealSystemInformation, TouchIsWhatTheDigitizerSays) {
    constexpr int Digitizer = 94; // SM_DIGITIZER
    constexpr int Ready = 0x80;
    EXPECT_EQ(GetSysInfoBase().at(L"pc_touchenabled"),
              (GetSystemMetrics(Digitizer) & Ready) != 0 ? L"true" : L"false");
}

TEST(RealSystemInformation, CategoryIsTheFirmwaresChassis) {
    const std::uint16_t type = Testing::FirmwareChassisType();
    if (type > 2)
        GTEST_SKIP() << "expects a virtual machine's chassis, not type " << type;
    EXPECT_EQ(GetSysInfoBase().at(L"pc_category"), L"Computer");
}

TEST(RealSystemInformation, MakerAndModelAreTheFirmwares) {
    const SystemInformation record = GetSysInfoBase();
    EXPECT_EQ(record.at(L"pc_manufacturer"), Or(Testing::FirmwareMaker(), L"The Wine Project"));
    EXPECT_EQ(record.at(L"pc_modelname"), Or(Testing::FirmwareModel(), L"Wine"));
}

TEST(RealSystemInformation, SkuIsTheRegistrysOrTheFirmwaresSerialNumber) {
    if (Utils::GetWmiProperty(L"Win32_ComputerSystemProduct", L"SKUNumber").vt == VT_BSTR)
        GTEST_SKIP() << "this machine's firmware has a number of its own";
    const std::wstring registered = MachineText(L"HARDWARE\\DESCRIPTION\\System\\BIOS", L"SystemSKU");
    EXPECT_EQ(GetSysInfoBase().at(L"pc_sku"), Or(registered, Or(Testing::FirmwareSerialNumber(), L"0")));
}

TEST(SystemInformation, BatteryIsUnknownWithoutAPowerStatus) {
    const Testing::ImportedFunction<decltype(GetSystemPowerStatus)> failing(
        "kernel32.dll", "GetSystemPowerStatus", [](SYSTEM_POWER_STATUS*) -> BOOL { return FALSE; });
    EXPECT_EQ(FieldOf(Testing::FakeSources(), L"pc_battery"), L"unknown");
}

TEST(SystemInformation, OsVersionWithoutTheSystemFolderIsUnchanged) {
    const Testing::ImportedFunction<decltype(SHGetFolderPathW)> failing(
        "shell32.dll", "SHGetFolderPathW",
        [](HWND, int, HANDLE, DWORD, wchar_t*) -> HRESULT { return E_FAIL; });
    Testing::FakeSources sources;
    sources.wmi[L"Win32_OperatingSystem.Version"] = L"10.0.17763";
    EXPECT_EQ(FieldOf(sources, L"os_version"), L"10.0.17763");
}

} // namespace Zuvan::Lumeq::Extra::Collection
