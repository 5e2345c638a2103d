#include "LumeqLib/Extra/Collection/Utils/OsVersion.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

TEST(OsVersion, IsWhatTheSystemAccepts) {
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

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
