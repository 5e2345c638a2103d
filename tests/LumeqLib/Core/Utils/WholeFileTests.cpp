#include "LumeqLib/Core/Utils/WholeFile.h"

#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>

#include <aclapi.h>
#include <chrono>
#include <thread>

namespace Zuvan::Lumeq::Core::Utils {

using Testing::IsolatedMachine;
using Testing::ReadFile;
using Testing::WriteFile;

namespace {

constexpr char Before[] =
    "<LumeqConfig version=\"4.0\"><AppDeployedUuid>kept</AppDeployedUuid></LumeqConfig>";

class WholeFile : public testing::Test {
protected:
    WholeFile() {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        _document = CreateXmlDocument();
        AppendChild(*_document.Get(), *CreateXmlElement(*_document.Get(), L"New").Get());
        WriteFile(Path(), Before);
    }
    ~WholeFile() override {
        _document.Reset();
        CoUninitialize();
    }

    std::filesystem::path Path() const { return _machine.ProgramData() / "LumeqLocalSettings.xml"; }
    std::filesystem::path Neighbour(DWORD process = GetCurrentProcessId()) const {
        char name[32];
        std::snprintf(name, sizeof name, "Lumeq%08lx.tmp", process);
        return _machine.ProgramData() / name;
    }

    /// What the failed call told, 0 if it did not fail.
    static HRESULT Save(IXMLDOMDocument& document, const std::filesystem::path& path) {
        try {
            SaveWholeFile(document, path.wstring());
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

void SetWrittenAgo(const std::filesystem::path& path, std::chrono::seconds age) {
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - age);
}

} // namespace

TEST_F(WholeFile, SavedFileTakesThePlaceOfTheOldOne) {
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Content(), "<New/>");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(WholeFile, FileThatIsMissingIsMade) {
    std::filesystem::remove(Path());
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Content(), "<New/>");
}

TEST_F(WholeFile, ReadOnlyFileIsRefusedAndKept) {
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070005U);
    ExpectUntouched();
    EXPECT_NE(GetFileAttributesW(Path().c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WholeFile, FileThatNobodyElseMayOpenIsRefusedAndKept) {
    {
        const OpenFile file(Path(), 0);
        EXPECT_EQ(static_cast<unsigned long>(Save()), 0x80070020U);
    }
    ExpectUntouched();
}

TEST_F(WholeFile, FileThatStaysOpenIsRefusedAndKept) {
    {
        const OpenFile file(Path(), FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_LT(Save(), 0);
    }
    ExpectUntouched();
}

TEST_F(WholeFile, FileThatIsSoonClosedIsWaitedFor) {
    auto file = std::make_unique<OpenFile>(Path(), FILE_SHARE_READ);
    std::thread closing([&file] {
        Sleep(60);
        file.reset();
    });
    EXPECT_EQ(Save(), S_OK);
    closing.join();
    EXPECT_EQ(Content(), "<New/>");
}

TEST_F(WholeFile, LoadingWaitsForAWriter) {
    auto writer = std::make_unique<OpenFile>(Path(), 0);
    std::thread closing([&writer] {
        Sleep(60);
        writer.reset();
    });
    const XmlDocumentPointer document = CreateXmlDocument();
    EXPECT_TRUE(LoadWholeFile(*document.Get(), Path().wstring()));
    closing.join();
}

TEST_F(WholeFile, FileThatCouldNotBeReadAgainIsNotPutInPlace) {
    // Without a root.
    EXPECT_LT(Save(*CreateXmlDocument().Get(), Path()), 0);
    ExpectUntouched();
}

TEST_F(WholeFile, MissingFolderIsAFailure) {
    EXPECT_EQ(static_cast<unsigned long>(Save(*_document.Get(), _machine.ProgramData() / "none" / "a.xml")),
              0x80070003U);
    ExpectUntouched();
}

TEST_F(WholeFile, FolderThatTakesNoOtherFileHasItsFileWritten) {
    std::filesystem::create_directory(Neighbour());
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(Content(), "<New/>");
}

TEST_F(WholeFile, LeftOversOfDeadProcessesAreRemoved) {
    WriteFile(Neighbour(0xdead), "<cut");
    SetWrittenAgo(Neighbour(0xdead), std::chrono::minutes(2));
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(WholeFile, NeighbourOfALivingProcessStays) {
    WriteFile(Neighbour(0xbeef), "<New");
    EXPECT_EQ(Save(), S_OK);
    EXPECT_EQ(ReadFile(Neighbour(0xbeef)), "<New");
}

TEST_F(WholeFile, LongestPathCanStillBeSaved) {
    const std::wstring folder = _machine.ProgramData().wstring();
    const std::filesystem::path deep =
        folder + L"\\" + std::wstring(259 - 24 - folder.size(), L'd') + L"\\LumeqLocalSettings.xml";
    ASSERT_EQ(deep.wstring().size(), 259U);
    std::filesystem::create_directory(deep.parent_path());
    EXPECT_EQ(Save(*_document.Get(), deep), S_OK);
    EXPECT_EQ(Content(deep), "<New/>");
}

} // namespace Zuvan::Lumeq::Core::Utils
