#include "LumeqLib/Core/Utils/SettingsPaths.h"

#include "Common/Exceptions.h"
#include "support/DebuggerStandIn.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"

#include <cwchar>
#include <gtest/gtest.h>
#include <shlwapi.h>

namespace Zuvan::Lumeq::Core::Utils {

using Testing::DebuggerStandIn;
using Testing::IsolatedMachine;
using Testing::WriteFile;

namespace {

constexpr wchar_t TooLong[] = L"One or both arguments to CombinePath exceed the maximum path length.\n"
                              L"Parameter name: pathIn";

template <class Call>
std::wstring FailureOf(Call call) {
    try {
        call();
    } catch (const Common::VestoException& failure) {
        return failure.FullMessage();
    }
    return L"no failure";
}

std::wstring CombineFailure(const std::wstring& left, const std::wstring& right) {
    return FailureOf([&] { CombinePath(left, right); });
}

/// Replaces the system's function, which returns no path of more than 259 characters.
class JoiningStandIn : public Testing::ImportedFunction<decltype(PathCombineW)> {
public:
    explicit JoiningStandIn(decltype(PathCombineW)* replacement)
        : ImportedFunction("shlwapi.dll", "PathCombineW", replacement) {}
};

LPWSTR WINAPI JoinWithoutLimit(LPWSTR joined, LPCWSTR left, LPCWSTR right) {
    // The buffer has room for 521 characters.
    EXPECT_EQ(std::wstring(joined, 521), std::wstring(521, L'\0'));
    return std::wcscat(std::wcscat(std::wcscpy(joined, left), L"\\"), right);
}

HRESULT WINAPI RefuseKnownFolder(const GUID&, DWORD, HANDLE, wchar_t** path) {
    *path = nullptr;
    return E_FAIL;
}

class VistaSystem : public AllUsersFolderSystem {
public:
    bool IsVistaOrLater() const override { return true; }
    bool GetSpecialFolder(wchar_t (&)[MAX_PATH + 1]) const override {
        ADD_FAILURE() << "the older road";
        return false;
    }
};

class NoShell : public VistaSystem {
public:
    Common::UniqueModule LoadShell() const override { return {}; }
};

class NoKnownFolderFunction : public VistaSystem {
public:
    KnownFolderFunction* FindKnownFolderFunction(HMODULE) const override { return nullptr; }
};

class RefusingShell : public VistaSystem {
public:
    KnownFolderFunction* FindKnownFolderFunction(HMODULE) const override { return &RefuseKnownFolder; }
};

class OlderSystem : public AllUsersFolderSystem {
public:
    bool IsVistaOrLater() const override { return false; }
    Common::UniqueModule LoadShell() const override {
        ADD_FAILURE() << "the newer road";
        return {};
    }
};

class OlderSystemWithoutFolder : public OlderSystem {
public:
    bool GetSpecialFolder(wchar_t (&)[MAX_PATH + 1]) const override { return false; }
};

} // namespace

TEST(CombinePath, JoinsWithOneBackslash) {
    EXPECT_EQ(CombinePath(L"C:\\a", L"b"), L"C:\\a\\b");
    EXPECT_EQ(CombinePath(L"C:\\a\\", L"b\\c"), L"C:\\a\\b\\c");
}

TEST(CombinePath, ResultOf259CharactersIsWhatTheSystemTakes) {
    const std::wstring left = L"C:\\" + std::wstring(200, L'a');
    const std::wstring path = CombinePath(left, std::wstring(55, L'b'));
    EXPECT_EQ(path.size(), 259U);
    EXPECT_EQ(path, left + L"\\" + std::wstring(55, L'b'));
}

TEST(CombinePath, ResultOf261CharactersNamesTheParameterPathIn) {
    EXPECT_EQ(CombineFailure(L"C:\\" + std::wstring(200, L'a'), std::wstring(57, L'b')), TooLong);
}

TEST(CombinePath, InputsOf522CharactersTogetherAreRefused) {
    EXPECT_EQ(CombineFailure(std::wstring(300, L'a'), std::wstring(221, L'b')), TooLong);
    EXPECT_EQ(CombineFailure(std::wstring(5000, L'a'), L"b"), TooLong);
}

TEST(CombinePath, JoiningThatFailsNamesTheParameterPathIn) {
    const JoiningStandIn failing([](LPWSTR, LPCWSTR, LPCWSTR) -> LPWSTR { return nullptr; });
    EXPECT_EQ(CombineFailure(L"C:\\a", L"b"), TooLong);
}

TEST(CombinePath, InputsOf521CharactersTogetherAreJoinedAndOf522NotEvenTried) {
    static int joinings = 0;
    const JoiningStandIn shortening([](LPWSTR joined, LPCWSTR, LPCWSTR) -> LPWSTR {
        ++joinings;
        return std::wcscpy(joined, L"C:\\short");
    });
    EXPECT_EQ(CombinePath(std::wstring(300, L'a'), std::wstring(220, L'b')), L"C:\\short");
    EXPECT_EQ(joinings, 1);
    EXPECT_EQ(CombineFailure(std::wstring(300, L'a'), std::wstring(221, L'b')), TooLong);
    EXPECT_EQ(joinings, 1);
}

TEST(CombinePath, JoinedPathOf260CharactersIsTakenAndOf261Refused) {
    const JoiningStandIn joining(&JoinWithoutLimit);
    const std::wstring left = L"C:\\" + std::wstring(200, L'a');
    EXPECT_EQ(CombinePath(left, std::wstring(56, L'b')), left + L"\\" + std::wstring(56, L'b'));
    EXPECT_EQ(CombineFailure(left, std::wstring(57, L'b')), TooLong);
}

TEST(CombinePath, JoinedPathOf520CharactersIsRefused) {
    const JoiningStandIn joining(&JoinWithoutLimit);
    EXPECT_EQ(CombineFailure(std::wstring(300, L'a'), std::wstring(219, L'b')), TooLong);
}

TEST(AllUsersFolder, NewerRoadIsForWhatTheSystemCallsVistaOrLater) {
    static BOOL answer;
    const Testing::ImportedFunction<decltype(VerifyVersionInfoW)> asked(
        "kernel32.dll", "VerifyVersionInfoW",
        [](OSVERSIONINFOEXW* version, DWORD fields, DWORDLONG conditions) -> BOOL {
            EXPECT_EQ(version->dwOSVersionInfoSize, 284U);
            EXPECT_EQ(version->dwMajorVersion, 6U);
            EXPECT_EQ(version->dwMinorVersion, 0U);
            EXPECT_EQ(version->wServicePackMajor, 0U);
            EXPECT_EQ(fields, 0x23U);                   // minor version, major version and service pack
            EXPECT_EQ(conditions & 0x3FFFFU, 0x1801BU); // each of them greater or equal
            return answer;
        });
    for (const BOOL isLater : {TRUE, FALSE}) {
        answer = isLater;
        EXPECT_EQ(AllUsersFolderSystem().IsVistaOrLater(), isLater != FALSE);
    }
}

TEST(AllUsersFolder, IsTheCommonApplicationData) {
    const IsolatedMachine machine;
    EXPECT_EQ(FindAllUsersFolder(), machine.ProgramData().wstring());
}

TEST(AllUsersFolder, OlderFunctionReturnsTheSame) {
    const IsolatedMachine machine;
    EXPECT_EQ(FindAllUsersFolder(OlderSystem()), machine.ProgramData().wstring());
}

TEST(AllUsersFolder, ShellThatCannotBeLoadedIsAFailure) {
    EXPECT_EQ(FailureOf([] { FindAllUsersFolder(NoShell()); }), L"Unable to load shell32.dll");
}

TEST(AllUsersFolder, MissingFunctionIsAFailure) {
    EXPECT_EQ(FailureOf([] { FindAllUsersFolder(NoKnownFolderFunction()); }),
              L"Unable to get address of SHGetKnownFolderPath function");
}

TEST(AllUsersFolder, RefusedCallIsAFailure) {
    EXPECT_EQ(FailureOf([] { FindAllUsersFolder(RefusingShell()); }), L"Call to SHGetKnownFolderPath failed");
}

TEST(AllUsersFolder, OlderRoadFails) {
    EXPECT_EQ(FailureOf([] { FindAllUsersFolder(OlderSystemWithoutFolder()); }),
              L"Unable to retrieve the directory that contains application data for all users.");
}

class FactoryPath : public testing::Test {
protected:
    std::wstring Beside(const wchar_t* name) const { return (_machine.HostFolder() / name).wstring(); }
    void Write(const wchar_t* name) const { WriteFile(_machine.HostFolder() / name, "<a/>"); }

    IsolatedMachine _machine;
};

TEST_F(FactoryPath, HostsOwnNameComesFirst) {
    Write(L"lumeq_machine_tests.LumeqConfig.xml");
    Write(L"LumeqConfig.xml");
    EXPECT_EQ(FindFactorySettingsPath(), Beside(L"lumeq_machine_tests.LumeqConfig.xml"));
}

TEST_F(FactoryPath, PlainNameComesSecond) {
    Write(L"LumeqConfig.xml");
    EXPECT_EQ(FindFactorySettingsPath(), Beside(L"LumeqConfig.xml"));
}

TEST_F(FactoryPath, NoFactoryFileIsAFailure) {
    EXPECT_EQ(FailureOf([] { FindFactorySettingsPath(); }),
              L"No factory settings file found\nPath: \"" + Beside(L"LumeqConfig.xml") + L"\"");
}

TEST_F(FactoryPath, UnknownExecutableDoesNotMeanTheCurrentFolder) {
    Write(L".LumeqConfig.xml");
    Write(L"LumeqConfig.xml");
    const std::filesystem::path current = std::filesystem::current_path();
    std::filesystem::current_path(_machine.HostFolder());
    const Testing::ImportedFunction<decltype(GetModuleFileNameW)> unknown(
        "kernel32.dll", "GetModuleFileNameW", [](HMODULE, LPWSTR, DWORD) -> DWORD { return 0; });
    EXPECT_EQ(FailureOf([] { FindFactorySettingsPath(); }), L"No factory settings file found\nPath: \"\"");
    std::filesystem::current_path(current);
}

TEST_F(FactoryPath, OverrideIsUsedUnlessWhiteSpace) {
    Write(L"LumeqConfig.xml");
    Write(L"other.xml");
    factorySettingsPathOverride = L" \t";
    EXPECT_EQ(FindFactorySettingsPath(), Beside(L"LumeqConfig.xml"));
    factorySettingsPathOverride = Beside(L"other.xml");
    EXPECT_EQ(FindFactorySettingsPath(), Beside(L"other.xml"));
    factorySettingsPathOverride = L"C:\\no such file.xml";
    EXPECT_EQ(FailureOf([] { FindFactorySettingsPath(); }),
              L"No factory settings file found\nPath: \"C:\\no such file.xml\"");
}

TEST_F(FactoryPath, IsSentToTheDebugger) {
    factorySettingsPathOverride = L"C:\\windows";
    const DebuggerStandIn debugger;
    FindFactorySettingsPath();
    EXPECT_EQ(debugger.Output(), "TRACE: FactorySettingsPath is 'C:\\windows'\n");
    EXPECT_EQ(debugger.Breaks(), 0);
}

class LocalPath : public testing::Test {
protected:
    IsolatedMachine _machine;
};

TEST_F(LocalPath, IsUnderTheDataOfAllUsers) {
    EXPECT_EQ(FindLocalSettingsPath(),
              _machine.ProgramData().wstring() + L"\\Zuvan\\LUMEQ\\LumeqLocalSettings.xml");
}

TEST_F(LocalPath, FolderIsMadeAndTheFileIsNot) {
    const std::filesystem::path path = FindLocalSettingsPath();
    EXPECT_TRUE(std::filesystem::is_directory(path.parent_path()));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(LocalPath, SubfolderComesBeforeLumeq) {
    localSubfolder = L"Office\\Second";
    EXPECT_EQ(FindLocalSettingsPath(),
              _machine.ProgramData().wstring() + L"\\Zuvan\\Office\\Second\\LUMEQ\\LumeqLocalSettings.xml");
    EXPECT_TRUE(std::filesystem::is_directory(_machine.ProgramData() / L"Zuvan\\Office\\Second\\LUMEQ"));
}

TEST_F(LocalPath, WhiteSpaceSubfolderIsNone) {
    for (const wchar_t* subfolder : {L" \t", L"\u00a0", L"\u2003", L"\u3000"}) {
        localSubfolder = subfolder;
        EXPECT_EQ(FindLocalSettingsPath(),
                  _machine.ProgramData().wstring() + L"\\Zuvan\\LUMEQ\\LumeqLocalSettings.xml");
    }
    localSubfolder = L"\u00a0a";
    EXPECT_EQ(FindLocalSettingsPath(),
              _machine.ProgramData().wstring() + L"\\Zuvan\\\u00a0a\\LUMEQ\\LumeqLocalSettings.xml");
}

TEST_F(LocalPath, SubfolderThatMakesThePathTooLongIsAFailure) {
    localSubfolder = std::wstring(250, L'a');
    EXPECT_EQ(FailureOf([] { FindLocalSettingsPath(); }), TooLong);
}

TEST_F(LocalPath, OverrideIsUsedUnchangedUnlessWhiteSpace) {
    const std::filesystem::path path = _machine.ProgramData() / "elsewhere" / "local.xml";
    localSettingsPathOverride = path.wstring();
    EXPECT_EQ(FindLocalSettingsPath(), path.wstring());
    EXPECT_FALSE(std::filesystem::exists(path.parent_path()));
    localSettingsPathOverride = L"  ";
    EXPECT_EQ(FindLocalSettingsPath(), _machine.LocalSettingsFile().wstring());
}

TEST_F(LocalPath, IsSentToTheDebugger) {
    localSettingsPathOverride = L"C:\\local.xml";
    const DebuggerStandIn debugger;
    FindLocalSettingsPath();
    EXPECT_EQ(debugger.Output(), "TRACE: LocalSettingsPath is 'C:\\local.xml'\n");
    EXPECT_EQ(debugger.Breaks(), 0);
}

} // namespace Zuvan::Lumeq::Core::Utils
