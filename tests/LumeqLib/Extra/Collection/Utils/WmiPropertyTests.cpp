#include "LumeqLib/Extra/Collection/Utils/WmiProperty.h"

#include "Common/Logger.h"
#include "FakeWmi.h"
#include "support/FailingAllocation.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"

#include <comdef.h>
#include <gmock/gmock.h>
#include <thread>
#include <wbemcli.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using Testing::LogMessages;
using testing::Not;
using testing::StartsWith;

constexpr auto NotFound = static_cast<HRESULT>(WBEM_E_NOT_FOUND);

/// Whether this thread is in no apartment.
bool IsOutsideCom() {
    const HRESULT result = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    if (SUCCEEDED(result))
        CoUninitialize();
    return result == S_OK;
}

class GetWmiPropertyTest : public testing::Test {
protected:
    GetWmiPropertyTest() { _machine.WriteFactorySettings(); }

    _variant_t Ask() { return GetWmiProperty(L"Win32_Thing", L"Name", _wmi.EntryPoints()); }
    std::vector<std::string> Warnings() const { return LogMessages(_machine.LogFile(), "WARNING"); }

    Testing::IsolatedMachine _machine;
    Testing::FakeWmi _wmi;
};

} // namespace

TEST_F(GetWmiPropertyTest, AsksInOrderAndReleasesInReverseOrder) {
    _wmi.instances = {{S_OK, L"first"}, {S_OK, L"second"}};
    EXPECT_EQ(Ask(), _variant_t(L"first"));
    EXPECT_THAT(_wmi.calls,
                ElementsAre("CoCreateInstance 1 0 1 1", "ConnectServer ROOT\\CIMV2 null null null 0 null 0",
                            "CoSetProxyBlanket 10 0 null 3 3 0 0",
                            "ExecQuery WQL SELECT * FROM Win32_Thing 48 0", "Next -1 1", "Get Name 0",
                            "release instance", "release instances", "release services", "release locator"));
    EXPECT_THAT(Warnings(), IsEmpty());
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, ClassWithoutInstancesIsEmptyWithoutALine) {
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(Warnings(), IsEmpty());
    EXPECT_EQ(_wmi.liveObjects, 0);
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, UnknownPropertyIsAskedOfEveryInstance) {
    _wmi.instances = {{NotFound, {}}, {NotFound, {}}};
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(_wmi.instances, IsEmpty());
    EXPECT_THAT(Warnings(), IsEmpty());
    EXPECT_EQ(_wmi.liveObjects, 0);
}

TEST_F(GetWmiPropertyTest, FirstInstanceWithAValueWins) {
    _variant_t null;
    null.ChangeType(VT_NULL);
    _wmi.instances = {{S_OK, null}, {NotFound, {}}, {S_OK, {}}, {S_OK, L"value"}, {S_OK, L"late"}};
    EXPECT_EQ(Ask(), _variant_t(L"value"));
    EXPECT_EQ(_wmi.instances.size(), 1u);
}

TEST_F(GetWmiPropertyTest, NullOfTheLastInstanceIsReturnedAsNull) {
    _variant_t null;
    null.ChangeType(VT_NULL);
    _wmi.instances = {{S_OK, null}};
    EXPECT_EQ(Ask().vt, VT_NULL);
}

TEST_F(GetWmiPropertyTest, FailedEnumerationIsEmptyWithoutALine) {
    _wmi.instances = {{S_OK, L"value"}};
    _wmi.nextResult = WBEM_E_SHUTTING_DOWN;
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(GetWmiPropertyTest, FailureToCreateTheLocatorIsOneWord) {
    _wmi.createInstanceResult = REGDB_E_CLASSNOTREG;
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(Warnings(), ElementsAre("CreateInstance"));
    EXPECT_THAT(_wmi.calls, testing::SizeIs(1));
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, FailureToConnectIsOneWordAndLeavesComBalanced) {
    _wmi.connectServerResult = WBEM_E_ACCESS_DENIED;
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(Warnings(), ElementsAre("ConnectServer"));
    EXPECT_EQ(_wmi.calls.back(), "release locator");
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, FailureToSetTheBlanketIsOneWord) {
    _wmi.setProxyBlanketResult = E_INVALIDARG;
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(Warnings(), ElementsAre("CoSetProxyBlanket"));
    EXPECT_EQ(_wmi.liveObjects, 0);
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, FailureToQueryIsOneWord) {
    _wmi.execQueryResult = WBEM_E_INVALID_CLASS;
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(Warnings(), ElementsAre("ExecQuery"));
    EXPECT_EQ(_wmi.liveObjects, 0);
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, LinesHaveNoFunctionName) {
    _wmi.execQueryResult = WBEM_E_INVALID_CLASS;
    Ask();
    EXPECT_THAT(Testing::LogLines(_machine.LogFile(), "WARNING"),
                ElementsAre(Testing::LoggedLine{"WARNING", "", "ExecQuery"}));
}

TEST_F(GetWmiPropertyTest, StandardExceptionIsLoggedAndTheResultIsEmpty) {
    _wmi.throwsStandardException = true;
    const Testing::PrintedNarrowTexts printed;
    EXPECT_EQ(Ask().vt, VT_EMPTY);
    EXPECT_THAT(Warnings(), ElementsAre("Unable to retrieve WMI property: out of order"));
    EXPECT_THAT(LogMessages(_machine.LogFile(), "DEBUG").back(),
                AllOf(StartsWith("Uninit t="), EndsWith("GetWmiProperty")));
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0) << "the narrow text ends in two zeros";
    EXPECT_EQ(_wmi.liveObjects, 0);
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, MemoryThatRunsOutBeforeComIsInitialisedIsLoggedAndTheResultIsEmpty) {
    LogMessage(Common::SeverityLevel::DEBUG, L"", 0, nullptr, L"first");
    const std::wstring className = L"Win32_Thing";
    const std::wstring propertyName = L"Name";
    {
        const Testing::FailingAllocation failing(1);
        EXPECT_EQ(GetWmiProperty(className, propertyName, _wmi.EntryPoints()).vt, VT_EMPTY);
        EXPECT_TRUE(failing.Happened());
    }
    EXPECT_THAT(Warnings(), ElementsAre("Unable to retrieve WMI property: std::bad_alloc"));
    EXPECT_THAT(_wmi.calls, IsEmpty());
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, NullPointerPassesOnAsComErrorWithComBalanced) {
    _wmi.givesNullServices = true;
    try {
        Ask();
        FAIL();
    } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), E_POINTER);
    }
    EXPECT_THAT(Warnings(), IsEmpty());
    EXPECT_EQ(_wmi.liveObjects, 0);
    EXPECT_TRUE(IsOutsideCom());
}

TEST_F(GetWmiPropertyTest, FailedComInitializationIsLoggedAndNotBalanced) {
    // The log's start uses COM too. The first line completes it, so that it does not interfere below.
    LogMessage(Common::SeverityLevel::DEBUG, L"", 0, nullptr, L"first");
    // Two references to the multithreaded apartment: the repair releases one, so the thread stays in it.
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    EXPECT_EQ(Ask().vt, VT_EMPTY);

    EXPECT_THAT(Warnings(), ElementsAre(StartsWith("Unbalanced COM initialization t="),
                                        "CoInitialize() failed: 0x80010106"));
    EXPECT_THAT(_wmi.calls, IsEmpty());
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE) << "left the apartment";
    EXPECT_THAT(LogMessages(_machine.LogFile(), "DEBUG"),
                Not(Contains(AllOf(StartsWith("Uninit"), EndsWith("GetWmiProperty")))));
}

TEST_F(GetWmiPropertyTest, ComIsCountedUnderTheFullName) {
    Ask();
    const auto nameEnds = EndsWith("f=Zuvan::Lumeq::Extra::Collection::Utils::GetWmiProperty");
    const std::vector<std::string> lines = LogMessages(_machine.LogFile(), "DEBUG");
    EXPECT_THAT(lines, Contains(AllOf(StartsWith("Init t="), nameEnds)));
    EXPECT_THAT(lines, Contains(AllOf(StartsWith("Uninit t="), nameEnds)));
}

TEST(RealWmi, CaptionOfTheOperatingSystemIsText) {
    const _variant_t caption = GetWmiProperty(L"Win32_OperatingSystem", L"Caption");
    ASSERT_EQ(caption.vt, VT_BSTR);
    EXPECT_THAT(std::wstring(caption.bstrVal), testing::HasSubstr(L"Windows"));
    EXPECT_TRUE(IsOutsideCom());
}

TEST(RealWmi, UnknownClassAndPropertyAreEmpty) {
    EXPECT_EQ(GetWmiProperty(L"Win32_NoSuchClass", L"Caption").vt, VT_EMPTY);
    EXPECT_EQ(GetWmiProperty(L"Win32_OperatingSystem", L"NoSuchProperty").vt, VT_EMPTY);
    EXPECT_TRUE(IsOutsideCom());
}

TEST(RealWmi, AnyThreadMayAsk) {
    // One after the other, as the exports call: Wine's WMI fills one table for all concurrent queries and
    // frees it while they read.
    for (int i = 0; i < 4; ++i) {
        VARTYPE type = VT_EMPTY;
        std::thread([&type] { type = GetWmiProperty(L"Win32_OperatingSystem", L"Caption").vt; }).join();
        EXPECT_EQ(type, VT_BSTR);
    }
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
