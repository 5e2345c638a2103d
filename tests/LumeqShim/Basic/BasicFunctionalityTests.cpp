#include "LumeqShim/Basic/BasicFunctionality.h"

#include "BasicRoadTest.h"
#include "support/Firmware.h"
#include "support/ImportedFunction.h"

#include <windows.h>

#include <comdef.h>
#include <gmock/gmock.h>
#include <wininet.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::ImportedFunction;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::StartsWith;

} // namespace

TEST_F(BasicRoadTest, OptedInUserSendsOneMessageForEachProcess) {
    OptIn(true);
    BasicStart(L"scan");
    EXPECT_THAT(Messages(), SizeIs(1));
    BasicStart(L"scan");
    EXPECT_THAT(Messages(), SizeIs(1));
}

TEST_F(BasicRoadTest, OptedOutUserSendsNothingAndTouchesNoNetwork) {
    static int sessions = 0;
    const ImportedFunction<HINTERNET WINAPI(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD)> counted(
        "wininet.dll", "InternetOpenA", [](LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD) -> HINTERNET {
            ++sessions;
            return nullptr;
        });
    static int threads = 0;
    const ImportedFunction<decltype(CreateThread)> noThreads(
        "kernel32.dll", "CreateThread",
        [](SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) -> HANDLE {
            ++threads;
            return nullptr;
        });
    OptIn(false);
    BasicStart(L"scan");
    EXPECT_THAT(Logged("DATA"), IsEmpty());
    EXPECT_EQ(sessions, 0);
    EXPECT_EQ(threads, 0);
}

TEST_F(BasicRoadTest, UserWhoNeverChoseSendsNothing) {
    BasicStart(L"scan");
    EXPECT_THAT(Logged("DATA"), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(_machine.LocalSettingsFile()));
}

TEST_F(BasicRoadTest, OptingInLaterSendsAtTheNextStart) {
    OptIn(false);
    BasicStart(L"scan");
    OptIn(true);
    EXPECT_THAT(Messages(), IsEmpty());
    BasicStart(L"scan");
    EXPECT_THAT(Messages(), SizeIs(1));
}

TEST_F(BasicRoadTest, MissingProjectSendsNothingAndCountsAsSent) {
    Factory("");
    OptIn(true);
    BasicStart(L"scan");
    EXPECT_THAT(Logged("WARNING"), Contains("Project ID is empty. Ensure *LumeqConfig.xml is in path!"));
    EXPECT_THAT(Logged("DATA"), IsEmpty());
    Factory(Project);
    BasicStart(L"scan");
    EXPECT_THAT(Logged("DATA"), IsEmpty());
}

TEST_F(BasicRoadTest, MessageThatRaisedIsTriedAgainAtTheNextStart) {
    OptIn(true);
    {
        const ImportedFunction<decltype(CoSetProxyBlanket)> raising(
            "ole32.dll", "CoSetProxyBlanket",
            [](IUnknown*, DWORD, DWORD, OLECHAR*, DWORD, DWORD, RPC_AUTH_IDENTITY_HANDLE, DWORD) -> HRESULT {
                throw _com_error(E_POINTER);
            });
        EXPECT_THROW(BasicStart(L"scan"), _com_error);
        EXPECT_THAT(Messages(), IsEmpty());
    }
    BasicStart(L"scan");
    EXPECT_THAT(Messages(), SizeIs(1));
}

TEST_F(BasicRoadTest, MessageThatRaisedLogsItsDurationAndNotItsClosingLines) {
    OptIn(true);
    const ImportedFunction<decltype(GetSystemPowerStatus)> raising(
        "kernel32.dll", "GetSystemPowerStatus", [](SYSTEM_POWER_STATUS*) -> BOOL { throw 42; });
    EXPECT_THROW(BasicStart(L"scan"), int);
    const std::vector<std::string> lines = Logged("DEBUG");
    const auto first = std::find(lines.begin(), lines.end(), "Executing Basic Functionality scan");
    ASSERT_NE(first, lines.end());
    EXPECT_THAT(std::vector<std::string>(first, lines.end()),
                testing::ElementsAre("Executing Basic Functionality scan", "------------------------------",
                                     MatchesRegex("BasicImplementation took \\d+ ms")));
}

TEST_F(BasicRoadTest, MessageHoldsMachineAndApplication) {
    OptIn(true);
    BasicStart(L"my scan");
    const std::string message = OnlyMessage();
    EXPECT_THAT(message, testing::AllOf(StartsWith("{"), EndsWith("}")));
    EXPECT_THAT(message, HasSubstr(R"("schema":"sys_info_base/1.1.0")"));
    EXPECT_THAT(message, HasSubstr(R"("pc_architecture":"x64")"));
    EXPECT_THAT(message, HasSubstr(R"("app_id":"my scan/0.0.0.0")"));
    EXPECT_THAT(message, HasSubstr(R"("app_deployed_id":"deployed")"));
    EXPECT_THAT(message, HasSubstr(R"("app_deployed_uuid":")"));
    EXPECT_THAT(message, HasSubstr(R"("app_session_uuid":")"));
    const std::wstring uuid = Lumeq::Testing::FirmwareUuid();
    EXPECT_THAT(message, HasSubstr("\"sys_uuid\":\"" + std::string(uuid.begin(), uuid.end()) + "\""));
    EXPECT_EQ(std::count(message.begin(), message.end(), ':'), 14 + 5);
}

TEST_F(BasicRoadTest, QuotationMarkAndBackslashReachThePostEscaped) {
    OptIn(true);
    std::wstring deployedId = L"a\"b\\c";
    BasicImplementation(L"scan", deployedId);
    EXPECT_THAT(OnlyMessage(), HasSubstr(R"("app_deployed_id":"a\"b\\c")"));
}

TEST_F(BasicRoadTest, GivenDeployedIdIsKeptAndAnEmptyOneSet) {
    OptIn(true);
    std::wstring deployedId = L"given";
    BasicImplementation(L"scan", deployedId);
    EXPECT_EQ(deployedId, L"given");
    deployedId.clear();
    BasicImplementation(L"scan", deployedId);
    EXPECT_EQ(deployedId, L"deployed");
}

TEST_F(BasicRoadTest, TokenGoesOutRotatedBack) {
    OptIn(true);
    BasicStart(L"scan");
    EXPECT_THAT(Logged("DATA"), Contains(HasSubstr("Authorization: Bearer token9  ")));
    EXPECT_THAT(Logged("DEBUG"), Contains(EndsWith("authToken=gbxra9")));
    EXPECT_THAT(Logged("DEBUG"),
                Contains("PostMessageAndForget(127.0.0.99, scan/0.0.0.0, P1, sys_info_base, token9)"));
}

TEST_F(BasicRoadTest, TokenOfDigitsGoesOutUnchanged) {
    _machine.WriteFactorySettings("<Log>on</Log><LUMServerUri>127.0.0.99</LUMServerUri>"
                                  "<AuthenticationToken>0123456789</AuthenticationToken>" +
                                  std::string(Project));
    OptIn(true);
    BasicStart(L"scan");
    EXPECT_THAT(Logged("DATA"), Contains(HasSubstr("Authorization: Bearer 0123456789  ")));
}

TEST_F(BasicRoadTest, SpaceInTheNameReachesUserAgentAndAppId) {
    OptIn(true);
    BasicStart(L"my scan");
    EXPECT_THAT(Logged("DATA"), Contains(HasSubstr("User-Agent:my scan/0.0.0.0  ")));
    EXPECT_THAT(OnlyMessage(), HasSubstr(R"("app_id":"my scan/0.0.0.0")"));
}

TEST_F(BasicRoadTest, EmptyServerFailsAtTheConnection) {
    _machine.WriteFactorySettings("<Log>on</Log><LogLevel>warning</LogLevel>" + std::string(Project));
    OptIn(true);
    BasicStart(L"scan");
    EXPECT_THAT(Messages(), SizeIs(1));
    EXPECT_THAT(Logged("WARNING"), testing::ElementsAre("InternetConnectW failed 0x00000000"));
    EXPECT_THAT(Logged("DATA"), Contains("<- Worker thread failed!"));
}

TEST_F(BasicRoadTest, ProgressIsLoggedAroundTheMessage) {
    OptIn(true);
    BasicStart(L"scan");
    const std::vector<std::string> lines = Logged("DEBUG");
    const auto first = std::find(lines.begin(), lines.end(), "Executing Basic Functionality scan");
    ASSERT_NE(first, lines.end());
    EXPECT_EQ(first[1], "------------------------------");
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines.end()[-3], "Executing Basic Functionality");
    EXPECT_EQ(lines.end()[-2], "------------------------------");
    EXPECT_THAT(lines.end()[-1], MatchesRegex("BasicImplementation took \\d+ ms"));
}

} // namespace Zuvan::LumeqShim
