#include "LumeqApi/Devices.h"

#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::API {

TEST(IdentifyDevice, NarrowTextOfTheTraceEndsInTwoZeros) {
    Testing::IsolatedMachine machine;
    machine.WriteFactorySettings();
    std::string uuid("uuid, and more");
    uuid.resize(4);
    std::wstring biid;
    const Testing::PrintedNarrowTexts printed;
    IdentifyDevice(Call(L"X"), uuid, biid);
    EXPECT_THAT(Testing::LogMessages(machine.LogFile(), "TRACE"), testing::Contains("deviceUuid: \"uuid\""));
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0);
}

TEST(CopyToBuffer, CopiesWithTerminator) {
    wchar_t buffer[4] = {L'x', L'x', L'x', L'x'};
    EXPECT_EQ(CopyToBuffer(buffer, 4, L"usb"), 0);
    EXPECT_STREQ(buffer, L"usb");
}

TEST(CopyToBuffer, TooSmallGives34AndAnEmptyText) {
    wchar_t buffer[3] = {L'x', L'x', L'x'};
    EXPECT_EQ(CopyToBuffer(buffer, 3, L"usb"), 34);
    EXPECT_EQ(buffer[0], L'\0');
}

TEST(CopyToBuffer, NullOrNoSizeGives22) {
    wchar_t buffer[1] = {L'x'};
    EXPECT_EQ(CopyToBuffer(nullptr, 10, L"usb"), 22);
    EXPECT_EQ(CopyToBuffer(buffer, 0, L"usb"), 22);
    EXPECT_EQ(buffer[0], L'x');
}

TEST(CopyToBuffer, EmptyTextNeedsOneCharacter) {
    wchar_t buffer[1] = {L'x'};
    EXPECT_EQ(CopyToBuffer(buffer, 1, L""), 0);
    EXPECT_EQ(buffer[0], L'\0');
}

TEST(CopyToBuffer, AgreesWithTheRuntime) {
    wchar_t ours[4];
    wchar_t theirs[4];
    for (const std::wstring text : {L"", L"a", L"abc", L"abcd", L"abcdefgh"}) {
        EXPECT_EQ(CopyToBuffer(ours, 4, text), wcscpy_s(theirs, 4, text.c_str()));
        EXPECT_STREQ(ours, theirs);
    }
}

} // namespace Zuvan::Lumeq::API
