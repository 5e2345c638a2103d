#include "BasicOptInTest.h"

#include "LumeqLib/Core/Utils/Settings.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqShim/PauseState.h"
#include "support/Apartment.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"

#include <objbase.h>
#include <thread>

namespace Zuvan::LumeqShim {

using Lumeq::Testing::ApartmentOfThread;
using Lumeq::Testing::FailingAllocation;
using Lumeq::Testing::ImportedFunction;
using Lumeq::Testing::IsolatedMachine;
using Lumeq::Testing::NotInitialized;
using Lumeq::Testing::ReadFile;
using Lumeq::Testing::WriteFile;

namespace {

/// Local files, and the WARNING that each operation logs for them.
class BasicOptInFailure : public BasicOptIn {
protected:
    /// Every operation returns false, logs the failure and leaves the file alone.
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

    /// A failing write on a thread that ends afterwards.
    void LeaveInstanceBehind() {
        SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_READONLY);
        std::thread([] { BasicSetUserOptIn(false, UserOptInKey); }).join();
        SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
        ASSERT_EQ(Warnings().size(), 1U);
    }
};

constexpr char BadFile[] = " exception with Error parsing local settings file";

/// COM's balance as its first word and the caller, a duration as its label, any other line unchanged.
std::string WithoutNumbers(const std::string& message) {
    if (const std::size_t caller = message.find(", f="); caller != std::string::npos)
        return message.substr(0, message.find(' ')) + " " + message.substr(caller + 4);
    return message.substr(0, message.find(" took "));
}

} // namespace

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
    // There is a file where the folder should be.
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

TEST_F(BasicOptInFailure, ErrorWithoutASystemMessageIsLoggedByItsNumber) {
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
    // The next operation finds the instance that could not be saved, and drops it.
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptInFailure, InstanceLeftBehindByADeadThreadTakesNoComFromTheNext) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    LeaveInstanceBehind();
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    // This operation finds the instance that could not be saved, and drops it.
    EXPECT_FALSE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    EXPECT_TRUE(BasicGetUserOptIn(UserOptInKey));
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    CoUninitialize();
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOptInFailure, InstanceLeftBehindByADeadThreadServesAThreadWithoutCom) {
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

TEST_F(BasicOptInFailure, IsLoggedBeforeTheEndOfComAndOfTheDuration) {
    WriteLocalFile("<LumeqConfig");
    for (const Operation& operation : Operations()) {
        ClearLog();
        operation.call();
        Texts lines;
        for (const Lumeq::Testing::LoggedLine& line : Lines())
            if (!line.message.ends_with("CoInitialize returns 0x00000000"))
                lines.push_back(WithoutNumbers(line.message));
        const std::string name = "Zuvan::LumeqShim::" + operation.name;
        EXPECT_EQ(lines, (Texts{"Init " + name, "Init Zuvan::Lumeq::Core::Utils::Settings::GetInstance",
                                "Uninit Zuvan::Lumeq::Core::Utils::Settings::GetInstance",
                                operation.name + BadFile, "Uninit " + name, operation.name}));
    }
}

TEST_F(BasicOptInFailure, MemoryThatRunsOutAnywhereIsWarnedOf) {
    // Lines below a warning would need memory as well.
    Lumeq::Common::SetVerbosity(Lumeq::Common::SeverityLevel::WARNING);
    std::vector<Operation> operations = Operations();
    const std::wstring path(100, L'a');
    operations.push_back({"BasicLocalSubfolderPath", [&path] {
                              BasicLocalSubfolderPath(path);
                              BasicLocalSubfolderPath({});
                              return false;
                          }});
    for (const Operation& operation : operations) {
        bool happened = true;
        for (int nth = 1; happened; ++nth) {
            WriteLocal("<UserOptIn>True</UserOptIn>");
            ClearLog();
            {
                const FailingAllocation failing(nth);
                operation.call();
                happened = failing.Happened();
            }
            Lumeq::Core::Utils::DropSharedInstance();
            const Texts warned{operation.name + " exception with std::bad_alloc"};
            ASSERT_EQ(Warnings(), happened ? warned : Texts()) << nth;
        }
    }
}

TEST_F(BasicOptInFailure, FailingAllocationsThrowNothing) {
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

} // namespace Zuvan::LumeqShim
