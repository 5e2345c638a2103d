#include "LumeqLib/Extra/Collection/Utils/OsVersion.h"

#include "support/ImportedFunction.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

TEST(OsVersion, MatchesTheSystem) {
    const OsVersion version = ReadOsVersion();
    EXPECT_EQ(version.platform, DWORD{VER_PLATFORM_WIN32_NT});
    EXPECT_EQ(version.number, GetOsVersionNumber());

    OSVERSIONINFOEXW same{};
    same.dwOSVersionInfoSize = sizeof same;
    same.dwMajorVersion = version.number / 100;
    same.dwMinorVersion = version.number % 100;
    const DWORDLONG equal =
        VerSetConditionMask(VerSetConditionMask(0, VER_MAJORVERSION, VER_EQUAL), VER_MINORVERSION, VER_EQUAL);
    EXPECT_TRUE(VerifyVersionInfoW(&same, VER_MAJORVERSION | VER_MINORVERSION, equal));
}

TEST(OsVersion, WithoutTheLibraryIsZero) {
    const Testing::ImportedFunction<decltype(LoadLibraryW)> missing(
        "kernel32.dll", "LoadLibraryW", [](const wchar_t*) -> HMODULE { return nullptr; });
    EXPECT_EQ(ReadOsVersion().platform, 0U);
    EXPECT_EQ(GetOsVersionNumber(), 0U);
}

TEST(OsVersion, WithoutTheFunctionIsZero) {
    const Testing::ImportedFunction<decltype(GetProcAddress)> missing(
        "kernel32.dll", "GetProcAddress", [](HMODULE, const char*) -> FARPROC { return nullptr; });
    EXPECT_EQ(ReadOsVersion().platform, 0U);
    EXPECT_EQ(GetOsVersionNumber(), 0U);
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
