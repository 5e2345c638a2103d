#include "LumeqShim/PreLoadingCode.h"

#include "Common/ComScope.h"
#include "Common/ComSession.h"
#include "Common/Logger.h"
#include "support/Apartment.h"
#include "support/DeliveryStandIns.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>
#include <regex>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::LogMessage;
using Lumeq::Common::SeverityLevel;
using Lumeq::Testing::ApartmentOfThread;
using Lumeq::Testing::FailingAllocation;
using Lumeq::Testing::FakeMscoreeSaw;
using Lumeq::Testing::LoggedLine;
using Lumeq::Testing::LogLines;
using Lumeq::Testing::NotInitialized;
using Lumeq::Testing::UseFakeMscoree;
using Lumeq::Testing::UseFakeMscoreeWithoutEntryPoint;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr char SupportAsked[] = "DEBUG IsCLRCreateInstanceSupported()";
constexpr char Supported[] = "DEBUG IsCLRCreateInstanceSupported() returns 1";
constexpr char Unsupported[] = "DEBUG IsCLRCreateInstanceSupported() returns 0";
constexpr char ComInit[] =
    "DEBUG Init t=#, init=#, deinit=#, f=Zuvan::LumeqShim::IsRequiredDotNetVersionInstalled";
constexpr char ComUninit[] =
    "DEBUG Uninit t=#, init=#, deinit=#, f=Zuvan::LumeqShim::IsRequiredDotNetVersionInstalled";
constexpr char VersionsFollow[] = "DEBUG CLR versions available from CLR:";
constexpr char Enumerated[] = "DEBUG EnumerateInstalledRuntimes";
constexpr char Found[] = "DEBUG IsRequiredDotNetVersionInstalled() returns 1";
constexpr char NotFound[] = "DEBUG IsRequiredDotNetVersionInstalled() returns 0";
constexpr char Duration[] = "DEBUG IsRequiredDotNetVersionInstalled took # ms";

class RuntimeProbe : public testing::Test {
protected:
    RuntimeProbe() {
        _machine.WriteFactorySettings();
        // The first use of the log writes lines of its own.
        LogMessage(SeverityLevel::TRACE, L"", 0, nullptr, L"first use");
        _linesBefore = LogLines(_machine.LogFile()).size();
    }

    /// Severity and message of each line of the probe, with "#" instead of numbers that vary.
    std::vector<std::string> Lines() const {
        static const std::regex number("(t=|init=|took )\\d+");
        std::vector<std::string> lines;
        for (const LoggedLine& line : LogLines(_machine.LogFile()))
            lines.push_back(line.severity + " " + std::regex_replace(line.message, number, "$1#"));
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(_linesBefore));
        return lines;
    }

private:
    Lumeq::Testing::IsolatedMachine _machine;
    std::size_t _linesBefore;
};

} // namespace

TEST_F(RuntimeProbe, RequiredRuntimeAmongOthersIsFoundAndAllAreLogged) {
    UseFakeMscoree(L"v1.1.4322,v4.0.30319,v2.0.50727");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(),
                ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, Enumerated,
                            "DEBUG Found .NET version: v1.1.4322", "DEBUG Found .NET version: v4.0.30319",
                            "DEBUG Found .NET version: v2.0.50727", ComUninit, Found, Duration));
}

TEST_F(RuntimeProbe, OlderRuntimeAloneIsNotEnough) {
    UseFakeMscoree(L"v2.0.50727");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, Enumerated,
                                     "DEBUG Found .NET version: v2.0.50727", ComUninit, NotFound, Duration));
}

TEST_F(RuntimeProbe, LibraryWithoutRuntimesIsNotEnough) {
    UseFakeMscoree(L"");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, Enumerated, ComUninit,
                                     NotFound, Duration));
}

TEST_F(RuntimeProbe, AnyVersionTextThatContainsTheRequiredOneQualifies) {
    UseFakeMscoree(L"very v4.0.30319.42000 (new)");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
}

TEST_F(RuntimeProbe, NewerVersionTextDoesNotQualify) {
    UseFakeMscoree(L"v4.0.30320,v4.0.3031,v5.0.30319,V4.0.30319");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
}

TEST_F(RuntimeProbe, LongestVersionTextIsReadWhole) {
    UseFakeMscoree(L"v" + std::wstring(244, L'x') + L"v4.0.30319");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), Contains("DEBUG Found .NET version: v" + std::string(244, 'x') + "v4.0.30319"));
}

TEST_F(RuntimeProbe, VersionTextCountsEvenIfItsReadingFailed) {
    UseFakeMscoree(L"unsure:v4.0.30319");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, Enumerated, ComUninit,
                                     Found, Duration));
}

TEST_F(RuntimeProbe, RuntimeWithoutVersionTextIsPassedOver) {
    UseFakeMscoree(L"v2.0.50727,nameless,v1.1.4322");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, Enumerated,
                                     "DEBUG Found .NET version: v2.0.50727",
                                     "DEBUG Found .NET version: v1.1.4322", ComUninit, NotFound, Duration));
}

TEST_F(RuntimeProbe, FailureOfTheEnumeratorEndsTheScan) {
    UseFakeMscoree(L"v4.0.30319,fail:Next");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, Enumerated,
                                     "DEBUG Found .NET version: v4.0.30319", ComUninit, Found, Duration));
}

TEST_F(RuntimeProbe, FailureToCreateTheHostObjectIsLogged) {
    UseFakeMscoree(L"v4.0.30319,fail:CLRCreateInstance");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(),
                ElementsAre(SupportAsked, Supported, ComInit, "WARNING CLRCreateInstance failed 0x80131700",
                            ComUninit, NotFound, Duration));
}

TEST_F(RuntimeProbe, FailureToEnumerateIsLoggedWithTheResultOfTheCallBefore) {
    UseFakeMscoree(L"v4.0.30319,fail:EnumerateInstalledRuntimes");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow,
                                     "WARNING EnumerateInstalledRuntimes failed 0x00000000", ComUninit,
                                     NotFound, Duration));
}

TEST_F(RuntimeProbe, HostObjectThatComesWithAnotherCodeOfSuccessServesAsWell) {
    UseFakeMscoree(L"v4.0.30319,false:CLRCreateInstance");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, Enumerated,
                                     "DEBUG Found .NET version: v4.0.30319", ComUninit, Found, Duration));
}

TEST_F(RuntimeProbe, FailureToEnumerateShowsThatOtherCodeOfSuccess) {
    UseFakeMscoree(L"v4.0.30319,false:CLRCreateInstance,fail:EnumerateInstalledRuntimes");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), Contains("WARNING EnumerateInstalledRuntimes failed 0x00000001"));
}

TEST_F(RuntimeProbe, AnyEnumerationResultButZeroIsAFailure) {
    UseFakeMscoree(L"v4.0.30319,false:EnumerateInstalledRuntimes");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), Contains("WARNING EnumerateInstalledRuntimes failed 0x00000000"));
}

TEST_F(RuntimeProbe, LibraryWithoutEntryPointIsUnsupportedAndComIsNotTouched) {
    UseFakeMscoreeWithoutEntryPoint();
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Unsupported, NotFound, Duration));
}

TEST_F(RuntimeProbe, LibraryThatDoesNotLoadIsUnsupportedAndComIsNotTouched) {
    UseFakeMscoree(L"v4.0.30319,fail:load");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Unsupported, NotFound, Duration));
}

TEST_F(RuntimeProbe, SupportTestFreesTheLibrary) {
    UseFakeMscoree(L"");
    EXPECT_TRUE(IsCLRCreateInstanceSupported());
    EXPECT_EQ(GetModuleHandleW(L"mscoree.dll"), nullptr);
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported));
}

TEST_F(RuntimeProbe, AnswerIsKeptForTheLifeOfTheProcess) {
    UseFakeMscoree(L"v2.0.50727");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    const std::vector<std::string> lines = Lines();
    UseFakeMscoree(L"v4.0.30319");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(Lines(), lines);
}

TEST_F(RuntimeProbe, FoundRuntimeIsKeptForTheLifeOfTheProcess) {
    UseFakeMscoree(L"v4.0.30319");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    const std::vector<std::string> lines = Lines();
    UseFakeMscoree(L"v2.0.50727");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(Lines(), lines);
}

TEST_F(RuntimeProbe, HostObjectAloneIsNeverReleased) {
    UseFakeMscoree(L"v1.1.4322,v4.0.30319");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(FakeMscoreeSaw().hosts, 1);
    EXPECT_EQ(FakeMscoreeSaw().enumerators, 0);
    EXPECT_EQ(FakeMscoreeSaw().runtimes, 0);
}

TEST_F(RuntimeProbe, ComIsThereForTheSpanOfTheProbeOnly) {
    UseFakeMscoree(L"v4.0.30319");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(FakeMscoreeSaw().callsInApartment, 1);
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(RuntimeProbe, InASessionHasItsOwnApartmentForItsSpanOnly) {
    UseFakeMscoree(L"v4.0.30319");
    static HRESULT apartmentAtFirstLoad = E_FAIL;
    const Lumeq::Common::ComSession session;
    {
        const Lumeq::Testing::ImportedFunction<decltype(LoadLibraryW)> loading(
            "kernel32.dll", "LoadLibraryW", [](const wchar_t* name) {
                if (apartmentAtFirstLoad == E_FAIL)
                    apartmentAtFirstLoad = ApartmentOfThread();
                return Lumeq::Testing::RealFunction<decltype(LoadLibraryW)>("kernel32.dll",
                                                                            "LoadLibraryW")(name);
            });
        Lumeq::Common::ComScope(L"operation before it");
        ASSERT_EQ(ApartmentOfThread(), S_OK);
        EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    }
    EXPECT_EQ(apartmentAtFirstLoad, NotInitialized);
    EXPECT_EQ(FakeMscoreeSaw().callsInApartment, 1);
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(RuntimeProbe, HostsOwnApartmentStays) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    UseFakeMscoree(L"v4.0.30319");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    CoUninitialize();
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(RuntimeProbe, ComIsUndoneEvenIfItWasNotInitialised) {
    // The probe leaves the multithreaded apartment once; the thread had entered it twice.
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    UseFakeMscoree(L"v4.0.30319");
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(FakeMscoreeSaw().callsInApartment, 0);
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
    EXPECT_THAT(Lines(), Contains(ComUninit));
}

TEST_F(RuntimeProbe, LibraryThatVanishesPicksTheBasicRoadOnceAndThenTheManagedRoad) {
    UseFakeMscoree(L"v2.0.50727,once");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, ComUninit, Duration));
}

TEST_F(RuntimeProbe, MemoryThatRunsOutAtItsVeryStartPicksTheBasicRoadOnce) {
    UseFakeMscoree(L"v2.0.50727");
    {
        const FailingAllocation failure(1);
        EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
        EXPECT_TRUE(failure.Happened());
    }
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), testing::IsEmpty());
}

TEST_F(RuntimeProbe, ExceptionOfTheHostObjectIsNotLoggedAndComIsUndone) {
    UseFakeMscoree(L"v2.0.50727,throw:EnumerateInstalledRuntimes");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), ElementsAre(SupportAsked, Supported, ComInit, VersionsFollow, ComUninit, Duration));
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(RuntimeProbe, ExceptionOfARuntimeReleasesWhatWasTaken) {
    UseFakeMscoree(L"v2.0.50727,throw:GetVersionString");
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(FakeMscoreeSaw().enumerators, 0);
    EXPECT_EQ(FakeMscoreeSaw().runtimes, 0);
    EXPECT_THAT(Lines(), Not(Contains(NotFound)));
}

class RaisingProbe : public RuntimeProbe, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(RaisingProbe, ManagedExceptionPicksTheBasicRoadOnceAndReleasesWhatWasTaken) {
    UseFakeMscoree(std::wstring(L"v2.0.50727,managed:") + GetParam());
    EXPECT_FALSE(IsRequiredDotNetVersionInstalled());
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_EQ(FakeMscoreeSaw().enumerators, 0);
    EXPECT_EQ(FakeMscoreeSaw().runtimes, 0);
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
    EXPECT_THAT(Lines(), Not(Contains(NotFound)));
}

INSTANTIATE_TEST_SUITE_P(Calls, RaisingProbe,
                         testing::Values(L"CLRCreateInstance", L"EnumerateInstalledRuntimes", L"Next",
                                         L"GetVersionString"));

TEST_F(RuntimeProbe, PlatformsOwnLibraryIsUnderstood) {
    EXPECT_TRUE(IsRequiredDotNetVersionInstalled());
    EXPECT_THAT(Lines(), Contains("DEBUG Found .NET version: v4.0.30319"));
}

} // namespace Zuvan::LumeqShim
