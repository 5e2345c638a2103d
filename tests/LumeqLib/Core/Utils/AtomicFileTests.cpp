#include "LumeqLib/Core/Utils/AtomicFile.h"

#include "Common/SystemHandles.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/TextShape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <aclapi.h>
#include <chrono>
#include <optional>
#include <sddl.h>
#include <set>
#include <thread>
#include <vector>

namespace Zuvan::Lumeq::Core::Utils {

using testing::ElementsAre;
using Testing::ImportedFunction;
using Testing::IsolatedMachine;
using Testing::ReadFile;
using Testing::WriteFile;

namespace {

constexpr char Before[] =
    "<LumeqConfig version=\"4.0\"><AppDeployedUuid>kept</AppDeployedUuid></LumeqConfig>";

class AtomicFile : public testing::Test {
protected:
    AtomicFile() {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        _document = CreateXmlDocument();
        AppendChild(*_document.Get(), *CreateXmlElement(*_document.Get(), L"New").Get());
        WriteFile(Path(), Before);
    }
    ~AtomicFile() override {
        _document.Reset();
        CoUninitialize();
    }

    std::filesystem::path Path() const { return _machine.ProgramData() / "LumeqLocalSettings.xml"; }
    std::filesystem::path Beside(const char* name) const { return _machine.ProgramData() / name; }

    /// The error code of the failed call; 0 if it did not fail.
    static HRESULT Save(IXMLDOMDocument& document, const std::filesystem::path& path) {
        try {
            SaveAtomically(document, path.wstring());
            return S_OK;
        } catch (const _com_error& failure) {
            return failure.Error();
        }
    }
    HRESULT Save() const { return Save(*_document.Get(), Path()); }

    void ExpectUntouched() const {
        EXPECT_EQ(ReadFile(Path()), Before);
        EXPECT_EQ(FileCount(), 1);
    }
    std::string Content() const { return Content(Path()); }
    static std::string Content(const std::filesystem::path& path) {
        std::string text = ReadFile(path);
        std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
        return text;
    }
    std::ptrdiff_t FileCount() const {
        const std::filesystem::directory_iterator files(_machine.ProgramData());
        return std::distance(begin(files), end(files));
    }

    IsolatedMachine _machine;
    XmlDocumentPointer _document;
};

class OpenFile {
public:
    OpenFile(const std::filesystem::path& path, DWORD sharing)
        : _file(CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr)) {}
    ~OpenFile() { CloseHandle(_file); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

private:
    HANDLE _file;
};

std::wstring AccessRights(const std::filesystem::path& path) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    wchar_t* text = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                    nullptr, nullptr, &descriptor),
              static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_TRUE(ConvertSecurityDescriptorToStringSecurityDescriptorW(
        descriptor, SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr));
    const std::wstring rights = text;
    LocalFree(text);
    LocalFree(descriptor);
    return rights;
}

void SetAccessRights(const std::filesystem::path& path, const std::wstring& rights) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights.c_str(), SDDL_REVISION_1,
                                                                     &descriptor, nullptr));
    EXPECT_TRUE(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor));
    LocalFree(descriptor);
}

/// Full rights for this user only.
std::wstring OwnRights() {
    Common::UniqueKernelObject token;
    EXPECT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.Receive()));
    alignas(TOKEN_USER) BYTE user[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    EXPECT_TRUE(GetTokenInformation(token.Get(), TokenUser, user, sizeof user, &size));
    wchar_t* sid = nullptr;
    EXPECT_TRUE(ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user)->User.Sid, &sid));
    const std::wstring rights = std::wstring(L"D:P(A;;FA;;;") + sid + L")";
    LocalFree(sid);
    return rights;
}

constexpr wchar_t EverybodysRights[] = L"D:P(A;;FA;;;WD)";

/// The calls that create a file, in order.
struct MadeFile {
    std::wstring path;
    DWORD disposition;
    DWORD flags;
};
std::vector<MadeFile> madeFiles;
bool mayMakeFiles = true;

HANDLE WINAPI WatchedCreateFile(LPCWSTR path, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security,
                                DWORD disposition, DWORD flags, HANDLE like) {
    if (disposition != OPEN_EXISTING) {
        madeFiles.push_back({path, disposition, flags});
        if (!mayMakeFiles) {
            SetLastError(ERROR_ACCESS_DENIED);
            return INVALID_HANDLE_VALUE;
        }
    }
    return Testing::RealFunction<decltype(CreateFileW)>("kernel32.dll", "CreateFileW")(
        path, access, sharing, security, disposition, flags, like);
}

/// The error that each attempt to replace the file reports, and the number of attempts.
DWORD replacingError = ERROR_ACCESS_DENIED;
int replacings = 0;

BOOL WINAPI RefusedMove(LPCWSTR, LPCWSTR, DWORD) {
    ++replacings;
    SetLastError(replacingError);
    return FALSE;
}

/// The operations on the disk, in order.
std::vector<std::string> diskSteps;

BOOL WINAPI WatchedFlush(HANDLE file) {
    LARGE_INTEGER size{};
    GetFileSizeEx(file, &size);
    diskSteps.push_back(size.QuadPart > 0 ? "flush" : "flush of nothing");
    return Testing::RealFunction<decltype(FlushFileBuffers)>("kernel32.dll", "FlushFileBuffers")(file);
}

BOOL WINAPI WatchedMove(LPCWSTR from, LPCWSTR to, DWORD flags) {
    diskSteps.push_back("move");
    return Testing::RealFunction<decltype(MoveFileExW)>("kernel32.dll", "MoveFileExW")(from, to, flags);
}

BOOL WINAPI FailedWrite(HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) {
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

void SetWrittenAgo(const std::filesystem::path& path, std::chrono::seconds age) {
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - age);
}

} // namespace

TEST_F(AtomicFile, SavedFileTakesThePlaceOfTheOldOne) {
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Content(), "<New/>");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(AtomicFile, FileThatIsMissingIsMade) {
    std::filesystem::remove(Path());
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Content(), "<New/>");
}

TEST_F(AtomicFile, ReadOnlyFileIsRefusedAndKept) {
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070005U);
    ExpectUntouched();
    EXPECT_NE(GetFileAttributesW(Path().c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(AtomicFile, FileOpenedExclusivelyIsRefusedAndKept) {
    {
        const OpenFile file(Path(), 0);
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070020U);
    }
    ExpectUntouched();
}

TEST_F(AtomicFile, FileThatStaysOpenIsRefusedAndKept) {
    {
        const OpenFile file(Path(), FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_LT(Save(), 0);
    }
    ExpectUntouched();
}

TEST_F(AtomicFile, FileThatIsSoonClosedIsWaitedFor) {
    auto file = std::make_unique<OpenFile>(Path(), FILE_SHARE_READ);
    std::thread closing([&file] {
        Sleep(60);
        file.reset();
    });
    EXPECT_EQ(Save(), S_OK);
    closing.join();
    EXPECT_EQ(Content(), "<New/>");
}

TEST_F(AtomicFile, LoadingWaitsForAWriter) {
    auto writer = std::make_unique<OpenFile>(Path(), 0);
    std::thread closing([&writer] {
        Sleep(60);
        writer.reset();
    });
    const XmlDocumentPointer document = CreateXmlDocument();
    EXPECT_TRUE(LoadWithRetry(*document.Get(), Path().wstring()));
    closing.join();
}

TEST_F(AtomicFile, FileThatLoadsAtOnceIsOpenedOnce) {
    static std::vector<DWORD> sharings;
    sharings.clear();
    const ImportedFunction<decltype(CreateFileW)> watched(
        "kernel32.dll", "CreateFileW",
        [](LPCWSTR path, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security, DWORD disposition,
           DWORD flags, HANDLE like) {
            sharings.push_back(sharing);
            return Testing::RealFunction<decltype(CreateFileW)>("kernel32.dll", "CreateFileW")(
                path, access, sharing, security, disposition, flags, like);
        });
    constexpr DWORD Everything = 7;
    constexpr DWORD NoWriting = 5;
    EXPECT_TRUE(LoadWithRetry(*CreateXmlDocument().Get(), Path().wstring()));
    EXPECT_THAT(sharings, ElementsAre(Everything));
    sharings.clear();
    WriteFile(Path(), "<cut");
    EXPECT_FALSE(LoadWithRetry(*CreateXmlDocument().Get(), Path().wstring()));
    EXPECT_THAT(sharings, ElementsAre(Everything, NoWriting, Everything))
        << "tried, then held and tried again";
}

TEST_F(AtomicFile, LoadedFileCanBeWrittenAndReplacedAtOnce) {
    const XmlDocumentPointer document = CreateXmlDocument();
    EXPECT_TRUE(LoadWithRetry(*document.Get(), Path().wstring()));
    const HANDLE writer =
        CreateFileW(Path().c_str(), GENERIC_WRITE | DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(writer, INVALID_HANDLE_VALUE);
    CloseHandle(writer);
}

TEST_F(AtomicFile, UnreadableTemporaryFileDoesNotReplaceTheFile) {
    // A document without a root.
    EXPECT_LT(Save(*CreateXmlDocument().Get(), Path()), 0);
    ExpectUntouched();
}

TEST_F(AtomicFile, WaitsForAScannerOfTheTemporaryFile) {
    static int refusals;
    refusals = 3;
    const ImportedFunction<decltype(CreateFileW)> scanned(
        "kernel32.dll", "CreateFileW",
        [](LPCWSTR path, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security, DWORD disposition,
           DWORD flags, HANDLE like) {
            if (disposition == OPEN_EXISTING && std::wstring(path).ends_with(L".tmp") && refusals > 0) {
                --refusals;
                SetLastError(ERROR_SHARING_VIOLATION);
                return INVALID_HANDLE_VALUE;
            }
            return Testing::RealFunction<decltype(CreateFileW)>("kernel32.dll", "CreateFileW")(
                path, access, sharing, security, disposition, flags, like);
        });
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(refusals, 0);
    EXPECT_EQ(Content(), "<New/>");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(AtomicFile, MissingFolderIsAFailure) {
    EXPECT_EQ(static_cast<unsigned long>(Save(*_document.Get(), _machine.ProgramData() / "none" / "a.xml")),
              0x80070003U);
    ExpectUntouched();
}

TEST_F(AtomicFile, FileIsWrittenDirectlyInAFolderThatTakesNoOther) {
    mayMakeFiles = false;
    const ImportedFunction<decltype(CreateFileW)> refused("kernel32.dll", "CreateFileW", &WatchedCreateFile);
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(madeFiles.size(), 1U);
    EXPECT_EQ(Content(), "<New/>");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(AtomicFile, ReadOnlyFileIsRefusedInAFolderThatTakesNoOther) {
    mayMakeFiles = false;
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    {
        const ImportedFunction<decltype(CreateFileW)> refused("kernel32.dll", "CreateFileW",
                                                              &WatchedCreateFile);
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070005U);
    }
    ExpectUntouched();
    SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(AtomicFile, FileThatMustNotBeReplacedIsWritten) {
    const ImportedFunction<decltype(MoveFileExW)> refused("kernel32.dll", "MoveFileExW", &RefusedMove);
    for (const DWORD error : {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION}) {
        WriteFile(Path(), Before);
        replacingError = error;
        replacings = 0;
        EXPECT_EQ(Save(), S_OK);
        EXPECT_GT(replacings, 1);
        EXPECT_EQ(Content(), "<New/>");
        EXPECT_EQ(FileCount(), 1);
    }
}

TEST_F(AtomicFile, FileThatCannotBeReplacedForAnotherReasonIsKept) {
    {
        const ImportedFunction<decltype(MoveFileExW)> failing("kernel32.dll", "MoveFileExW", &RefusedMove);
        replacingError = ERROR_NOT_SAME_DEVICE;
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070011U);
        EXPECT_EQ(replacings, 1);
    }
    ExpectUntouched();
}

TEST_F(AtomicFile, FullDiskKeepsTheFile) {
    {
        const ImportedFunction<decltype(::WriteFile)> full("kernel32.dll", "WriteFile", &FailedWrite);
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070070U);
    }
    ExpectUntouched();
}

TEST_F(AtomicFile, IsOnTheDiskBeforeItTakesThePlace) {
    const ImportedFunction<decltype(FlushFileBuffers)> flush("kernel32.dll", "FlushFileBuffers",
                                                             &WatchedFlush);
    const ImportedFunction<decltype(MoveFileExW)> move("kernel32.dll", "MoveFileExW", &WatchedMove);
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(diskSteps, (std::vector<std::string>{"flush", "move"}));
}

TEST_F(AtomicFile, TemporaryFileIsNewAndItsNameUnpredictable) {
    const ImportedFunction<decltype(CreateFileW)> watched("kernel32.dll", "CreateFileW", &WatchedCreateFile);
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Save(), S_OK);
    ASSERT_EQ(madeFiles.size(), 2U);
    for (const MadeFile& made : madeFiles) {
        EXPECT_EQ(std::filesystem::path(made.path).parent_path(), _machine.ProgramData());
        EXPECT_EQ(
            Testing::ShapeOf(std::filesystem::path(made.path).filename().wstring(), L"0123456789ABCDEF"),
            L"Lumeq########-####.tmp");
        EXPECT_EQ(made.disposition, 1U);    // CREATE_NEW
        EXPECT_EQ(made.flags, 0x00200000U); // FILE_FLAG_OPEN_REPARSE_POINT
    }
    EXPECT_NE(madeFiles[0].path, madeFiles[1].path);
}

TEST_F(AtomicFile, KeepsTheAccessRightsOfTheFile) {
    // More rights than a new file inherits, and fewer.
    std::set<std::wstring> kept;
    for (const std::wstring& rights : {std::wstring(EverybodysRights), OwnRights()}) {
        WriteFile(Path(), Before);
        SetAccessRights(Path(), rights);
        const std::wstring before = AccessRights(Path());
        EXPECT_EQ(Save(), S_OK);
        EXPECT_EQ(Content(), "<New/>");
        EXPECT_EQ(AccessRights(Path()), before);
        kept.insert(before);
    }
    EXPECT_EQ(kept.size(), 2U);
}

TEST_F(AtomicFile, TemporaryFileOfAnotherProcessIsNotTouched) {
    static std::filesystem::path other;
    static std::filesystem::path planted;
    other = _machine.HostFolder() / "other.txt";
    WriteFile(other, "other");
    SetAccessRights(other, OwnRights());
    SetAccessRights(Path(), EverybodysRights);
    const std::wstring before = AccessRights(other);
    ASSERT_NE(before, AccessRights(Path()));
    {
        // Another process guesses the name and creates the file first.
        const ImportedFunction<decltype(CreateFileW)> planting(
            "kernel32.dll", "CreateFileW",
            [](LPCWSTR path, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security, DWORD disposition,
               DWORD flags, HANDLE like) {
                if (disposition != OPEN_EXISTING) {
                    planted = path;
                    EXPECT_TRUE(CreateHardLinkW(path, other.c_str(), nullptr));
                }
                return Testing::RealFunction<decltype(CreateFileW)>("kernel32.dll", "CreateFileW")(
                    path, access, sharing, security, disposition, flags, like);
            });
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070050U);
    }
    EXPECT_EQ(ReadFile(Path()), Before);
    EXPECT_EQ(ReadFile(planted), "other");
    EXPECT_EQ(AccessRights(other), before);
}

TEST_F(AtomicFile, LeftoversOfDeadProcessesAreRemoved) {
    WriteFile(Beside("Lumeq0123ABCD-89EF.tmp"), "<cut");
    SetWrittenAgo(Beside("Lumeq0123ABCD-89EF.tmp"), std::chrono::minutes(2));
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(AtomicFile, ManyLeftoversAreRemovedSixtyFourAtATime) {
    for (int i = 100; i < 200; ++i) {
        const std::string name = "Lumeq00000" + std::to_string(i) + "-89EF.tmp";
        WriteFile(Beside(name.c_str()), "<cut");
        SetWrittenAgo(Beside(name.c_str()), std::chrono::minutes(2));
    }
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(FileCount(), 37);
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(AtomicFile, TemporaryFileOfALivingProcessStays) {
    WriteFile(Beside("Lumeq0123ABCD-89EF.tmp"), "<New");
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(ReadFile(Beside("Lumeq0123ABCD-89EF.tmp")), "<New");
}

TEST_F(AtomicFile, OldFilesOfForeignNamesStay) {
    const std::vector<const char*> names = {"Lumeq.tmp",
                                            "Lumeq0123ABC-89EF.tmp",
                                            "Lumeq0123ABCDE-89EF.tmp",
                                            "Lumeq0123ABCDx89EF.tmp",
                                            "LumeqSettings-copy.tmp",
                                            "Lumeq0123ABCG-89EF.tmp",
                                            "Lumeq0123ABCD-89EF.tmp.bak",
                                            "aLumeq0123ABCD-89EF.tmp",
                                            "LumeqLocalSettings.tmp"};
    for (const char* name : names) {
        WriteFile(Beside(name), "mine");
        SetWrittenAgo(Beside(name), std::chrono::hours(48));
    }
    EXPECT_EQ(Save(), S_OK);
    for (const char* name : names)
        EXPECT_EQ(ReadFile(Beside(name)), "mine") << name;
}

TEST_F(AtomicFile, LongestPathCanStillBeSaved) {
    const std::wstring folder = _machine.ProgramData().wstring();
    const std::filesystem::path deep =
        folder + L"\\" + std::wstring(259 - 24 - folder.size(), L'd') + L"\\LumeqLocalSettings.xml";
    ASSERT_EQ(deep.wstring().size(), 259U);
    std::filesystem::create_directory(deep.parent_path());
    EXPECT_EQ(Save(*_document.Get(), deep), S_OK);
    EXPECT_EQ(Content(deep), "<New/>");
}

TEST_F(AtomicFile, MemoryForTheContentThatIsNotThereKeepsTheFile) {
    {
        const ImportedFunction<decltype(CreateStreamOnHGlobal)> failing(
            "ole32.dll", "CreateStreamOnHGlobal",
            [](HGLOBAL, BOOL, IStream**) -> HRESULT { return E_OUTOFMEMORY; });
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x8007000EU);
    }
    ExpectUntouched();
}

TEST_F(AtomicFile, ContentThatDoesNotReachTheDiskKeepsTheFile) {
    {
        const ImportedFunction<decltype(FlushFileBuffers)> failing("kernel32.dll", "FlushFileBuffers",
                                                                   [](HANDLE) -> BOOL {
                                                                       SetLastError(ERROR_DISK_FULL);
                                                                       return FALSE;
                                                                   });
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070070U);
    }
    ExpectUntouched();
}

TEST_F(AtomicFile, IsSavedIfItsAccessRightsCannotBeReadOrCopied) {
    {
        const ImportedFunction<decltype(GetSecurityInfo)> unreadable(
            "advapi32.dll", "GetSecurityInfo",
            [](HANDLE, SE_OBJECT_TYPE, SECURITY_INFORMATION, PSID*, PSID*, ACL**, ACL**,
               PSECURITY_DESCRIPTOR*) -> DWORD { return ERROR_ACCESS_DENIED; });
        EXPECT_EQ(Save(), S_OK);
    }
    const ImportedFunction<decltype(SetKernelObjectSecurity)> refused(
        "advapi32.dll", "SetKernelObjectSecurity",
        [](HANDLE, SECURITY_INFORMATION, PSECURITY_DESCRIPTOR) -> BOOL { return FALSE; });
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Content(), "<New/>");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(AtomicFile, IsSavedIfTheFolderCannotBeSearchedToItsEnd) {
    const char* const names[] = {"Lumeq0123ABCD-89EF.tmp", "Lumeq0123ABCD-89F0.tmp"};
    for (const char* name : names) {
        WriteFile(Beside(name), "<cut");
        SetWrittenAgo(Beside(name), std::chrono::minutes(2));
    }
    {
        const ImportedFunction<decltype(FindNextFileW)> denied(
            "kernel32.dll", "FindNextFileW", [](HANDLE, WIN32_FIND_DATAW*) -> BOOL { return FALSE; });
        EXPECT_EQ(Save(), S_OK);
    }
    EXPECT_EQ(Content(), "<New/>");
    EXPECT_EQ(FileCount(), 2) << "the first is gone, and the other is left to the next";
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(AtomicFile, IsSavedIfTheFolderCannotBeSearched) {
    const ImportedFunction<decltype(FindFirstFileW)> denied("kernel32.dll", "FindFirstFileW",
                                                            [](const wchar_t*, WIN32_FIND_DATAW*) -> HANDLE {
                                                                SetLastError(ERROR_ACCESS_DENIED);
                                                                return INVALID_HANDLE_VALUE;
                                                            });
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Content(), "<New/>");
}

} // namespace Zuvan::Lumeq::Core::Utils
