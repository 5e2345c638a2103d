#include "LumeqLib/Extra/Collection/Utils/Registry.h"

#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

class ReadRegistryStringTest : public testing::Test {
protected:
    void SetBytes(DWORD type, const void* data, DWORD size) {
        _machine.SetDword(HKEY_LOCAL_MACHINE, L"Software\\Thing", L"Other", 0);
        ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Thing", L"Name", type, data, size),
                  ERROR_SUCCESS);
    }
    std::wstring Read() { return ReadRegistryString(L"Software\\Thing", L"Name"); }

    Testing::IsolatedMachine _machine;
};

} // namespace

TEST_F(ReadRegistryStringTest, ReturnsTheText) {
    _machine.SetText(HKEY_LOCAL_MACHINE, L"Software\\Thing", L"Name", L"a \u00e9 text");
    EXPECT_EQ(Read(), L"a \u00e9 text");
}

TEST_F(ReadRegistryStringTest, MissingKeyOrValueIsUnknown) {
    EXPECT_EQ(Read(), L"unknown");
    _machine.SetText(HKEY_LOCAL_MACHINE, L"Software\\Thing", L"Other", L"a");
    EXPECT_EQ(Read(), L"unknown");
}

TEST_F(ReadRegistryStringTest, OtherTypesAreUnknown) {
    _machine.SetDword(HKEY_LOCAL_MACHINE, L"Software\\Thing", L"Name", 7);
    EXPECT_EQ(Read(), L"unknown");
    SetBytes(REG_EXPAND_SZ, L"%TMP%", sizeof L"%TMP%");
    EXPECT_EQ(Read(), L"unknown");
    SetBytes(REG_MULTI_SZ, L"a\0", sizeof L"a\0");
    EXPECT_EQ(Read(), L"unknown");
}

TEST_F(ReadRegistryStringTest, TextEndsAtItsFirstTerminator) {
    SetBytes(REG_SZ, L"ab\0cd", sizeof L"ab\0cd");
    EXPECT_EQ(Read(), L"ab");
}

TEST_F(ReadRegistryStringTest, TextWithoutTerminatorIsWhole) {
    // The character after the stored part is not zero, because the system would store a terminator there too.
    SetBytes(REG_SZ, L"abcde", 4 * sizeof(wchar_t));
    EXPECT_EQ(Read(), L"abcd");
}

TEST_F(ReadRegistryStringTest, EmptyTextAndNoDataAreEmpty) {
    SetBytes(REG_SZ, L"", sizeof L"");
    EXPECT_EQ(Read(), L"");
    SetBytes(REG_SZ, L"", 0);
    EXPECT_EQ(Read(), L"");
}

TEST_F(ReadRegistryStringTest, KeyIsOpenedForReadingInTheSixtyFourBitView) {
    static REGSAM asked = 0;
    const Testing::ImportedFunction<decltype(RegOpenKeyExW)> watched(
        "advapi32.dll", "RegOpenKeyExW", [](HKEY root, LPCWSTR, DWORD, REGSAM access, HKEY*) -> LSTATUS {
            EXPECT_EQ(root, HKEY_LOCAL_MACHINE);
            asked = access;
            return ERROR_ACCESS_DENIED;
        });
    EXPECT_EQ(Read(), L"unknown");
    EXPECT_EQ(asked, 0x20119u);
}

TEST_F(ReadRegistryStringTest, TextThatDisappearsAfterItsSizeWasReadIsUnknown) {
    _machine.SetText(HKEY_LOCAL_MACHINE, L"Software\\Thing", L"Name", L"text");
    const Testing::ImportedFunction<decltype(RegQueryValueExW)> failing(
        "advapi32.dll", "RegQueryValueExW",
        [](HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) -> LSTATUS {
            return data ? ERROR_FILE_NOT_FOUND
                        : Testing::RealFunction<decltype(RegQueryValueExW)>(
                              "advapi32.dll", "RegQueryValueExW")(key, name, reserved, type, data, size);
        });
    EXPECT_EQ(Read(), L"unknown");
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
