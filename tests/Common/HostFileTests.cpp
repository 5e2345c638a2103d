#include "Common/HostFile.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Common {

TEST(HostFile, ExecutableWithoutVersionResourceHasZeroVersion) {
    EXPECT_EQ(GetHostFileVersion(), L"0.0.0.0");
}

TEST(HostFile, ExecutableNameIsTheBaseName) { EXPECT_EQ(GetExecutableName(), L"lumeq_machine_tests.exe"); }

TEST(HostFile, FileWithoutVersionResourceGivesTheFallback) {
    EXPECT_EQ(GetFileVersion(GetHostFilePath(), L"unknown"), L"unknown");
}

} // namespace Zuvan::Lumeq::Common
