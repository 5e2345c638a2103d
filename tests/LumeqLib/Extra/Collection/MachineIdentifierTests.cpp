#include "LumeqLib/Extra/Collection/MachineIdentifier.h"

#include "FakeSources.h"
#include "support/Firmware.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

using testing::ElementsAre;

constexpr wchar_t Firmware[] = L"Win32_ComputerSystemProduct.UUID";
constexpr wchar_t Registry[] = L"Software\\Microsoft\\Cryptography:MachineGuid";

class MachineUuidTest : public testing::Test {
protected:
    MachineUuidTest() { _sources.registry[Registry] = L"aabbccdd-0011-2233-4455-66778899aabb"; }

    std::wstring With(const _variant_t& firmware) {
        _sources.wmi[Firmware] = firmware;
        return GetMachineUuid(_sources);
    }

    Testing::FakeSources _sources;
};

constexpr wchar_t Registered[] = L"AABBCCDD-0011-2233-4455-66778899AABB";

} // namespace

TEST_F(MachineUuidTest, FirmwareUuidIsRaisedToUpperCase) {
    EXPECT_EQ(With(L"3d1219c7-c4c5-404a-aa1f-6d2a48adfda4"), L"3D1219C7-C4C5-404A-AA1F-6D2A48ADFDA4");
    EXPECT_THAT(_sources.questions, ElementsAre(Firmware)) << "the registry is not asked";
}

TEST_F(MachineUuidTest, ZeroFirmwareUuidIsReplaced) {
    EXPECT_EQ(With(L"00000000-0000-0000-0000-000000000000"), Registered);
    EXPECT_THAT(_sources.questions, ElementsAre(Firmware, Registry));
}

TEST_F(MachineUuidTest, FirmwareUuidOfAllOnesIsReplacedInEitherCase) {
    EXPECT_EQ(With(L"FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF"), Registered);
    EXPECT_EQ(With(L"ffffffff-ffff-ffff-ffff-ffffffffffff"), Registered);
}

TEST_F(MachineUuidTest, FirmwareWithoutTextIsReplaced) {
    EXPECT_EQ(With(_variant_t()), Registered);
    EXPECT_EQ(With(7L), Registered);
}

TEST_F(MachineUuidTest, FirmwareTextUnknownIsKeptInCapitals) { EXPECT_EQ(With(L"unknown"), L"UNKNOWN"); }

TEST_F(MachineUuidTest, EmptyFirmwareTextIsKept) { EXPECT_EQ(With(L""), L""); }

TEST_F(MachineUuidTest, WindowsXpTakesTheRegistryAndAsksNoFirmware) {
    _sources.version = {2, 501};
    EXPECT_EQ(With(L"3d1219c7-c4c5-404a-aa1f-6d2a48adfda4"), Registered);
    EXPECT_THAT(_sources.questions, ElementsAre(Registry));
}

TEST_F(MachineUuidTest, NeighboursOfWindowsXpAskTheFirmware) {
    for (const Utils::OsVersion version : {Utils::OsVersion{2, 500}, {2, 502}, {1, 501}, {0, 0}}) {
        _sources.version = version;
        EXPECT_EQ(With(L"3d12"), L"3D12") << version.platform << " " << version.number;
    }
}

TEST_F(MachineUuidTest, WithoutAnySourceIsUnknownInCapitals) {
    _sources.registry.clear();
    EXPECT_EQ(With(_variant_t()), L"UNKNOWN");
    _sources.version = {2, 501};
    EXPECT_EQ(With(_variant_t()), L"UNKNOWN");
}

TEST_F(MachineUuidTest, IsNotCached) {
    EXPECT_EQ(With(L"a"), L"A");
    EXPECT_EQ(With(L"b"), L"B");
}

TEST(MachineUuid, IsTheFirmwaresOwn) { EXPECT_EQ(GetMachineUuid(), Testing::FirmwareUuid()); }

} // namespace Zuvan::Lumeq::Extra::Collection
