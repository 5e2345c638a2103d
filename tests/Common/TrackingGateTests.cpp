#include "Common/TrackingGate.h"

#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr wchar_t Key[] = L"Software\\Zuvan\\NG\\Tracking\\Lumeq";
constexpr wchar_t Value[] = L"TrackingDisabled";

class TrackingGate : public testing::Test {
protected:
    Testing::IsolatedMachine machine;
};

} // namespace

TEST_F(TrackingGate, IsOpenWithoutTheKey) { EXPECT_FALSE(IsTrackingDisabled()); }

TEST_F(TrackingGate, IsOpenWithoutTheValue) {
    machine.SetDword(HKEY_CURRENT_USER, Key, L"Other", 1);
    EXPECT_FALSE(IsTrackingDisabled());
}

TEST_F(TrackingGate, IsShutByOne) {
    machine.SetDword(HKEY_CURRENT_USER, Key, Value, 1);
    EXPECT_TRUE(IsTrackingDisabled());
}

TEST_F(TrackingGate, IsOpenForZero) {
    machine.SetDword(HKEY_CURRENT_USER, Key, Value, 0);
    EXPECT_FALSE(IsTrackingDisabled());
}

TEST_F(TrackingGate, IsOpenForTwo) {
    machine.SetDword(HKEY_CURRENT_USER, Key, Value, 2);
    EXPECT_FALSE(IsTrackingDisabled());
}

TEST_F(TrackingGate, DoesNotLookAtTheRegistryType) {
    machine.SetText(HKEY_CURRENT_USER, Key, Value, L"\x01"); // four bytes: 1, 0, 0, 0
    EXPECT_TRUE(IsTrackingDisabled());
}

TEST_F(TrackingGate, IsOpenForAValueThatDoesNotFit) {
    machine.SetText(HKEY_CURRENT_USER, Key, Value, L"\x01\x02");
    EXPECT_FALSE(IsTrackingDisabled());
}

TEST_F(TrackingGate, IgnoresTheMachinesKey) {
    machine.SetDword(HKEY_LOCAL_MACHINE, Key, Value, 1);
    EXPECT_FALSE(IsTrackingDisabled());
}

TEST_F(TrackingGate, IsKnownToBeShutOnlyAfterTheRegistryWasRead) {
    machine.SetDword(HKEY_CURRENT_USER, Key, Value, 1);
    EXPECT_FALSE(IsTrackingKnownDisabled());
    EXPECT_TRUE(IsTrackingDisabled());
    EXPECT_TRUE(IsTrackingKnownDisabled());
}

TEST_F(TrackingGate, IsNeverKnownToBeShutWhileItIsOpen) {
    EXPECT_FALSE(IsTrackingDisabled());
    EXPECT_FALSE(IsTrackingKnownDisabled());
}

TEST_F(TrackingGate, DoesNotNoticeALaterChange) {
    EXPECT_FALSE(IsTrackingDisabled());
    machine.SetDword(HKEY_CURRENT_USER, Key, Value, 1);
    EXPECT_FALSE(IsTrackingDisabled());
}

TEST_F(TrackingGate, OpensTheUsersKeyOnceForReadingAlone) {
    static int openings = 0;
    const Testing::ImportedFunction<decltype(RegOpenKeyExW)> watched(
        "advapi32.dll", "RegOpenKeyExW",
        [](HKEY root, const wchar_t* key, DWORD options, REGSAM access, HKEY*) -> LSTATUS {
            ++openings;
            EXPECT_EQ(root, HKEY_CURRENT_USER);
            EXPECT_STREQ(key, Key);
            EXPECT_EQ(options, 0U);
            EXPECT_EQ(access, 0x20019U); // KEY_READ
            return ERROR_FILE_NOT_FOUND;
        });
    EXPECT_FALSE(IsTrackingDisabled());
    EXPECT_FALSE(IsTrackingDisabled());
    EXPECT_EQ(openings, 1);
}

TEST_F(TrackingGate, IsOpenIfTheKeyMayNotBeRead) {
    machine.SetDword(HKEY_CURRENT_USER, Key, Value, 1);
    const Testing::ImportedFunction<decltype(RegOpenKeyExW)> denied(
        "advapi32.dll", "RegOpenKeyExW",
        [](HKEY, const wchar_t*, DWORD, REGSAM, HKEY*) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    EXPECT_FALSE(IsTrackingDisabled());
}

} // namespace Zuvan::Lumeq::Common
