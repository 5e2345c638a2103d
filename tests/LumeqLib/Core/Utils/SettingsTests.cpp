#include "LumeqLib/Core/Utils/Settings.h"

#include "Common/ComScope.h"
#include "Common/ComSession.h"
#include "Common/Exceptions.h"
#include "support/Apartment.h"
#include "support/DebuggerStandIn.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <objbase.h>
#include <psapi.h>
#include <thread>

namespace Zuvan::Lumeq::Core::Utils {

using Testing::ApartmentOfThread;
using Testing::DebuggerStandIn;
using Testing::ImportedFunction;
using Testing::IsolatedMachine;
using Testing::NotInitialized;
using Testing::ReadFile;
using Testing::RealFunction;
using Testing::WriteFile;

namespace {

class SettingsTest : public testing::Test {
protected:
    SettingsTest() { _machine.WriteFactorySettings("<Log>off</Log><Empty/><ProjectId>p 1</ProjectId>"); }
    ~SettingsTest() override { DropSharedInstance(); }

    void WriteLocal(const std::string& settings) {
        WriteFile(_machine.LocalSettingsFile(),
                  "<LumeqConfig version=\"4.0\">" + settings + "</LumeqConfig>");
    }
    std::string LocalFile() const {
        std::string text = ReadFile(_machine.LocalSettingsFile());
        std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
        return text;
    }
    bool HasLocalFile() const { return std::filesystem::exists(_machine.LocalSettingsFile()); }

    IsolatedMachine _machine;
};

/// Counts what a use of the settings asks of the platform, and asks it.
struct Platform {
    static inline int classes = 0;
    static inline int shells = 0;

    static HRESULT WINAPI FindClass(REFCLSID classId, DWORD context, void* server, REFIID iid,
                                    void** factory) {
        ++classes;
        return RealFunction<decltype(CoGetClassObject)>("ole32.dll", "CoGetClassObject")(
            classId, context, server, iid, factory);
    }
    static HMODULE WINAPI Load(const wchar_t* name) {
        ++shells;
        return RealFunction<decltype(LoadLibraryW)>("kernel32.dll", "LoadLibraryW")(name);
    }

    ImportedFunction<decltype(CoGetClassObject)> finding{"ole32.dll", "CoGetClassObject", &FindClass};
    ImportedFunction<decltype(LoadLibraryW)> loading{"kernel32.dll", "LoadLibraryW", &Load};
};

constexpr int WarmUpUses = 300;

/// LUMEQ_TEST_USES sets another number; 10,000 take half a minute.
int NumberOfUses() {
    const char* number = std::getenv("LUMEQ_TEST_USES");
    return number ? std::atoi(number) : 2'000;
}

std::wstring FailureOfGetInstance() {
    try {
        Settings::GetInstance();
    } catch (const Common::VestoException& failure) {
        return failure.FullMessage();
    }
    return L"no failure";
}

} // namespace

TEST_F(SettingsTest, FactorySettingIsTheTextOfItsElement) {
    EXPECT_EQ(Settings::GetInstance()->GetFactorySetting(L"ProjectId", L"default"), L"p 1");
}

TEST_F(SettingsTest, MissingKeyReturnsTheDefault) {
    const auto settings = Settings::GetInstance();
    EXPECT_EQ(settings->GetFactorySetting(L"None", L"default"), L"default");
    EXPECT_EQ(settings->GetLocalSetting(L"None", L"default"), L"default");
    DropSharedInstance();
}

TEST_F(SettingsTest, EmptyElementDoesNotReturnTheDefault) {
    WriteLocal("<Empty></Empty>");
    const auto settings = Settings::GetInstance();
    EXPECT_EQ(settings->GetFactorySetting(L"Empty", L"default"), L"");
    EXPECT_EQ(settings->GetLocalSetting(L"Empty", L"default"), L"");
    DropSharedInstance();
}

TEST_F(SettingsTest, KeyOfTheOtherFileIsNotSeen) {
    WriteLocal("<UserOptIn>True</UserOptIn>");
    const auto settings = Settings::GetInstance();
    EXPECT_EQ(settings->GetLocalSetting(L"ProjectId", L"default"), L"default");
    EXPECT_EQ(settings->GetFactorySetting(L"UserOptIn", L"default"), L"default");
    DropSharedInstance();
}

TEST_F(SettingsTest, MissingKeysAreSentToTheDebugger) {
    const auto settings = Settings::GetInstance();
    const DebuggerStandIn debugger;
    settings->GetFactorySetting(L"F", L"");
    settings->GetLocalSetting(L"L", L"");
    settings->RemoveLocalSetting(L"R");
    EXPECT_EQ(debugger.Output(), "TRACE: Unable to get value of factory setting 'F'\n"
                                 "TRACE: Unable to get value of local setting 'L'\n"
                                 "TRACE: Unable to get value of local setting 'R'\n");
    EXPECT_EQ(debugger.Breaks(), 0);
    DropSharedInstance();
}

TEST_F(SettingsTest, NoLocalFileIsMadeBeforeASave) {
    const auto settings = Settings::GetInstance();
    EXPECT_EQ(settings->GetLocalSetting(L"UserOptIn", L"default"), L"default");
    settings->SetLocalSetting(L"UserOptIn", L"True");
    EXPECT_FALSE(HasLocalFile());
    EXPECT_TRUE(settings->SaveLocalSettings());
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\"><UserOptIn>True</UserOptIn></LumeqConfig>");
    DropSharedInstance();
}

TEST_F(SettingsTest, NewValueIsDirtyUntilSaved) {
    WriteLocal("<A>1</A>");
    const auto settings = Settings::GetInstance();
    EXPECT_FALSE(settings->IsLocalDirty());
    settings->SetLocalSetting(L"A", L"2");
    EXPECT_TRUE(settings->IsLocalDirty());
    settings->SaveLocalSettings();
    EXPECT_FALSE(settings->IsLocalDirty());
    settings->SetLocalSetting(L"B", L"");
    EXPECT_TRUE(settings->IsLocalDirty());
    DropSharedInstance();
}

TEST_F(SettingsTest, PresentValueLeavesDirtyAsItWas) {
    WriteLocal("<A>1</A><B>1</B>");
    const auto settings = Settings::GetInstance();
    settings->SetLocalSetting(L"A", L"1");
    EXPECT_FALSE(settings->IsLocalDirty());
    settings->SetLocalSetting(L"B", L"2");
    settings->SetLocalSetting(L"A", L"1");
    EXPECT_TRUE(settings->IsLocalDirty());
    DropSharedInstance();
}

TEST_F(SettingsTest, RemovalIsNotDirty) {
    WriteLocal("<A>1</A>");
    const auto settings = Settings::GetInstance();
    EXPECT_TRUE(settings->RemoveLocalSetting(L"A"));
    EXPECT_FALSE(settings->IsLocalDirty());
    EXPECT_FALSE(settings->RemoveLocalSetting(L"A"));
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\"><A>1</A></LumeqConfig>");
    settings->SaveLocalSettings();
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\"/>");
    DropSharedInstance();
}

TEST_F(SettingsTest, ValuesAreWrittenAsText) {
    const auto settings = Settings::GetInstance();
    settings->SetLocalSetting(L"A", L"<b> & \"caf\u00e9\" \u6f22");
    settings->SaveLocalSettings();
    DropSharedInstance();
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\"><A>&lt;b&gt; &amp; \"caf\xC3\xA9\" "
                           "\xE6\xBC\xA2</A></LumeqConfig>");
}

TEST_F(SettingsTest, OlderRootIsRenamedByTheNextSave) {
    WriteFile(_machine.LocalSettingsFile(), "<LUMConfig version=\"4.0\" x=\"y\"><A>1</A></LUMConfig>");
    const auto settings = Settings::GetInstance();
    EXPECT_EQ(settings->GetLocalSetting(L"A", L""), L"1");
    EXPECT_FALSE(settings->IsLocalDirty());
    EXPECT_EQ(LocalFile(), "<LUMConfig version=\"4.0\" x=\"y\"><A>1</A></LUMConfig>");
    settings->SaveLocalSettings();
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\" x=\"y\"><A>1</A></LumeqConfig>");
    DropSharedInstance();
}

TEST_F(SettingsTest, InstanceIsSharedUntilItIsDropped) {
    const auto first = Settings::GetInstance();
    EXPECT_EQ(Settings::GetInstance(), first);
    EXPECT_EQ(first.use_count(), 2);
    DropSharedInstance();
    EXPECT_EQ(first.use_count(), 1);
    WriteLocal("<A>1</A>");
    EXPECT_EQ(first->GetLocalSetting(L"A", L""), L"");
    EXPECT_EQ(Settings::GetInstance()->GetLocalSetting(L"A", L""), L"1");
    DropSharedInstance();
}

TEST_F(SettingsTest, DropOfTheLastReferenceDoesNotLockItselfOut) {
    Settings::GetInstance();
    DropSharedInstance();
    DropSharedInstance();
    EXPECT_TRUE(std::unique_lock(SettingsLock(), std::try_to_lock).owns_lock());
}

TEST_F(SettingsTest, InstanceEndsUnderTheLock) {
    std::shared_ptr<Settings> settings = Settings::GetInstance();
    DropSharedInstance();
    static int held = 0;
    static int free = 0;
    const ImportedFunction<decltype(CoUninitialize)> ending("ole32.dll", "CoUninitialize", [] {
        std::thread([] {
            const std::unique_lock lock(SettingsLock(), std::try_to_lock);
            ++(lock ? free : held);
        }).join();
        RealFunction<decltype(CoUninitialize)>("ole32.dll", "CoUninitialize")();
    });
    settings.reset();
    EXPECT_EQ(held, 1);
    EXPECT_EQ(free, 0);
}

TEST_F(SettingsTest, UseKeepsItsInstanceUntilItHasFinished) {
    const std::wstring result =
        WithSettings([](const Settings& settings) { return settings.GetFactorySetting(L"ProjectId", L""); },
                     [](const std::wstring& value) {
                         EXPECT_EQ(ApartmentOfThread(), S_OK) << "the instance is dead already";
                         return value + L"!";
                     });
    EXPECT_EQ(result, L"p 1!");
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(SettingsTest, UseThatThrowsLeavesItsInstanceToTheNext) {
    EXPECT_THROW(WithSettings([](const Settings&) -> bool { throw 7; }), int);
    WriteLocal("<A>1</A>");
    const auto read = [](const Settings& settings) { return settings.GetLocalSetting(L"A", L"none"); };
    EXPECT_EQ(WithSettings(read), L"none");
    EXPECT_EQ(WithSettings(read), L"1");
}

TEST_F(SettingsTest, ComIsInitialisedForTheLifeOfTheInstance) {
    ASSERT_EQ(ApartmentOfThread(), NotInitialized);
    {
        const auto settings = Settings::GetInstance();
        DropSharedInstance();
        EXPECT_EQ(ApartmentOfThread(), S_OK);
    }
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(SettingsTest, UsesInOneSessionFindTheClassAndTheFolderOnce) {
    const Platform platform;
    const auto use = [] {
        return WithSettings([](Settings& settings) {
            settings.SetLocalSetting(L"A", settings.GetLocalSetting(L"A", L"") + L"1");
            settings.SaveLocalSettings();
            return settings.GetFactorySetting(L"ProjectId", L"");
        });
    };
    {
        const Common::ComSession session;
        const Common::ComScope com(L"operation");
        EXPECT_EQ(use(), L"p 1");
        EXPECT_EQ(use(), L"p 1");
        EXPECT_EQ(Platform::classes, 1);
        EXPECT_EQ(Platform::shells, 1);
        Common::ComSession::Suspend();
        use();
        EXPECT_EQ(Platform::classes, 2);
        EXPECT_EQ(Platform::shells, 2);
    }
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\"><A>111</A></LumeqConfig>");
    use();
    EXPECT_EQ(Platform::classes, 5) << "without a session, for each document: two loaded, one written";
    EXPECT_EQ(Platform::shells, 4) << "without a session, for loading and for saving";
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(SettingsTest, ClassThatIsNotFoundIsLookedForAgain) {
    const Common::ComSession session;
    {
        const ImportedFunction<decltype(CoGetClassObject)> failing(
            "ole32.dll", "CoGetClassObject",
            [](REFCLSID, DWORD, void*, REFIID, void**) -> HRESULT { return REGDB_E_CLASSNOTREG; });
        EXPECT_EQ(FailureOfGetInstance(),
                  L"Failed to create an instance of COM DOMDocument30 class\nHRESULT: 0x80040154");
    }
    EXPECT_EQ(
        WithSettings([](const Settings& settings) { return settings.GetFactorySetting(L"ProjectId", L""); }),
        L"p 1");
}

TEST_F(SettingsTest, ThreadThatCannotInitialiseComHasNoSettings) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    // One of the two initialisations is undone, the other one stays.
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    EXPECT_EQ(FailureOfGetInstance(), L"Failed to CoInitialize\nHRESULT: 0x80010106");
    CoUninitialize();
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(SettingsTest, MissingFactoryFileMakesTheLocalOneUnreachable) {
    WriteLocal("<A>1</A>");
    std::filesystem::remove(IsolatedMachine::FactorySettingsFile());
    EXPECT_EQ(FailureOfGetInstance(), L"No factory settings file found\nPath: \"" +
                                          (_machine.HostFolder() / "LumeqConfig.xml").wstring() + L"\"");
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\"><A>1</A></LumeqConfig>");
}

TEST_F(SettingsTest, DamagedLocalFileIsAFailureAndStays) {
    WriteFile(_machine.LocalSettingsFile(), "<LumeqConfig><A>1");
    EXPECT_EQ(FailureOfGetInstance(), L"Error parsing local settings file\nPath: \"" +
                                          _machine.LocalSettingsFile().wstring() + L"\"");
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
    EXPECT_EQ(LocalFile(), "<LumeqConfig><A>1");
}

TEST_F(SettingsTest, FailedCreationIsReportedToTheDebugger) {
    WriteFile(_machine.LocalSettingsFile(), "<LumeqConfig");
    const DebuggerStandIn debugger;
    EXPECT_NE(FailureOfGetInstance(), L"no failure");
    EXPECT_EQ(debugger.Output(),
              "TRACE: FactorySettingsPath is '" + IsolatedMachine::FactorySettingsFile().string() +
                  "'\nTRACE: LocalSettingsPath is '" + _machine.LocalSettingsFile().string() +
                  "'\nERROR: Fail creating Settings class: Error parsing local settings file\n");
    EXPECT_EQ(debugger.Breaks(), 1);
}

TEST_F(SettingsTest, FailedSaveStaysDirtyAndKeepsTheFile) {
    WriteLocal("<A>1</A>");
    const auto settings = Settings::GetInstance();
    settings->SetLocalSetting(L"A", L"2");
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_READONLY);
    try {
        settings->SaveLocalSettings();
        FAIL();
    } catch (const _com_error& failure) {
        EXPECT_EQ(failure.Error(), E_ACCESSDENIED);
    }
    SetFileAttributesW(_machine.LocalSettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(settings->IsLocalDirty());
    EXPECT_EQ(LocalFile(), "<LumeqConfig version=\"4.0\"><A>1</A></LumeqConfig>");
    DropSharedInstance();
}

TEST_F(SettingsTest, ManyUsesLeaveNothingBehind) {
    WriteLocal("<A>1</A>");
    const auto use = [] {
        const auto settings = Settings::GetInstance();
        EXPECT_EQ(settings->GetLocalSetting(L"A", L""), L"1");
        settings->SetLocalSetting(L"A", L"1");
        DropSharedInstance();
    };
    // The system hands out the lowest free number, so a handle leaked by each use would raise it.
    const auto nextHandle = [] {
        const Common::UniqueKernelObject event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        return reinterpret_cast<std::uintptr_t>(event.Get());
    };
    const auto memory = [] {
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
        return static_cast<std::int64_t>(counters.WorkingSetSize);
    };
    const int uses = NumberOfUses();
    for (int i = 0; i < WarmUpUses; ++i)
        use();
    const std::uintptr_t handleBefore = nextHandle();
    const std::int64_t memoryBefore = memory();
    for (int i = 0; i < uses; ++i)
        use();
    EXPECT_EQ(nextHandle(), handleBefore);
    EXPECT_LT((memory() - memoryBefore) / uses, 100) << "bytes for each use";
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

} // namespace Zuvan::Lumeq::Core::Utils
