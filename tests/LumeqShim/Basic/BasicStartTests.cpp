#include "BasicRoadTest.h"
#include "Common/Exceptions.h"
#include "LumeqShim/Basic/BasicConfiguration.h"
#include "LumeqShim/LumeqNativeShim.h"
#include "support/DeliveryStandIns.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"
#include "support/RuntimeLocale.h"

#include <windows.h>

#include <comdef.h>
#include <objbase.h>
#include <optional>
#include <rpc.h>
#include <stdexcept>
#include <wininet.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::ImportedFunction;
using Lumeq::Testing::RealFunction;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// Starts for an opted-in user; the wrapper must let no failure out.
class BasicStartTest : public BasicRoadTest {
protected:
    BasicStartTest() {
        Lumeq::Testing::UseFakeMscoree(L"v2.0.50727");
        OptIn(true);
    }

    static void Start(const std::wstring& appName = L"scan") { StartupXX(appName, {4, 7}, true, false); }

    /// How often the network was used.
    static inline int sessions = 0;

private:
    using OpenSession = HINTERNET WINAPI(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD);
    ImportedFunction<OpenSession> _counted{
        "wininet.dll", "InternetOpenA",
        [](LPCSTR agent, DWORD type, LPCSTR proxy, LPCSTR bypass, DWORD flags) -> HINTERNET {
            ++sessions;
            return RealFunction<OpenSession>("wininet.dll", "InternetOpenA")(agent, type, proxy, bypass,
                                                                             flags);
        }};
};

/// Lets the first allocation after the worker took its module reference fail.
std::optional<Lumeq::Testing::FailingAllocation> exhaustedMemory;

BOOL WINAPI TakeReferenceAndExhaustMemory(DWORD flags, LPCWSTR address, HMODULE* module) {
    const BOOL taken = RealFunction<decltype(GetModuleHandleExW)>("kernel32.dll", "GetModuleHandleExW")(
        flags, address, module);
    exhaustedMemory.emplace(1);
    return taken;
}

RPC_STATUS RPC_ENTRY RaiseComError(UUID*) { throw _com_error(E_ACCESSDENIED); }
RPC_STATUS RPC_ENTRY RaiseStandardException(UUID*) { throw std::runtime_error("out of order 100%"); }
RPC_STATUS RPC_ENTRY RaiseAnythingElse(UUID*) { throw 42; }

struct RaisedInConfiguration {
    const char* name;
    RPC_STATUS RPC_ENTRY (*raise)(UUID*);
    const char* line;
};

constexpr RaisedInConfiguration RaisedKinds[] = {
    {"ComError", &RaiseComError,
     "GetConfigFileData failed with _com_error exception 0x80070005, Access denied."},
    {"StandardException", &RaiseStandardException, "GetConfigFileData exception with out of order 100%"},
    {"AnythingElse", &RaiseAnythingElse, "GetConfigFileData failed with unknown exception"},
};

struct RaisedInPost {
    const char* name;
    void (*raise)();
    const char* line;
};

const RaisedInPost PostKinds[] = {
    {"VestoException", [] { throw Lumeq::Common::VestoException(L"no w\u00e4y"); },
     "BasicImplementation failed with VestoException exception no w\xC3\xA4y"},
    {"ComError", [] { throw _com_error(E_ACCESSDENIED); },
     "BasicImplementation failed with _com_error exception 0x80070005, Access denied."},
    {"StandardException", [] { throw std::range_error("out of order 100%"); },
     "BasicImplementation exception with out of order 100%"},
    {"AnythingElse", [] { throw 42; }, "BasicImplementation failed with unknown exception"},
};

/// Throws when the worker would be started.
class RaisingPost : public BasicStartTest, public testing::WithParamInterface<RaisedInPost> {
protected:
    static HANDLE WINAPI Raise(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) {
        GetParam().raise();
        return nullptr;
    }
};

class RaisingConfiguration : public BasicStartTest,
                             public testing::WithParamInterface<RaisedInConfiguration> {};

/// Fails after the second query of the application's version, which comes between the system information and
/// the configuration.
struct FailingCom {
    static inline int versionsAsked = 0;

    static DWORD WINAPI AskVersion(LPCWSTR path, DWORD* unused) {
        if (std::wstring(path).ends_with(L".exe"))
            ++versionsAsked;
        return RealFunction<decltype(GetFileVersionInfoSizeW)>("version.dll",
                                                               "GetFileVersionInfoSizeW")(path, unused);
    }
    static HRESULT WINAPI Initialize(void* reserved, DWORD model) {
        if (versionsAsked == 2)
            return E_OUTOFMEMORY;
        return RealFunction<decltype(CoInitializeEx)>("ole32.dll", "CoInitializeEx")(reserved, model);
    }
};

} // namespace

TEST_F(BasicStartTest, SendsOneMessage) {
    Start();
    EXPECT_THAT(Messages(), SizeIs(1));
    EXPECT_EQ(sessions, 1);
}

TEST_F(BasicStartTest, MemoryThatRunsOutWhilePostingIsLoggedAndTheNextStartSends) {
    {
        const ImportedFunction<decltype(GetModuleHandleExW)> exhausting("kernel32.dll", "GetModuleHandleExW",
                                                                        &TakeReferenceAndExhaustMemory);
        Start();
    }
    ASSERT_TRUE(exhaustedMemory && exhaustedMemory->Happened());
    EXPECT_THAT(Logged("WARNING"), ElementsAre("BasicImplementation exception with std::bad_alloc"));
    EXPECT_THAT(Messages(), SizeIs(1)) << "its last line before the worker is started";
    EXPECT_EQ(sessions, 0);
    Start();
    EXPECT_THAT(Messages(), SizeIs(2));
    EXPECT_EQ(sessions, 1);
    Start();
    EXPECT_EQ(sessions, 1);
}

TEST_P(RaisingPost, IsLoggedAndTheNextStartSends) {
    {
        const ImportedFunction<decltype(CreateThread)> raising("kernel32.dll", "CreateThread", &Raise);
        Start();
    }
    EXPECT_THAT(Logged("WARNING"), ElementsAre(GetParam().line));
    EXPECT_EQ(sessions, 0);
    Start();
    EXPECT_EQ(sessions, 1);
    Start();
    EXPECT_EQ(sessions, 1);
}

INSTANTIATE_TEST_SUITE_P(All, RaisingPost, testing::ValuesIn(PostKinds),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BasicStartTest, TokenThatTheHostsLocaleSpoilsIsLoggedAndTheNextStartSends) {
    _machine.WriteFactorySettings(
        "<Log>on</Log><LogLevel>debug</LogLevel><LUMServerUri>127.0.0.99</LUMServerUri>"
        "<AuthenticationToken>gbxra\xC3\xA9</AuthenticationToken>" +
        std::string(Project));
    {
        const Lumeq::Testing::RuntimeLocale german("German");
        Start();
    }
    EXPECT_THAT(Logged("WARNING"), ElementsAre("BasicImplementation exception with bad conversion"));
    EXPECT_THAT(Messages(), IsEmpty());
    EXPECT_EQ(sessions, 0);
    Start();
    EXPECT_THAT(Messages(), SizeIs(1));
    EXPECT_EQ(sessions, 1);
}

TEST_F(BasicStartTest, UnpairedSurrogateInAValueBecomesASpaceAndTheMessageIsSent) {
    Start(L"sc\xd800n");
    EXPECT_THAT(OnlyMessage(), HasSubstr(R"("app_id":"sc n/0.0.0.0")"));
    EXPECT_THAT(Logged("ERROR"), ElementsAre(testing::MatchesRegex(
                                     "Message has illegal character at \\d+ with value 55296, see=.*")));
    EXPECT_EQ(sessions, 1);
    Start();
    EXPECT_EQ(sessions, 1) << "sent";
}

TEST_P(RaisingConfiguration, IsLoggedAndNothingReachesTheNetwork) {
    {
        const ImportedFunction<decltype(UuidCreate)> raising("rpcrt4.dll", "UuidCreate", GetParam().raise);
        Start();
    }
    EXPECT_THAT(Logged("WARNING"), ElementsAre(GetParam().line));
    EXPECT_THAT(Logged("DEBUG"), Contains("GetConfigFileData returns false:"));
    EXPECT_THAT(Logged("DATA"), IsEmpty());
    EXPECT_EQ(sessions, 0);
    Start();
    EXPECT_EQ(sessions, 0) << "counts as sent";
}

INSTANTIATE_TEST_SUITE_P(All, RaisingConfiguration, testing::ValuesIn(RaisedKinds),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BasicStartTest, ConfigurationWithoutComIsLoggedAndNothingReachesTheNetwork) {
    {
        const ImportedFunction<decltype(GetFileVersionInfoSizeW)> counting(
            "version.dll", "GetFileVersionInfoSizeW", &FailingCom::AskVersion);
        const ImportedFunction<decltype(CoInitializeEx)> failing("ole32.dll", "CoInitializeEx",
                                                                 &FailingCom::Initialize);
        Start();
    }
    EXPECT_THAT(Logged("WARNING"),
                ElementsAre("CoInitialize() failed: 0x8007000e", // for the machine's identifier
                            "ComInitialize failed 0x8007000e"));
    EXPECT_THAT(Logged("DEBUG"), Contains("GetConfigFileData returns false:"));
    EXPECT_THAT(Logged("DATA"), IsEmpty());
    Start();
    EXPECT_EQ(sessions, 0) << "counts as sent";
}

} // namespace Zuvan::LumeqShim
