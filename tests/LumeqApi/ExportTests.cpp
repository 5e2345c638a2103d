// Calls of the exports themselves, in this process: their lines, and their breaks into a debugger.
#include <Lumeq/LumeqApi.h>

#include "Common/Logger.h"
#include "Common/TrackingGate.h"
#include "support/DebuggerStandIn.h"
#include "support/DeliveryStandIns.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>
#include <rpc.h>

#include <cstdio>
#include <stdexcept>

namespace Zuvan::Lumeq::API {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Field;
using Testing::LoggedLine;
using testing::StartsWith;

/// The lines of one export on the basic road, where no event goes anywhere.
class Export : public testing::Test {
protected:
    Export() {
        Testing::UseFakeMscoree(L"v2.0.50727");
        machine.WriteFactorySettings("<Log>on</Log><LogLevel>trace</LogLevel>");
        Common::LogMessage(Common::SeverityLevel::TRACE, L"", 0, nullptr, L"reads the policy");
        std::filesystem::remove(machine.LogFile());
    }

    std::vector<LoggedLine> Lines() const { return Testing::LogLines(machine.LogFile()); }

    Testing::IsolatedMachine machine;
};

LoggedLine TracedBy(const std::string& name, const std::string& message) {
    return {"TRACE", "Zuvan::Lumeq::API::" + name, message};
}

/// The line of a report. Its last part is the number of a source line.
auto ReportedBy(const std::string& title, const std::string& name, const std::string& detail) {
    const std::string report = "lumeq_machine_tests.exe: " + title + " in Zuvan::Lumeq::API::" + name + ": " +
                               detail + ". LumeqApi(";
    return AllOf(Field("severity", &LoggedLine::severity, "ERROR"),
                 Field("function", &LoggedLine::function, ""),
                 Field("message", &LoggedLine::message, AllOf(StartsWith(report), EndsWith(")"))));
}

RPC_STATUS RPC_ENTRY RaiseInsteadOfANumber(UUID*) { throw std::runtime_error("no number"); }

void CallWithThreeBadArguments() { ButtonClicked(L"_", nullptr, L"", nullptr, L"a.b", nullptr, L"Model 5"); }

} // namespace

TEST_F(Export, ThreeBadArgumentsAreThreeLinesInOrderAndThreeBreaks) {
    const Testing::DebuggerStandIn debugger;
    CallWithThreeBadArguments();
    EXPECT_EQ(debugger.Breaks(), 3);
    EXPECT_THAT(
        Lines(),
        ElementsAre(
            TracedBy("ButtonClicked", "flow: \"_\", screenPath: (null), screenName: \"\", mode: (null), "
                                      "controName: \"a.b\", localContext: (null), "
                                      "globalContext: \"Model 5\""),
            ReportedBy("Validation failed", "ButtonClicked", "invalid [optional] flow arg: \"_\""),
            ReportedBy("Validation failed", "ButtonClicked", "invalid [REQUIRED] screenName arg: \"\""),
            ReportedBy("Validation failed", "ButtonClicked", "invalid [REQUIRED] controlName arg: \"a.b\"")));
}

TEST_F(Export, WithTrackingDisabledBreaksNowhere) {
    machine.SetDword(HKEY_CURRENT_USER, L"Software\\Zuvan\\NG\\Tracking\\Lumeq", L"TrackingDisabled", 1);
    const Testing::DebuggerStandIn debugger;
    TaskHandle none = nullptr;
    std::wstring biid;
    CallWithThreeBadArguments();
    StartupEx(L"", static_cast<WhyType>(99), static_cast<HowType>(99), true, true);
    FlushEx(-1);
    SetGlobalContextEx(nullptr);
    DeviceConfigCompleted(&none, L"", static_cast<ConfigurationSettingType>(99));
    TrackDiscoveredPrintersEx({{nullptr, {{L"no", L"identifier"}}}});
    GetBiid("", biid);
    EXPECT_EQ(debugger.Breaks(), 0);
    EXPECT_EQ(debugger.Output(), "");
    EXPECT_TRUE(Lines().empty());
}

TEST_F(Export, NullGlobalContextIsTracedAndReportedAndLeavesTheEarlierOne) {
    SetGlobalContextEx(L"Model 5");
    const Testing::DebuggerStandIn debugger;
    SetGlobalContextEx(nullptr);
    EXPECT_EQ(debugger.Breaks(), 1);
    EXPECT_EQ(Common::GlobalContext(), L"Model 5");
    EXPECT_THAT(Lines(), ElementsAre(TracedBy("SetGlobalContextEx", "globalContext: \"Model 5\""),
                                     TracedBy("SetGlobalContextEx", "globalContext: (null)"),
                                     ReportedBy("Exception", "SetGlobalContextEx",
                                                "basic_string: construction from null is not valid")));
}

// The export takes any decimal digit for a part of the version, the event only those of ASCII.
TEST_F(Export, VersionThatOnlyTheMonikerRefusesIsReportedAsAnException) {
    FormSubmitted(L"org", L"code", L"survey", L"1.\u0663", {}, nullptr, nullptr);
    ReportGenerated(L"org", L"code", L"survey", L"\uff11.0", {}, nullptr, nullptr);
    EXPECT_THAT(
        Lines(),
        ElementsAre(TracedBy("FormSubmitted", "orgName: \"org\", codeName: \"code\", formName: \"survey\", "
                                              "version: \"1.\xD9\xA3\", details: [0 item(s)], "
                                              "localContext: (null), globalContext: (null)"),
                    ReportedBy("Exception", "FormSubmitted",
                               "Moniker is not formatted correctly. Must be of form "
                               "x-{orgname}_{codename}_form_{mycrazyname}/{version-1dot} (e.g. "
                               "x-dvrn_tarvik_form_printer-information/1.0)"),
                    TracedBy("ReportGenerated",
                             "orgName: \"org\", codeName: \"code\", reportName: \"survey\", "
                             "version: \"\xEF\xBC\x91.0\", details: [0 item(s)], "
                             "localContext: (null), globalContext: (null)"),
                    ReportedBy("Exception", "ReportGenerated",
                               "Moniker is not formatted correctly. Moniker identifier in form of "
                               "x-{orgname}_{codename}_report_{myreportname}/{version-1dot} (e.g. "
                               "x-dvrn_tarvik_report_setup/1.0)")));
}

TEST_F(Export, InitiatedThatFailsReturnsNullAndIsReported) {
    struct Row {
        const char* name;
        decltype(&ScanAcquireInitiated) initiate;
    };
    constexpr Row Rows[] = {{"ScanAcquireInitiated", &ScanAcquireInitiated},
                            {"PrintBasicInitiated", &PrintBasicInitiated},
                            {"FileSendToInitiated", &FileSendToInitiated},
                            {"DeviceConnectInitiated", &DeviceConnectInitiated},
                            {"DeviceConfigInitiated", &DeviceConfigInitiated},
                            {"SoftwareInstallInitiated", &SoftwareInstallInitiated}};
    const Testing::ImportedFunction<decltype(UuidCreate)> raising("rpcrt4.dll", "UuidCreate",
                                                                  &RaiseInsteadOfANumber);
    for (const auto& [name, initiate] : Rows) {
        std::filesystem::remove(machine.LogFile());
        EXPECT_EQ(initiate(nullptr, L"Model 5"), nullptr) << name;
        EXPECT_THAT(Lines(), ElementsAre(TracedBy(name, "localContext: (null), globalContext: \"Model 5\""),
                                         ReportedBy("Exception", name, "no number")));
    }
}

TEST_F(Export, TracedTaskHandleIsTheHosts) {
    TaskHandle handle = DeviceConfigInitiated(nullptr, nullptr);
    ASSERT_NE(handle, nullptr);
    char shown[32] = {};
    std::snprintf(shown, sizeof shown, "0x%016llX", reinterpret_cast<unsigned long long>(handle));
    std::filesystem::remove(machine.LogFile());
    DeviceConfigCompleted(&handle, L"success", ConfigurationSettingType::pbut_consent_enable);
    EXPECT_EQ(handle, nullptr);
    EXPECT_THAT(Lines(),
                ElementsAre(TracedBy("DeviceConfigCompleted",
                                     std::string("taskHandle: ") + shown +
                                         ", taskResult: \"success\", settingType: pbut_consent_enable")));
}

} // namespace Zuvan::Lumeq::API
