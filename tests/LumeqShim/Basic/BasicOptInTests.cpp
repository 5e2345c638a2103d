#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/PauseState.h"

#include "Common/Logger.h"
#include "LumeqLib/Core/Utils/Settings.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "support/Apartment.h"
#include "support/ChildProcess.h"
#include "support/DebuggerStandIn.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <functional>
#include <objbase.h>
#include <thread>

namespace Zuvan::LumeqShim {

using Lumeq::Testing::ApartmentOfThread;
using Lumeq::Testing::ChildProcess;
using Lumeq::Testing::DebuggerStandIn;
using Lumeq::Testing::ExecutablePath;
using Lumeq::Testing::FailingAllocation;
using Lumeq::Testing::ImportedFunction;
using Lumeq::Testing::IsolatedMachine;
using Lumeq::Testing::LoggedLine;
using Lumeq::Testing::NotInitialized;
using Lumeq::Testing::ReadFile;
using Lumeq::Testing::WriteFile;

namespace {

using Texts = std::vector<std::string>;

struct Operation {
    std::string name;
    std::function<bool()> call;
};

// Made once: the calls themselves need no memory.
const std::wstring Key = UserOptInKey;

/// The four that use COM; BasicSetUserOptIn gives false.
std::vector<Operation> Operations() {
    return {{"BasicGetUserOptIn", [] { return BasicGetUserOptIn(Key); }},
            {"BasicSetUserOptIn",
             [] {
                 BasicSetUserOptIn(true, Key);
                 return false;
             }},
            {"BasicDidUserOpted", [] { return BasicDidUserOpted(Key); }},
            {"BasicClearOptIn", [] { return BasicClearOptIn(Key); }}};
}

class BasicOptIn : public testing::Test {
protected:
    BasicOptIn() {
        _machine.WriteFactorySettings();
        // Reads the policy, so that the lines of the cases are their own alone.
        Lumeq::Common::LogMessage(Lumeq::Common::SeverityLevel::DEBUG, L"", 0, nullptr, L"first");
        ClearLog();
        std::filesystem::remove_all(_machine.ProgramData() / "Zuvan");
    }

    void WriteLocal(const std::string& settings) const { WriteLocalFile(Document(settings)); }
    void WriteLocalFile(const std::string& content) const {
        WriteFile(_machine.LocalSettingsFile(), content);
    }
    std::string LocalFile() const { return WithoutLineEnds(ReadFile(_machine.LocalSettingsFile())); }
    static std::string Document(const std::string& settings) {
        return "<LumeqConfig version=\"4.0\">" + settings + "</LumeqConfig>";
    }
    static std::string WithoutLineEnds(std::string text) {
        std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
        return text;
    }
    std::ptrdiff_t FilesBesideTheLocalOne() const {
        const std::filesystem::directory_iterator files(_machine.LocalSettingsFile().parent_path());
        return std::distance(begin(files), end(files)) - 1;
    }

    void ClearLog() const { std::filesystem::remove(_machine.LogFile()); }
    std::vector<LoggedLine> Lines() const { return Lumeq::Testing::LogLines(_machine.LogFile()); }
    Texts Warnings() const { return Lumeq::Testing::LogMessages(_machine.LogFile(), "WARNING"); }
    static bool IsOwn(const std::string& message) {
        return message.find(", f=") == std::string::npos && message.find(" took ") == std::string::npos;
    }
    /// What the operation itself logged, without COM's balance and durations.
    Texts OwnLines() const {
        Texts messages;
        for (const LoggedLine& line : Lines())
            if (IsOwn(line.message))
                messages.push_back(line.message);
        return messages;
    }
    Texts OwnLinesOf(const std::function<void()>& call) const {
        ClearLog();
        call();
        return OwnLines();
    }

    ChildProcess Start(const std::wstring& command, const std::wstring& argument) const {
        return {_programs / "lumeq_opt_in_process.exe",
                {IsolatedMachine::FactorySettingsFile().wstring(), _machine.LocalSettingsFile().wstring(),
                 command, argument}};
    }

    // Before the executable seems to be elsewhere.
    std::filesystem::path _programs = ExecutablePath().parent_path();
    IsolatedMachine _machine;
};

/// The WARNING that each operation logs when the local file is as told.
class BasicOptInFailure : public BasicOptIn {
protected:
    /// Every operation reads false, logs the failure and leaves the file alone.
    void ExpectFailure(const std::string& failure) {
        const std::string before = ReadFile(_machine.LocalSettingsFile());
        for (const Operation& operation : Operations()) {
            ClearLog();
            EXPECT_FALSE(operation.call()) << operation.name;
            EXPECT_EQ(Warnings(), Texts{operation.name + failure});
            EXPECT_EQ(ReadFile(_machine.LocalSettingsFile()), before) << operation.name;
            EXPECT_EQ(FilesBesideTheLocalOne(), 0);
        }
    }

    /// A write that fails, on a thread that ends then.
    void LeaveInstanceBehind() {
        SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_READONLY);
        std::thread([] { BasicSetUserOptIn(false, UserOptInKey); }).join();
        SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
        ASSERT_EQ(Warnings().size(), 1U);
    }
};

constexpr char BadFile[] = " exception with Error parsing local settings file";

} // namespace

TEST_F(BasicOptIn, KeysAreTheNamesInTheFile) {
    EXPECT_STREQ(UserOptInKey, L"UserOptIn");
    EXPECT_STREQ(OptinBeforePauseKey, L"OptinBeforePause");
}

TEST_F(BasicOptIn, WrittenValueIsReadBack) {
    BasicSetUserOptIn(true, UserOptInKey);
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(LocalFile(), Document("<UserOptIn>True</UserOptIn>"));
    BasicSetUserOptIn(false, UserOptInKey);
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_TRUE(BasicDidUserOpted(UserOptInKey));
    EXPECT_EQ(LocalFile(), Document("<UserOptIn>False</UserOptIn>"));
}

TEST_F(BasicOptIn, KeysDoNotDisturbEachOther) {
    WriteLocal("<AppDeployedUuid>{1}</AppDeployedUuid>");
    BasicSetUserOptIn(true, OptinBeforePauseKey);
    BasicSetUserOptIn(false, UserOptInKey);
    EXPECT_TRUE(BasicGetUserOptIn(OptinBeforePauseKey));
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(LocalFile(),
              Document("<AppDeployedUuid>{1}</AppDeployedUuid><OptinBeforePause>True</OptinBeforePause>"
                       "<UserOptIn>False</UserOptIn>"));
}

TEST_F(BasicOptIn, WordInAnyLetterCaseIsAFlag) {
    for (const char* word : {"TRUE", "true", "tRuE"}) {
        WriteLocal(std::string("<UserOptIn>") + word + "</UserOptIn>");
        EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey)) << word;
        EXPECT_TRUE(BasicDidUserOpted(UserOptInKey)) << word;
    }
    WriteLocal("<UserOptIn>FALSE</UserOptIn>");
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_TRUE(BasicDidUserOpted(UserOptInKey));
}

TEST_F(BasicOptIn, AnyOtherWordIsNeitherFlagNorAbsent) {
    for (const char* word : {"Yes", "1", "Truee", "True False"}) {
        WriteLocal(std::string("<UserOptIn>") + word + "</UserOptIn>");
        const std::string before = LocalFile();
        EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey)) << word;
        EXPECT_FALSE(BasicDidUserOpted(UserOptInKey)) << word;
        EXPECT_EQ(LocalFile(), before);
        EXPECT_TRUE(BasicClearOptIn(UserOptInKey));
    }
}

TEST_F(BasicOptIn, MissingKeyReadsAsFalse) {
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_FALSE(BasicDidUserOpted(UserOptInKey));
    EXPECT_FALSE(std::filesystem::exists(_machine.LocalSettingsFile()));
}

TEST_F(BasicOptIn, EmptyOrBlankFlagReadsAsFalse) {
    for (const char* text : {"<UserOptIn/>", "<UserOptIn xml:space=\"preserve\"> &#9;&#10;</UserOptIn>"}) {
        WriteLocal(text);
        EXPECT_EQ(OwnLinesOf([] { EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey)); }).back(),
                  "Basic Get User Opt-In returns 0 for key 'False'");
        EXPECT_FALSE(BasicDidUserOpted(UserOptInKey));
    }
}

TEST_F(BasicOptIn, ClearRemovesTheKey) {
    WriteLocal("<UserOptIn>True</UserOptIn><A>1</A>");
    EXPECT_TRUE(BasicClearOptIn(UserOptInKey));
    EXPECT_EQ(LocalFile(), Document("<A>1</A>"));
}

TEST_F(BasicOptIn, ClearOfAMissingKeyDoesNotSave) {
    EXPECT_FALSE(BasicClearOptIn(UserOptInKey));
    EXPECT_FALSE(std::filesystem::exists(_machine.LocalSettingsFile()));
    // An older root would be renamed by a save.
    WriteLocalFile("<LUMConfig/>");
    EXPECT_FALSE(BasicClearOptIn(UserOptInKey));
    EXPECT_EQ(LocalFile(), "<LUMConfig/>");
}

TEST_F(BasicOptIn, ForeignRootIsKept) {
    WriteLocalFile("<Foreign note=\"x\"><Other>1</Other></Foreign>");
    BasicSetUserOptIn(true, UserOptInKey);
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(LocalFile(), "<Foreign note=\"x\"><Other>1</Other><UserOptIn>True</UserOptIn></Foreign>");
}

TEST_F(BasicOptIn, FileInUtf16LosesNothing) {
    const std::wstring text =
        L"\xFEFF<?xml version=\"1.0\" encoding=\"UTF-16\"?><LumeqConfig version=\"4.0\">"
        L"<Name>caf\u00e9 \u6f22</Name><UserOptIn>True</UserOptIn></LumeqConfig>";
    WriteLocalFile({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    BasicSetUserOptIn(false, UserOptInKey);
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_TRUE(BasicDidUserOpted(UserOptInKey));
    const std::shared_ptr<Lumeq::Core::Utils::Settings> settings =
        Lumeq::Core::Utils::Settings::GetInstance();
    EXPECT_EQ(settings->GetLocalSetting(L"Name", L""), L"caf\u00e9 \u6f22");
    Lumeq::Core::Utils::DropSharedInstance();
}

TEST_F(BasicOptInFailure, EmptyFileIsLeftAlone) {
    WriteLocalFile("");
    ExpectFailure(BadFile);
}

TEST_F(BasicOptInFailure, FileCutShortIsLeftAlone) {
    WriteLocalFile("<LumeqConfig version=\"4.0\"><UserOptIn>Tr");
    ExpectFailure(BadFile);
}

TEST_F(BasicOptInFailure, FileWithADocumentTypeIsLeftAlone) {
    WriteLocalFile(
        "<!DOCTYPE LumeqConfig [<!ENTITY x \"True\">]><LumeqConfig><UserOptIn>&x;</UserOptIn></LumeqConfig>");
    ExpectFailure(BadFile);
}

TEST_F(BasicOptInFailure, FileThatAnotherHasOpenWithoutSharingIsLeftAlone) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    for (const Operation& operation : Operations()) {
        ClearLog();
        const HANDLE file = CreateFileW(_machine.LocalSettingsFile().c_str(), GENERIC_READ, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        EXPECT_FALSE(operation.call()) << operation.name;
        CloseHandle(file);
        EXPECT_EQ(Warnings(), Texts{operation.name + BadFile});
        EXPECT_EQ(LocalFile(), Document("<UserOptIn>True</UserOptIn>"));
    }
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
}

TEST_F(BasicOptInFailure, ReadOnlyFileIsReadAndNotWritten) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    ASSERT_TRUE(SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    BasicSetUserOptIn(false, UserOptInKey);
    EXPECT_EQ(Warnings(),
              Texts{"BasicSetUserOptIn failed with _com_error exception 0x80070005, Access denied."});
    ClearLog();
    EXPECT_FALSE(BasicClearOptIn(UserOptInKey));
    EXPECT_EQ(Warnings(),
              Texts{"BasicClearOptIn failed with _com_error exception 0x80070005, Access denied."});
    EXPECT_EQ(LocalFile(), Document("<UserOptIn>True</UserOptIn>"));
    EXPECT_EQ(FilesBesideTheLocalOne(), 0);
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(BasicOptInFailure, FolderThatCannotBeMadeIsAFailureOfTheSave) {
    // A file stands where the folder should.
    WriteFile(_machine.ProgramData() / "Zuvan", "mine");
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_TRUE(Warnings().empty());
    BasicSetUserOptIn(true, UserOptInKey);
    EXPECT_EQ(Warnings(),
              Texts{"BasicSetUserOptIn failed with _com_error exception 0x80070003, Path not found."});
    EXPECT_EQ(ReadFile(_machine.ProgramData() / "Zuvan"), "mine");
}

TEST_F(BasicOptInFailure, FilesThatCannotBeReadMakeEveryOperationFail) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    {
        const ImportedFunction<decltype(::ReadFile)> failing(
            "kernel32.dll", "ReadFile",
            [](HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) -> BOOL { return FALSE; });
        ExpectFailure(" exception with Error parsing factory settings file");
    }
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
}

TEST_F(BasicOptInFailure, FilesThatMemoryDoesNotHoldMakeEveryOperationFail) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    {
        const ImportedFunction<decltype(SafeArrayCreateVector)> failing(
            "oleaut32.dll", "SafeArrayCreateVector",
            [](VARTYPE, LONG, ULONG) -> SAFEARRAY* { return nullptr; });
        ExpectFailure(" failed with _com_error exception 0x8007000e, Out of memory.");
    }
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
}

TEST_F(BasicOptInFailure, ErrorWithoutATextOfTheSystemsIsToldByItsNumber) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    ASSERT_TRUE(SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_READONLY));
    {
        const ImportedFunction<DWORD(DWORD, const void*, DWORD, DWORD, wchar_t*, DWORD, char**)> failing(
            "kernel32.dll", "FormatMessageW",
            [](DWORD, const void*, DWORD, DWORD, wchar_t*, DWORD, char**) -> DWORD { return 0; });
        BasicSetUserOptIn(false, UserOptInKey);
    }
    EXPECT_EQ(
        Warnings(),
        Texts{"BasicSetUserOptIn failed with _com_error exception 0x80070005, Unknown error 0x80070005"});
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(BasicOptInFailure, MissingFactoryFileMakesEveryOperationFail) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    std::filesystem::remove(IsolatedMachine::FactorySettingsFile());
    ExpectFailure(" exception with No factory settings file found");
}

TEST_F(BasicOptInFailure, SharedInstanceIsNotDropped) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_READONLY);
    BasicSetUserOptIn(false, UserOptInKey);
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
    // The instance that could not be saved is the one that the next operation finds, and drops.
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptInFailure, InstanceLeftBehindByADeadThreadTakesNoComFromTheNext) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    LeaveInstanceBehind();
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    // Finds the instance that could not be saved, and drops it.
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    CoUninitialize();
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptInFailure, InstanceLeftBehindByADeadThreadIsGoodForAThreadWithoutCom) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    LeaveInstanceBehind();
    BasicSetUserOptIn(false, OptinBeforePauseKey);
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
    EXPECT_EQ(LocalFile(),
              Document("<UserOptIn>False</UserOptIn><OptinBeforePause>False</OptinBeforePause>"));
    EXPECT_TRUE(BasicDidUserOpted(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptInFailure, ThreadThatLeftAnInstanceBehindKeepsItsComWhenAnotherDropsIt) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_READONLY);
    BasicSetUserOptIn(false, UserOptInKey);
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
    std::thread([] {
        EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
        EXPECT_EQ(ApartmentOfThread(), NotInitialized);
    }).join();
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    CoUninitialize();
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptIn, GetLogsTheValueInThePlaceOfTheKey) {
    WriteLocal("<UserOptIn>tRUE</UserOptIn>");
    EXPECT_EQ(OwnLinesOf([] { BasicGetUserOptIn(UserOptInKey); }),
              (Texts{"BasicGetUserOptIn CoInitialize returns 0x00000000",
                     "Basic Get User Opt-In returns 1 for key 'tRUE'"}));
}

TEST_F(BasicOptIn, SetLogsWithItsOddCapitals) {
    EXPECT_EQ(OwnLinesOf([] { BasicSetUserOptIn(true, UserOptInKey); }),
              (Texts{"BasicSetuserOptin CoInitialize returns 0x00000000", "Basic Set User Opt-In"}));
}

TEST_F(BasicOptIn, DidLogsWithItsOddCapitals) {
    WriteLocal("<UserOptIn>False</UserOptIn>");
    EXPECT_EQ(OwnLinesOf([] { BasicDidUserOpted(UserOptInKey); }),
              (Texts{"BasicDiduserOptin CoInitialize returns 0x00000000",
                     "Basic Did User Opted returns 1 from False"}));
    EXPECT_EQ(
        OwnLinesOf([] { BasicDidUserOpted(L"None"); }),
        (Texts{"BasicDiduserOptin CoInitialize returns 0x00000000", "Basic Did User Opted returns 0 from "}));
}

TEST_F(BasicOptIn, ClearLogsWhatItGives) {
    WriteLocal("<UserOptIn>False</UserOptIn>");
    for (const char* result : {"1", "0"})
        EXPECT_EQ(OwnLinesOf([] { BasicClearOptIn(UserOptInKey); }),
                  (Texts{"BasicClearOptIn CoInitialize returns 0x00000000",
                         std::string("BasicClear Opt In returns ") + result}));
}

TEST_F(BasicOptIn, LinesOfSuccessAreAtDebug) {
    for (const Operation& operation : Operations()) {
        ClearLog();
        operation.call();
        for (const LoggedLine& line : Lines())
            EXPECT_EQ(line.severity, "DEBUG") << line;
    }
}

TEST_F(BasicOptIn, ComIsBalancedInsideTheDuration) {
    for (const Operation& operation : Operations()) {
        ClearLog();
        operation.call();
        Texts order;
        for (const LoggedLine& line : Lines()) {
            const std::string& text = line.message;
            if (const std::size_t caller = text.find(", f="); caller != std::string::npos)
                order.push_back(text.substr(0, text.find(' ')) + text.substr(caller + 4));
            else if (text.find(" took ") != std::string::npos)
                order.push_back(text.substr(0, text.find(" took ")));
        }
        const std::string name = "Zuvan::LumeqShim::" + operation.name;
        EXPECT_EQ(order, (Texts{"Init" + name, "InitZuvan::Lumeq::Core::Utils::Settings::GetInstance",
                                "UninitZuvan::Lumeq::Core::Utils::Settings::~Settings", "Uninit" + name,
                                operation.name}));
    }
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptIn, MultithreadedThreadIsRepairedAndLeftWithoutApartment) {
    for (const Operation& operation : Operations()) {
        WriteLocal("<UserOptIn>True</UserOptIn>");
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        ClearLog();
        {
            const DebuggerStandIn debugger;
            EXPECT_EQ(operation.call(), operation.name != "BasicSetUserOptIn");
            EXPECT_EQ(debugger.Breaks(), 1) << operation.name;
        }
        const Texts warnings = Warnings();
        ASSERT_EQ(warnings.size(), 1U);
        EXPECT_TRUE(warnings[0].starts_with("Unbalanced COM initialization t=")) << warnings[0];
        EXPECT_TRUE(warnings[0].ends_with(", f=Zuvan::LumeqShim::" + operation.name)) << warnings[0];
        EXPECT_EQ(ApartmentOfThread(), NotInitialized) << operation.name;
    }
}

TEST_F(BasicOptIn, ThreadThatStaysMultithreadedHasNoEffect) {
    for (const Operation& operation : Operations()) {
        WriteLocal("<UserOptIn>True</UserOptIn>");
        const std::string before = LocalFile();
        // One level is undone, the other one stays.
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
        ClearLog();
        EXPECT_FALSE(operation.call()) << operation.name;
        EXPECT_EQ(Warnings().back(), "ComInitialize failed 0x80010106");
        EXPECT_EQ(OwnLines().size(), 2U);
        EXPECT_TRUE(OwnLines().front().ends_with("CoInitialize returns 0x80010106"));
        EXPECT_EQ(LocalFile(), before);
        APTTYPE type{};
        EXPECT_EQ(ApartmentOfThread(type), S_OK);
        EXPECT_EQ(type, APTTYPE_MTA);
        CoUninitialize();
        EXPECT_EQ(ApartmentOfThread(), NotInitialized);
    }
}

TEST_F(BasicOptIn, SingleThreadedThreadKeepsItsApartment) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    for (const Operation& operation : Operations()) {
        const Texts lines = OwnLinesOf([&] { operation.call(); });
        EXPECT_TRUE(lines.front().ends_with("CoInitialize returns 0x00000001"));
        EXPECT_EQ(ApartmentOfThread(), S_OK);
    }
    CoUninitialize();
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptInFailure, MemoryThatRunsOutAnywhereLetsNothingOut) {
    for (const Operation& operation : Operations()) {
        WriteLocal("<AppDeployedUuid>kept</AppDeployedUuid><UserOptIn>True</UserOptIn>");
        bool happened = true;
        for (int nth = 1; happened; ++nth) {
            {
                const FailingAllocation failing(nth);
                operation.call();
                happened = failing.Happened();
            }
            Lumeq::Core::Utils::DropSharedInstance();
            ASSERT_EQ(ApartmentOfThread(), NotInitialized) << operation.name << ' ' << nth;
            ASSERT_TRUE(LocalFile().find("<AppDeployedUuid>kept</AppDeployedUuid>") != std::string::npos)
                << operation.name << ' ' << nth;
            ASSERT_EQ(FilesBesideTheLocalOne(), 0);
        }
    }
}

TEST_F(BasicOptIn, SubfolderTakesEffectAtOnce) {
    BasicSetUserOptIn(true, UserOptInKey);
    BasicLocalSubfolderPath(L"Office");
    EXPECT_FALSE(BasicDidUserOpted(UserOptInKey));
    BasicSetUserOptIn(false, UserOptInKey);
    EXPECT_TRUE(
        std::filesystem::exists(_machine.ProgramData() / L"Zuvan\\Office\\LUMEQ\\LumeqLocalSettings.xml"));
    BasicLocalSubfolderPath(L"");
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
}

TEST_F(BasicOptIn, UnchangedSubfolderIsHarmless) {
    BasicLocalSubfolderPath(L"Office");
    BasicSetUserOptIn(true, UserOptInKey);
    BasicLocalSubfolderPath(L"Office");
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(Lumeq::Core::Utils::localSubfolder, L"Office");
}

TEST_F(BasicOptIn, SubfolderUsesNoComAndNoSettings) {
    BasicLocalSubfolderPath(L"Office");
    const std::vector<LoggedLine> lines = Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].message.starts_with("BasicLocalSubfolderPath took ")) << lines[0];
    EXPECT_FALSE(std::filesystem::exists(_machine.ProgramData() / "Zuvan"));
}

TEST_F(BasicOptIn, WhatAnotherProcessWroteIsSeen) {
    BasicSetUserOptIn(true, UserOptInKey);
    EXPECT_EQ(Start(L"set", L"False").Wait(), 0U);
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_TRUE(BasicDidUserOpted(UserOptInKey));
    EXPECT_EQ(Start(L"set", L"True").Wait(), 0U);
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
}

TEST_F(BasicOptIn, TwoProcessesDoNotRefuseEachOther) {
    BasicSetUserOptIn(true, UserOptInKey);
    ClearLog();
    ChildProcess other = Start(L"toggle", L"30");
    for (int i = 0; i < 30; ++i) {
        EXPECT_TRUE(BasicDidUserOpted(UserOptInKey));
        BasicSetUserOptIn(true, OptinBeforePauseKey);
    }
    EXPECT_EQ(other.Wait(), 0U);
    EXPECT_EQ(Warnings(), Texts());
}

TEST_F(BasicOptIn, ProcessThatDiesWhileSavingDamagesNothing) {
    WriteLocal("<AppDeployedUuid>kept</AppDeployedUuid>");
    BasicSetUserOptIn(true, UserOptInKey);
    ClearLog();
    for (const DWORD life : {30, 41, 52, 63, 74, 85, 96, 107}) {
        ChildProcess other = Start(L"toggle", L"0");
        Sleep(life);
        other.Kill();
        const std::string file = LocalFile();
        EXPECT_TRUE(file == Document("<AppDeployedUuid>kept</AppDeployedUuid><UserOptIn>True</UserOptIn>") ||
                    file == Document("<AppDeployedUuid>kept</AppDeployedUuid><UserOptIn>False</UserOptIn>"))
            << file;
        EXPECT_TRUE(BasicDidUserOpted(UserOptInKey));
    }
    EXPECT_EQ(Warnings(), Texts());
}

} // namespace Zuvan::LumeqShim
