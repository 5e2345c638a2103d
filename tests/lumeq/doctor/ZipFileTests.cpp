#include "lumeq/doctor/ZipFile.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::Tool::Doctor {

// doctor_bundle_tests.py reads a whole file with another implementation.
TEST(ZipFile, ChecksumIsTheUsualOne) {
    EXPECT_EQ(Crc32("123456789"), 0xCBF43926U);
    EXPECT_EQ(Crc32(""), 0U);
}

TEST(ZipFile, EmptyFileIsItsEndAlone) {
    EXPECT_EQ(ZipFile().Finished(), std::string("PK\5\6") + std::string(18, '\0'));
}

} // namespace Zuvan::Lumeq::Tool::Doctor
