#include "LumeqShim/Basic/BasicConfiguration.h"

#include "Common/CompiledPattern.h"
#include "Common/Logger.h"
#include "LumeqLib/Core/Utils/Settings.h"
#include "support/DebuggerStandIn.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <objbase.h>
#include <pthread.h>
#include <utility>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::LogMessages;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr char LogAll[] = "<Log>on</Log><LogLevel>debug</LogLevel>";

bool IsUuid(const std::wstring& text) {
    return Lumeq::Common::CompiledPattern<L"[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}">.Matches(text);
}

/// While one exists, others can only read the file.
class UnwritableFile {
public:
    explicit UnwritableFile(const std::filesystem::path& path)
        : _file(
              CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {}

private:
    Lumeq::Common::UniqueKernelObject _file;
};

/// After the second report of a missing server, taking the settings lock throws.
struct FailingSettingsLock {
    static inline int serversMissed = 0;
    static inline pthread_mutex_t whole{};

    static void WINAPI WatchDebugger(LPCWSTR text) {
        if (std::wstring(text).find(L"'LUMServerUri'") == std::wstring::npos || ++serversMissed != 2)
            return;
        // The thread holds the lock already, and this kind of lock refuses that.
        whole = std::exchange(*Native(), PTHREAD_ERRORCHECK_MUTEX_INITIALIZER);
        pthread_mutex_lock(Native());
    }
    static void Mend() {
        pthread_mutex_unlock(Native());
        *Native() = whole;
    }
    static pthread_mutex_t* Native() { return Lumeq::Core::Utils::SettingsLock().native_handle(); }
};

class GetConfigFileDataTest : public testing::Test {
protected:
    void Factory(const std::string& settings) { _machine.WriteFactorySettings(LogAll + settings); }
    void LocalUuid(const std::string& uuid) {
        Lumeq::Testing::WriteFile(_machine.LocalSettingsFile(),
                                  "<LumeqConfig version=\"4.0\"><AppDeployedUuid>" + uuid +
                                      "</AppDeployedUuid></LumeqConfig>");
    }
    std::vector<std::string> Warnings() const { return LogMessages(_machine.LogFile(), "WARNING"); }
    std::vector<std::string> Progress() const { return LogMessages(_machine.LogFile(), "DEBUG"); }
    std::string LocalFile() const { return Lumeq::Testing::ReadFile(_machine.LocalSettingsFile()); }

    /// For tests without a factory file that could enable logging.
    void LogEverything() {
        LogMessage(Lumeq::Common::SeverityLevel::DEBUG, L"", 0, nullptr, L"first");
        Lumeq::Common::EnableLogging(true);
        Lumeq::Common::SetVerbosity(Lumeq::Common::SeverityLevel::DEBUG);
    }

    Lumeq::Testing::IsolatedMachine _machine;
    BasicConfiguration _read;
};

} // namespace

TEST_F(GetConfigFileDataTest, ReadsEveryValue) {
    Factory("<ProjectId>P1</ProjectId><LUMServerUri>https://queue.example</LUMServerUri>"
            "<AppDeployedId>deployed</AppDeployedId><AuthenticationToken>gbx</AuthenticationToken>");
    LocalUuid("11111111-2222-3333-4444-555555555555");
    EXPECT_TRUE(GetConfigFileData(_read));
    EXPECT_EQ(_read.projectId, L"P1");
    EXPECT_EQ(_read.serverUrl, L"https://queue.example");
    EXPECT_EQ(_read.appDeployedId, L"deployed");
    EXPECT_EQ(_read.appDeployedUuid, L"11111111-2222-3333-4444-555555555555");
    EXPECT_EQ(_read.authToken, L"gbx") << "in rotated form";
    EXPECT_TRUE(IsUuid(_read.sessionUuid));

    EXPECT_THAT(Warnings(), IsEmpty());
    const std::vector<std::string> progress = Progress();
    EXPECT_THAT(progress, Contains("GetConfigFileData()"));
    EXPECT_THAT(progress, Contains("GetConfigFileData CoInitialize returns 0x00000000"));
    EXPECT_THAT(progress, Contains("GetConfigFileData: appDeployedId=deployed, "
                                   "appDeployedUuid=11111111-2222-3333-4444-555555555555, "
                                   "serverUrl=https://queue.example, projectId=P1, authToken=gbx"));
    EXPECT_THAT(progress,
                Contains(AllOf(StartsWith("Uninit t="), EndsWith("f=Zuvan::LumeqShim::GetConfigFileData"))));
    EXPECT_EQ(progress.back(), "GetConfigFileData returns true:");
}

TEST_F(GetConfigFileDataTest, LinesOfAFirstRunAreThese) {
    Factory("<ProjectId>P1</ProjectId><AuthenticationToken>gbx</AuthenticationToken>");
    LogEverything();
    const std::size_t before = Progress().size();
    ASSERT_TRUE(GetConfigFileData(_read));
    std::vector<std::string> lines = Progress();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
    const std::string uuid(_read.appDeployedUuid.begin(), _read.appDeployedUuid.end());
    const auto balance = [](const char* what, const char* caller) {
        return AllOf(StartsWith(std::string(what) + " t="), EndsWith(std::string(", f=Zuvan::") + caller));
    };
    EXPECT_THAT(lines, ElementsAre("GetConfigFileData()", balance("Init", "LumeqShim::GetConfigFileData"),
                                   "GetConfigFileData CoInitialize returns 0x00000000",
                                   balance("Init", "Lumeq::Core::Utils::Settings::GetInstance"),
                                   "Genereated KeyAppDeployedUuid " + uuid,
                                   "GetConfigFileData: appDeployedId=, appDeployedUuid=" + uuid +
                                       ", serverUrl=, projectId=P1, authToken=gbx",
                                   balance("Uninit", "Lumeq::Core::Utils::Settings::~Settings"),
                                   balance("Uninit", "LumeqShim::GetConfigFileData"),
                                   "GetConfigFileData returns true:"));
    EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(GetConfigFileDataTest, KeysAreReadInThisOrder) {
    Factory("<ProjectId>P1</ProjectId>");
    LocalUuid("11111111-2222-3333-4444-555555555555");
    LogEverything();
    static std::vector<std::wstring> keys; // Each becomes a BSTR. So do other names, none of them a key.
    {
        const Lumeq::Testing::ImportedFunction<decltype(SysAllocString)> watched(
            "oleaut32.dll", "SysAllocString", [](const OLECHAR* text) -> BSTR {
                for (const wchar_t* key : {L"ProjectId", L"LUMServerUri", L"AppDeployedId",
                                           L"AuthenticationToken", L"AppDeployedUuid"})
                    if (std::wstring(text) == key)
                        keys.emplace_back(text);
                return Lumeq::Testing::RealFunction<decltype(SysAllocString)>("oleaut32.dll",
                                                                              "SysAllocString")(text);
            });
        ASSERT_TRUE(GetConfigFileData(_read));
    }
    EXPECT_THAT(keys, ElementsAre(L"ProjectId", L"AppDeployedId", L"LUMServerUri", L"AppDeployedUuid",
                                  L"AppDeployedId", L"AuthenticationToken", L"ProjectId", L"LUMServerUri"));
}

TEST_F(GetConfigFileDataTest, ValuesAreNotTrimmed) {
    Factory("<ProjectId xml:space=\"preserve\"> P 1 </ProjectId>");
    EXPECT_TRUE(GetConfigFileData(_read));
    EXPECT_EQ(_read.projectId, L" P 1 ");
}

TEST_F(GetConfigFileDataTest, MissingKeysButTheProjectAreEmpty) {
    _read = {L"1", L"2", L"3", L"4", L"5", L"6"};
    Factory("<ProjectId>P1</ProjectId>");
    EXPECT_TRUE(GetConfigFileData(_read));
    EXPECT_EQ(_read.serverUrl, L"");
    EXPECT_EQ(_read.appDeployedId, L"");
    EXPECT_EQ(_read.authToken, L"");
}

TEST_F(GetConfigFileDataTest, MissingProjectIsWarnedOfAndMakesNoInstallationUuid) {
    Factory("<LUMServerUri>https://queue.example</LUMServerUri>");
    EXPECT_FALSE(GetConfigFileData(_read));
    EXPECT_THAT(Warnings(), ElementsAre("Project ID is empty. Ensure *LumeqConfig.xml is in path!"));
    EXPECT_FALSE(std::filesystem::exists(_machine.LocalSettingsFile()));
    EXPECT_EQ(Progress().back(), "GetConfigFileData returns false:");
}

TEST_F(GetConfigFileDataTest, ProjectOfThreeSpacesCountsAsEmpty) {
    Factory("<ProjectId xml:space=\"preserve\">   </ProjectId>");
    EXPECT_FALSE(GetConfigFileData(_read));
    EXPECT_THAT(Warnings(), ElementsAre("Project ID is empty. Ensure *LumeqConfig.xml is in path!"));
}

TEST_F(GetConfigFileDataTest, ProjectOfAnyWhiteSpaceCountsAsEmpty) {
    for (const char* space : {"\xC2\xA0", "\xE2\x80\x83", "\xE3\x80\x80"}) { // U+00A0, U+2003, U+3000
        Factory(std::string("<ProjectId>") + space + "</ProjectId>");
        EXPECT_FALSE(GetConfigFileData(_read)) << space;
        Factory(std::string("<ProjectId>") + space + "1</ProjectId>");
        EXPECT_TRUE(GetConfigFileData(_read)) << space;
    }
    EXPECT_EQ(Warnings(),
              std::vector<std::string>(3, "Project ID is empty. Ensure *LumeqConfig.xml is in path!"));
}

TEST_F(GetConfigFileDataTest, FirstRunMakesTheInstallationUuidAndTheNextReadsItBack) {
    Factory("<ProjectId>P1</ProjectId>");
    ASSERT_TRUE(GetConfigFileData(_read));
    EXPECT_TRUE(IsUuid(_read.appDeployedUuid));
    const std::string uuid(_read.appDeployedUuid.begin(), _read.appDeployedUuid.end());
    EXPECT_THAT(Progress(), Contains("Genereated KeyAppDeployedUuid " + uuid));
    EXPECT_THAT(LocalFile(), HasSubstr("<AppDeployedUuid>" + uuid + "</AppDeployedUuid>"));

    BasicConfiguration again;
    ASSERT_TRUE(GetConfigFileData(again));
    EXPECT_EQ(again.appDeployedUuid, _read.appDeployedUuid);
    EXPECT_EQ(again.sessionUuid, _read.sessionUuid) << "one for the process";
    EXPECT_NE(again.sessionUuid, again.appDeployedUuid);
}

TEST_F(GetConfigFileDataTest, DeletingTheLocalKeyMakesANewInstallationUuid) {
    Factory("<ProjectId>P1</ProjectId>");
    ASSERT_TRUE(GetConfigFileData(_read));
    const std::wstring first = _read.appDeployedUuid;
    LocalUuid("");
    ASSERT_TRUE(GetConfigFileData(_read));
    EXPECT_TRUE(IsUuid(_read.appDeployedUuid));
    EXPECT_NE(_read.appDeployedUuid, first);
}

TEST_F(GetConfigFileDataTest, FactoryKeysInTheLocalFileAreNotSeen) {
    Factory("");
    Lumeq::Testing::WriteFile(_machine.LocalSettingsFile(),
                              "<LumeqConfig version=\"4.0\"><ProjectId>P1</ProjectId></LumeqConfig>");
    EXPECT_FALSE(GetConfigFileData(_read));
}

TEST_F(GetConfigFileDataTest, FilesAreReadAfreshEachTime) {
    Factory("<ProjectId>P1</ProjectId>");
    ASSERT_TRUE(GetConfigFileData(_read));
    Factory("<ProjectId>P2</ProjectId>");
    ASSERT_TRUE(GetConfigFileData(_read));
    EXPECT_EQ(_read.projectId, L"P2");
}

TEST_F(GetConfigFileDataTest, DebuggerSeesAMissingKeyAsOftenAsItIsRead) {
    Factory("<ProjectId>P1</ProjectId>");
    const Lumeq::Testing::DebuggerStandIn debugger;
    ASSERT_TRUE(GetConfigFileData(_read));
    const std::string missing = "TRACE: Unable to get value of factory setting 'AppDeployedId'\n";
    EXPECT_THAT(debugger.Texts(), Contains(missing).Times(2));
}

TEST_F(GetConfigFileDataTest, FailedComInitializationIsWarnedOfAndNotBalanced) {
    Factory("<ProjectId>P1</ProjectId>");
    LogEverything();
    // The thread has entered the multithreaded apartment twice; the repair leaves it once.
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    EXPECT_FALSE(GetConfigFileData(_read));
    EXPECT_THAT(Warnings(), ElementsAre(StartsWith("Unbalanced COM initialization t="),
                                        "ComInitialize failed 0x80010106"));
    EXPECT_THAT(Progress(), Contains("GetConfigFileData CoInitialize returns 0x80010106"));
    EXPECT_THAT(Progress(), Not(Contains(AllOf(StartsWith("Uninit"), EndsWith("GetConfigFileData")))));
    EXPECT_EQ(Progress().back(), "GetConfigFileData returns false:");
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE) << "left the apartment";
}

TEST_F(GetConfigFileDataTest, MissingFactoryFileIsAStandardException) {
    LogEverything();
    EXPECT_FALSE(GetConfigFileData(_read));
    EXPECT_THAT(Warnings(), ElementsAre("GetConfigFileData exception with No factory settings file found"));
    EXPECT_EQ(Progress().back(), "GetConfigFileData returns false:");
}

TEST_F(GetConfigFileDataTest, DamagedFactoryFileIsAStandardException) {
    Lumeq::Testing::WriteFile(_machine.FactorySettingsFile(), "<LumeqConfig version=\"4.0\">");
    LogEverything();
    EXPECT_FALSE(GetConfigFileData(_read));
    EXPECT_THAT(Warnings(),
                ElementsAre("GetConfigFileData exception with Error parsing factory settings file"));
}

TEST_F(GetConfigFileDataTest, LocalFileThatCannotBeWrittenIsAComError) {
    Factory("<ProjectId>P1</ProjectId>");
    LocalUuid("");
    {
        const UnwritableFile file(_machine.LocalSettingsFile());
        EXPECT_FALSE(GetConfigFileData(_read));
    }
    EXPECT_THAT(Warnings(),
                ElementsAre("GetConfigFileData failed with _com_error exception 0x80070020, Sharing "
                            "violation."));
    EXPECT_EQ(Progress().back(), "GetConfigFileData returns false:");
    EXPECT_THAT(LocalFile(), HasSubstr("<AppDeployedUuid></AppDeployedUuid>")) << "nothing is lost";
}

TEST_F(GetConfigFileDataTest, FailureWhileReadingKeepsTheInstanceForTheNextReading) {
    Factory("<ProjectId>P1</ProjectId>");
    LocalUuid("");
    {
        const UnwritableFile file(_machine.LocalSettingsFile());
        ASSERT_FALSE(GetConfigFileData(_read));
    }
    Factory("<ProjectId>P2</ProjectId>");
    ASSERT_TRUE(GetConfigFileData(_read));
    EXPECT_EQ(_read.projectId, L"P1") << "still the instance of the failed reading";
    ASSERT_TRUE(GetConfigFileData(_read));
    EXPECT_EQ(_read.projectId, L"P2");
}

TEST_F(GetConfigFileDataTest, NarrowTextEndsInTwoZeros) {
    Factory("<ProjectId>P1</ProjectId>");
    LogEverything();
    const Lumeq::Testing::PrintedNarrowTexts printed;
    const Lumeq::Testing::ImportedFunction<decltype(CoGetClassObject)> throwing(
        "ole32.dll", "CoGetClassObject",
        [](REFCLSID, DWORD, void*, REFIID, void**) -> HRESULT { throw Lumeq::Testing::OutOfOrder(); });
    EXPECT_FALSE(GetConfigFileData(_read));
    EXPECT_THAT(Warnings(), ElementsAre("GetConfigFileData exception with out of order"));
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0);
}

TEST_F(GetConfigFileDataTest, AnythingElseIsAnUnknownException) {
    Factory("<ProjectId>P1</ProjectId>");
    LogEverything();
    const Lumeq::Testing::ImportedFunction<decltype(CoGetClassObject)> throwing(
        "ole32.dll", "CoGetClassObject", [](REFCLSID, DWORD, void*, REFIID, void**) -> HRESULT { throw 42; });
    EXPECT_FALSE(GetConfigFileData(_read));
    EXPECT_THAT(Warnings(), ElementsAre("GetConfigFileData failed with unknown exception"));
    EXPECT_EQ(Progress().back(), "GetConfigFileData returns false:");
}

TEST_F(GetConfigFileDataTest, MemoryThatRunsOutAnywhereIsWarnedOf) {
    Factory("<ProjectId>P1</ProjectId>");
    LocalUuid("11111111-2222-3333-4444-555555555555");
    LogEverything();
    Lumeq::Common::SetVerbosity(Lumeq::Common::SeverityLevel::WARNING); // Other lines would need memory too.
    bool happened = true;
    for (int nth = 1; happened; ++nth) {
        std::filesystem::remove(_machine.LogFile());
        BasicConfiguration read;
        bool complete = false;
        {
            const Lumeq::Testing::FailingAllocation failing(nth);
            complete = GetConfigFileData(read);
            happened = failing.Happened();
        }
        Lumeq::Core::Utils::DropSharedInstance();
        EXPECT_EQ(complete, !happened) << nth;
        const std::vector<std::string> warned{"GetConfigFileData exception with std::bad_alloc"};
        EXPECT_EQ(Warnings(), happened ? warned : std::vector<std::string>()) << nth;
    }
}

TEST_F(GetConfigFileDataTest, FailureAfterTheLastReadIsLoggedAndTheResultKept) {
    Factory("<ProjectId>P1</ProjectId>");
    {
        // The server's key is missing and read twice, the second time as the last of all keys.
        const Lumeq::Testing::ImportedFunction<decltype(OutputDebugStringW)> breaking(
            "kernel32.dll", "OutputDebugStringW", &FailingSettingsLock::WatchDebugger);
        EXPECT_TRUE(GetConfigFileData(_read));
    }
    FailingSettingsLock::Mend();
    EXPECT_EQ(_read.projectId, L"P1");
    EXPECT_THAT(Warnings(), ElementsAre("GetConfigFileData exception with Resource deadlock avoided"));
    EXPECT_EQ(Progress().back(), "GetConfigFileData returns true:");

    Factory("<ProjectId>P2</ProjectId>");
    ASSERT_TRUE(GetConfigFileData(_read));
    EXPECT_EQ(_read.projectId, L"P1") << "the shared instance stayed";
}

} // namespace Zuvan::LumeqShim
