#include "LumeqLib/Core/Utils/SettingsDocuments.h"

#include "Common/Exceptions.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>

#include <comdef.h>
#include <objbase.h>

namespace Zuvan::Lumeq::Core::Utils {

using Testing::ImportedFunction;
using Testing::IsolatedMachine;
using Testing::ReadFile;
using Testing::WriteFile;

namespace {

class SettingsDocuments : public testing::Test {
protected:
    SettingsDocuments() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~SettingsDocuments() override { CoUninitialize(); }

    std::wstring Path() const { return (_machine.HostFolder() / "file.xml").wstring(); }
    void Write(const std::string& content) const { WriteFile(Path(), content); }

    /// The full text of the failure without the path at its end.
    template <class Call>
    std::wstring FailureOf(Call call) const {
        const std::wstring end = L"\nPath: \"" + Path() + L"\"";
        try {
            call();
        } catch (const Common::VestoException& failure) {
            std::wstring text = failure.FullMessage();
            return text.ends_with(end) ? text.substr(0, text.size() - end.size()) : L"without path: " + text;
        }
        return L"no failure";
    }
    std::wstring FactoryFailure() const {
        return FailureOf([this] { LoadFactoryDocument(Path()); });
    }
    std::wstring LocalFailure() const {
        return FailureOf([this] { LoadLocalDocument(Path()); });
    }

    static std::wstring Value(const XmlDocumentPointer& document, const std::wstring& key) {
        const XmlNodePointer node = FindNode(*RootElement(*document.Get()).Get(), key);
        return node ? NodeText(*node.Get()) : L"(none)";
    }

    IsolatedMachine _machine;
};

constexpr char Kernel[] = "kernel32.dll";
constexpr char GoodFile[] = "<LumeqConfig version=\"4.0\"><Name>read</Name></LumeqConfig>";

BOOL WINAPI ReadNothing(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
    SetLastError(ERROR_READ_FAULT);
    return FALSE;
}

/// Reads as if the file had become shorter meanwhile.
BOOL WINAPI ReadHalf(HANDLE file, void* buffer, DWORD size, DWORD* read, OVERLAPPED* overlapped) {
    return Testing::RealFunction<decltype(::ReadFile)>(Kernel, "ReadFile")(file, buffer, size / 2, read,
                                                                           overlapped);
}

int readsUntilSuccess;
BOOL WINAPI ReadLater(HANDLE file, void* buffer, DWORD size, DWORD* read, OVERLAPPED* overlapped) {
    if (--readsUntilSuccess >= 0)
        return ReadNothing(file, buffer, size, read, overlapped);
    return Testing::RealFunction<decltype(::ReadFile)>(Kernel, "ReadFile")(file, buffer, size, read,
                                                                           overlapped);
}

template <class Call>
HRESULT ComErrorOf(Call call) {
    try {
        call();
    } catch (const _com_error& failure) {
        return failure.Error();
    }
    return S_OK;
}

constexpr wchar_t BadLocal[] = L"Error parsing local settings file";
constexpr wchar_t BadFactory[] = L"Error parsing factory settings file";

std::string BillionLaughs() {
    std::string text = "<!DOCTYPE LumeqConfig [<!ENTITY a0 \"lol\">";
    for (int i = 1; i < 10; ++i) {
        text += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int k = 0; k < 10; ++k)
            text += "&a" + std::to_string(i - 1) + ";";
        text += "\">";
    }
    return text + "]><LumeqConfig version=\"4.0\"><UserOptIn>&a9;</UserOptIn></LumeqConfig>";
}

std::string QuadraticBlowup() {
    std::string text = "<!DOCTYPE LumeqConfig [<!ENTITY a \"" + std::string(100'000, 'x') +
                       "\">]><LumeqConfig version=\"4.0\"><UserOptIn>";
    for (int i = 0; i < 100'000; ++i)
        text += "&a;";
    return text + "</UserOptIn></LumeqConfig>";
}

} // namespace

TEST_F(SettingsDocuments, FactoryFileOfTheOneVersionIsRead) {
    Write("<LumeqConfig version=\"4.0\"><ProjectId>p</ProjectId></LumeqConfig>");
    EXPECT_EQ(Value(LoadFactoryDocument(Path()), L"ProjectId"), L"p");
}

TEST_F(SettingsDocuments, FactoryRootMayHaveAnyName) {
    Write("<Whatever version=\"4.0\"><ProjectId>p</ProjectId></Whatever>");
    EXPECT_EQ(Value(LoadFactoryDocument(Path()), L"ProjectId"), L"p");
}

TEST_F(SettingsDocuments, FactoryFileOfAnotherVersionNamesBoth) {
    Write("<LumeqConfig version=\"4.1\"/>");
    EXPECT_EQ(FactoryFailure(), L"Factory settings version mismatch; expected: '4.0', actual: '4.1'");
    Write("<LumeqConfig version=\" 4.0\"/>");
    EXPECT_EQ(FactoryFailure(), L"Factory settings version mismatch; expected: '4.0', actual: ' 4.0'");
}

TEST_F(SettingsDocuments, FactoryFileWithoutVersionNamesAnEmptyOne) {
    Write("<LumeqConfig/>");
    EXPECT_EQ(FactoryFailure(), L"Factory settings version mismatch; expected: '4.0', actual: ''");
}

TEST_F(SettingsDocuments, FactoryFileThatIsGoneByNowIsAFailure) {
    EXPECT_EQ(FactoryFailure(), L"Factory settings file not found");
}

TEST_F(SettingsDocuments, FactoryFileOfBadXmlIsAFailure) {
    for (const char* text : {"", "<LumeqConfig version=\"4.0\">", "no xml", "<a/><b/>"}) {
        Write(text);
        EXPECT_EQ(FactoryFailure(), BadFactory) << text;
    }
}

TEST_F(SettingsDocuments, FactoryDocumentWithoutRootIsAFailure) {
    const XmlDocumentPointer document = CreateXmlDocument();
    EXPECT_EQ(FailureOf([&] { CheckFactoryDocument(*document.Get(), Path()); }),
              L"Expected root element not found in factory settings file");
}

TEST_F(SettingsDocuments, MissingLocalFileIsANewDocumentAndNoFile) {
    const XmlDocumentPointer document = LoadLocalDocument(Path());
    const XmlElementPointer root = RootElement(*document.Get());
    EXPECT_EQ(TagName(*root.Get()), L"LumeqConfig");
    EXPECT_EQ(Attribute(*root.Get(), L"version"), L"4.0");
    EXPECT_FALSE(std::filesystem::exists(Path()));
}

TEST_F(SettingsDocuments, VersionOfALocalFileIsNotChecked) {
    Write("<LumeqConfig version=\"3\"><UserOptIn>True</UserOptIn></LumeqConfig>");
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"UserOptIn"), L"True");
}

TEST_F(SettingsDocuments, LocalFileOfAForeignRootIsReadUnchanged) {
    Write("<Foreign><UserOptIn>True</UserOptIn></Foreign>");
    const XmlDocumentPointer document = LoadLocalDocument(Path());
    EXPECT_EQ(Value(document, L"UserOptIn"), L"True");
    EXPECT_EQ(TagName(*RootElement(*document.Get()).Get()), L"Foreign");
}

TEST_F(SettingsDocuments, OlderRootIsRenamedWithItsChildrenAndAttributes) {
    Write("<LUMConfig version=\"3.0\" note=\"a &amp; "
          "b\"><UserOptIn>True</UserOptIn><!--kept--><Empty/></LUMConfig>");
    const std::string before = ReadFile(Path());
    const XmlDocumentPointer document = LoadLocalDocument(Path());
    EXPECT_EQ(Value(document, L"UserOptIn"), L"True");
    EXPECT_EQ(ReadFile(Path()), before);
    SaveXml(*document.Get(), Path());
    std::string after = ReadFile(Path());
    std::erase_if(after, [](char c) { return c == '\r' || c == '\n'; });
    EXPECT_EQ(after, "<LumeqConfig version=\"3.0\" note=\"a &amp; b\"><UserOptIn>True</UserOptIn>"
                     "<!--kept--><Empty/></LumeqConfig>");
}

TEST_F(SettingsDocuments, PathIsNotTakenForAUrl) {
    const std::filesystem::path folder = _machine.HostFolder();
    WriteFile(folder / "a b.xml", "<LumeqConfig version=\"4.0\"><ProjectId>blank</ProjectId></LumeqConfig>");
    for (const wchar_t* name : {L"a%20b.xml", L"a#b.xml", L"a%b.xml"}) {
        const std::filesystem::path path = folder / name;
        WriteFile(path, "<LumeqConfig version=\"4.0\"><ProjectId>own</ProjectId></LumeqConfig>");
        EXPECT_EQ(Value(LoadFactoryDocument(path.wstring()), L"ProjectId"), L"own") << path;
        EXPECT_EQ(Value(LoadLocalDocument(path.wstring()), L"ProjectId"), L"own") << path;
    }
}

TEST_F(SettingsDocuments, LocalFileThatIsEmptyOrCutShortIsAFailure) {
    for (const char* text : {"", " ", "<LumeqConfig version=\"4.0\"><UserOptIn>Tr", "<LumeqConfig"}) {
        Write(text);
        EXPECT_EQ(LocalFailure(), BadLocal) << text;
        EXPECT_EQ(ReadFile(Path()), text);
    }
}

TEST_F(SettingsDocuments, AnyDocumentTypeIsAFailure) {
    for (const char* type :
         {"<!DOCTYPE LumeqConfig>", "<!DOCTYPE LumeqConfig []>", "<!DOCTYPE LumeqConfig SYSTEM \"a.dtd\">",
          "<!DOCTYPE LumeqConfig [<!ENTITY x \"True\">]>"}) {
        Write(std::string(type) + "<LumeqConfig version=\"4.0\"><UserOptIn>True</UserOptIn></LumeqConfig>");
        EXPECT_EQ(LocalFailure(), BadLocal) << type;
        EXPECT_EQ(FactoryFailure(), BadFactory) << type;
    }
}

TEST_F(SettingsDocuments, ExternalEntityIsNotRead) {
    const std::filesystem::path secret = _machine.HostFolder() / "secret.txt";
    WriteFile(secret, "True");
    Write("<!DOCTYPE LumeqConfig [<!ENTITY x SYSTEM \"file:///" + secret.generic_string() +
          "\">]><LumeqConfig version=\"4.0\"><UserOptIn>&x;</UserOptIn></LumeqConfig>");
    EXPECT_EQ(LocalFailure(), BadLocal);
    EXPECT_EQ(FactoryFailure(), BadFactory);
}

TEST_F(SettingsDocuments, EntitiesThatGrowWithoutBoundAreAFailureInNoTime) {
    for (const std::string& text : {BillionLaughs(), QuadraticBlowup()}) {
        Write(text);
        const ULONGLONG start = GetTickCount64();
        EXPECT_EQ(LocalFailure(), BadLocal);
        EXPECT_EQ(FactoryFailure(), BadFactory);
        EXPECT_LT(GetTickCount64() - start, 10'000U);
    }
}

TEST_F(SettingsDocuments, LocalFileInUtf16IsRead) {
    const std::wstring text =
        L"\xFEFF<LumeqConfig version=\"4.0\"><Name>caf\u00e9 \u6f22</Name></LumeqConfig>";
    Write({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"caf\u00e9 \u6f22");
}

TEST_F(SettingsDocuments, DeclarationOfAnotherEncodingIsDropped) {
    Write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><LumeqConfig><Name>caf\xE9</Name></LumeqConfig>");
    const XmlDocumentPointer document = LoadLocalDocument(Path());
    SaveXml(*document.Get(), Path());
    EXPECT_EQ(ReadFile(Path()).find("<?xml"), std::string::npos);
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"caf\u00e9");
}

TEST_F(SettingsDocuments, DeclarationOfUtf8IsKept) {
    Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?><LumeqConfig><Name>caf\xC3\xA9</Name></LumeqConfig>");
    const XmlDocumentPointer document = LoadLocalDocument(Path());
    SaveXml(*document.Get(), Path());
    EXPECT_TRUE(ReadFile(Path()).starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"caf\u00e9");
}

TEST_F(SettingsDocuments, LocalFileOpenedExclusivelyIsAFailure) {
    Write("<LumeqConfig version=\"4.0\"/>");
    const HANDLE file = CreateFileW(Path().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(LocalFailure(), BadLocal);
    CloseHandle(file);
    EXPECT_NO_THROW(LoadLocalDocument(Path()));
}

TEST_F(SettingsDocuments, FileThatAnotherProgramHasOpenForWritingIsRead) {
    Write("<LumeqConfig version=\"4.0\"><Name>read</Name></LumeqConfig>");
    const HANDLE file = CreateFileW(Path().c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(Value(LoadFactoryDocument(Path()), L"Name"), L"read");
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"read");
    CloseHandle(file);
}

TEST_F(SettingsDocuments, FileThatCannotBeReadIsAFailure) {
    Write(GoodFile);
    for (auto* read : {&ReadNothing, &ReadHalf}) {
        const ImportedFunction<decltype(::ReadFile)> failing(Kernel, "ReadFile", read);
        EXPECT_EQ(FactoryFailure(), BadFactory);
        EXPECT_EQ(LocalFailure(), BadLocal);
    }
    EXPECT_EQ(Value(LoadFactoryDocument(Path()), L"Name"), L"read");
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"read");
    EXPECT_EQ(ReadFile(Path()), GoodFile);
}

TEST_F(SettingsDocuments, LocalFileIsReadOnceMoreBeforeItIsAFailure) {
    Write(GoodFile);
    const ImportedFunction<decltype(::ReadFile)> later(Kernel, "ReadFile", &ReadLater);
    readsUntilSuccess = 1;
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"read");
    readsUntilSuccess = 2;
    EXPECT_EQ(LocalFailure(), BadLocal);
    readsUntilSuccess = 1;
    EXPECT_EQ(FactoryFailure(), BadFactory);
}

TEST_F(SettingsDocuments, FileOfUnknownSizeIsAFailure) {
    Write(GoodFile);
    {
        const ImportedFunction<decltype(GetFileSizeEx)> failing(
            Kernel, "GetFileSizeEx", [](HANDLE, LARGE_INTEGER*) -> BOOL { return FALSE; });
        EXPECT_EQ(FactoryFailure(), BadFactory);
        EXPECT_EQ(LocalFailure(), BadLocal);
    }
    EXPECT_EQ(Value(LoadFactoryDocument(Path()), L"Name"), L"read");
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"read");
}

TEST_F(SettingsDocuments, FileOfFourGigabytesIsAFailureWithoutAnAllocation) {
    Write(GoodFile);
    const ImportedFunction<decltype(GetFileSizeEx)> huge(Kernel, "GetFileSizeEx",
                                                         [](HANDLE, LARGE_INTEGER* size) -> BOOL {
                                                             size->QuadPart = 0x1'0000'0010;
                                                             return TRUE;
                                                         });
    const ImportedFunction<decltype(SafeArrayCreateVector)> watched("oleaut32.dll", "SafeArrayCreateVector",
                                                                    [](VARTYPE, LONG, ULONG) -> SAFEARRAY* {
                                                                        ADD_FAILURE();
                                                                        return nullptr;
                                                                    });
    EXPECT_EQ(FactoryFailure(), BadFactory);
    EXPECT_EQ(LocalFailure(), BadLocal);
}

TEST_F(SettingsDocuments, FileThatIsLargerThanMemoryRaisesAComError) {
    Write(GoodFile);
    {
        const ImportedFunction<decltype(SafeArrayCreateVector)> failing(
            "oleaut32.dll", "SafeArrayCreateVector",
            [](VARTYPE, LONG, ULONG) -> SAFEARRAY* { return nullptr; });
        EXPECT_EQ(ComErrorOf([this] { LoadFactoryDocument(Path()); }), E_OUTOFMEMORY);
        EXPECT_EQ(ComErrorOf([this] { LoadLocalDocument(Path()); }), E_OUTOFMEMORY);
    }
    EXPECT_EQ(Value(LoadFactoryDocument(Path()), L"Name"), L"read");
    EXPECT_EQ(Value(LoadLocalDocument(Path()), L"Name"), L"read");
}

TEST_F(SettingsDocuments, CallThatFailsRaisesAComError) {
    Write("<LumeqConfig version=\"4.0\"/>");
    const XmlDocumentPointer document = LoadLocalDocument(Path());
    try {
        SaveXml(*document.Get(), Path() + L"\\no folder");
        FAIL();
    } catch (const _com_error& failure) {
        EXPECT_LT(failure.Error(), 0);
    }
}

TEST(XmlDocument, CannotBeMadeWithoutCom) {
    try {
        CreateXmlDocument();
        FAIL();
    } catch (const Common::ComException& failure) {
        EXPECT_EQ(failure.FullMessage(),
                  L"Failed to create an instance of COM DOMDocument30 class\nHRESULT: 0x800401F0");
    }
}

} // namespace Zuvan::Lumeq::Core::Utils
