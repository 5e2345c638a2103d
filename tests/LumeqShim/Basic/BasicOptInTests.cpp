#include "BasicOptInTest.h"

#include "LumeqLib/Core/Utils/Settings.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqShim/PauseState.h"
#include "support/Apartment.h"
#include "support/DebuggerStandIn.h"

#include <objbase.h>

namespace Zuvan::LumeqShim {

using Lumeq::Testing::ApartmentOfThread;
using Lumeq::Testing::ChildProcess;
using Lumeq::Testing::DebuggerStandIn;
using Lumeq::Testing::LoggedLine;
using Lumeq::Testing::NotInitialized;

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

TEST_F(BasicOptIn, EmptyOrWhiteSpaceFlagReadsAsFalse) {
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
    // A save would rename the older root.
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

TEST_F(BasicOptIn, ClearLogsItsResult) {
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
        // One of the two initialisations is undone, the other one stays.
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
