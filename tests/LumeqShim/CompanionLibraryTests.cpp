#include "LumeqShim/CompanionLibrary.h"

#include "Common/ComScope.h"
#include "Common/ComSession.h"
#include "Common/Exceptions.h"
#include "Common/Paths.h"
#include "support/Apartment.h"
#include "support/DeliveryStandIns.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"

#include <Lumeq/LumeqRecords.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::CompanionCalls;
using Lumeq::Testing::FreeCompanion;
using Lumeq::Testing::HostExecutable;
using Lumeq::Testing::IsolatedMachine;
using Lumeq::Testing::PlaceCompanion;
using Lumeq::Testing::PlaceCompanionWithoutFlush;
using Lumeq::Testing::TestProgramFolder;
using Lumeq::Testing::WriteFile;
using std::filesystem::path;

constexpr wchar_t FileName[] = L"LumeqShim.Managed.dll";

/// The full message of the exception that finding the operation throws; empty if it finds it.
std::wstring FailureToFind(const char* operation) {
    try {
        FindCompanionOperation(operation);
        return {};
    } catch (const Lumeq::Common::VestoException& failure) {
        return failure.FullMessage();
    }
}

std::wstring NotFoundAt(const path& file) {
    return L"The companion library was not found\nPath: \"" + file.wstring() + L"\"";
}

/// What the companion library finds of the caller's apartment while it is loaded and called.
struct SeenApartments {
    static inline std::vector<HRESULT> results;
    // Looked up before GetProcAddress is replaced.
    static inline auto* const load =
        Lumeq::Testing::RealFunction<decltype(LoadLibraryExW)>("kernel32.dll", "LoadLibraryExW");

    static void See() { results.push_back(Lumeq::Testing::ApartmentOfThread()); }

    static HMODULE WINAPI Load(const wchar_t* path, HANDLE file, DWORD flags) {
        See();
        return load(path, file, flags);
    }

    static FARPROC WINAPI Find(HMODULE, const char*) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&See));
    }
};

bool IsLoaded() { return GetModuleHandleW(FileName) != nullptr; }

class CompanionLibrary : public testing::Test {
protected:
    ~CompanionLibrary() override { FreeCompanion(); }

    path BesideHost() const { return machine.HostFolder() / FileName; }

    IsolatedMachine machine;
};

/// Searches from a library in a folder of its own.
class DetachedCompanionLibrary : public testing::Test {
protected:
    DetachedCompanionLibrary() {
        const path folder = TestProgramFolder() / "support" / "detached_delivery";
        std::filesystem::create_directories(OwnFolder());
        std::filesystem::copy_file(folder / "detached_delivery.dll", OwnFolder() / "detached_delivery.dll");
        _library = LoadLibraryW((OwnFolder() / "detached_delivery.dll").c_str());
    }

    ~DetachedCompanionLibrary() override {
        FreeCompanion();
        FreeLibrary(_library);
    }

    path OwnFolder() const { return machine.TemporaryFolder() / "library"; }

    std::wstring PlaceOfFlush() const {
        std::wstring place;
        Lumeq::Common::FindFunction<void(const char*, std::wstring&)>(_library, "Detached_PlaceOfOperation")(
            "FlushInternal", place);
        return place;
    }

    IsolatedMachine machine;

private:
    HMODULE _library;
};

} // namespace

TEST_F(CompanionLibrary, IsLoadedAtTheFirstCallAndNotBefore) {
    PlaceCompanion(machine.HostFolder());
    CompanionOperation<void(std::int32_t)> flush("FlushInternal");
    EXPECT_FALSE(IsLoaded());
    flush(5);
    EXPECT_TRUE(IsLoaded());
    flush(-6);
    EXPECT_EQ(CompanionCalls(), (std::vector<std::wstring>{L"FlushInternal(5)", L"FlushInternal(-6)"}));
}

TEST_F(CompanionLibrary, MissingLibraryIsNamed) {
    EXPECT_EQ(FailureToFind("FlushInternal"), NotFoundAt(BesideHost()));
}

TEST_F(CompanionLibrary, MissingLibraryIsAFileNotFound) {
    EXPECT_THROW(FindCompanionOperation("FlushInternal"), Lumeq::Common::FileNotFoundException);
}

TEST_F(CompanionLibrary, LibraryThatComesLaterIsFound) {
    CompanionOperation<void(std::int32_t)> flush("FlushInternal");
    EXPECT_THROW(flush(1), Lumeq::Common::FileNotFoundException);
    PlaceCompanion(machine.HostFolder());
    flush(2);
    EXPECT_EQ(CompanionCalls(), (std::vector<std::wstring>{L"FlushInternal(2)"}));
}

TEST_F(CompanionLibrary, FolderOfItsNameIsNoLibrary) {
    std::filesystem::create_directory(BesideHost());
    EXPECT_EQ(FailureToFind("FlushInternal"), NotFoundAt(BesideHost()));
}

TEST_F(CompanionLibrary, FileThatIsNoLibraryIsNamedWithTheSystemsError) {
    WriteFile(BesideHost(), "no library");
    EXPECT_EQ(FailureToFind("FlushInternal"),
              L"The companion library could not be loaded: error 193\nPath: \"" + BesideHost().wstring() +
                  L"\"");
}

TEST_F(CompanionLibrary, MissingOperationIsNamedWithTheLibrary) {
    PlaceCompanionWithoutFlush(machine.HostFolder());
    EXPECT_EQ(FailureToFind("FlushInternal"),
              L"The companion library has no operation FlushInternal\nPath: \"" + BesideHost().wstring() +
                  L"\"");
    EXPECT_EQ(FailureToFind("ShutdownInternal"), L"");
}

TEST_F(CompanionLibrary, PlantedInTheCurrentFolderIsNotLoaded) {
    const path planted = machine.TemporaryFolder() / "planted";
    PlaceCompanion(planted);
    const path current = std::filesystem::current_path();
    std::filesystem::current_path(planted);
    EXPECT_EQ(FailureToFind("FlushInternal"), NotFoundAt(BesideHost()));
    EXPECT_FALSE(IsLoaded());
    std::filesystem::current_path(current);
}

TEST_F(CompanionLibrary, PlantedIsNotLoadedIfTheHostsPlaceIsNotKnown) {
    const path planted = machine.TemporaryFolder() / "planted";
    PlaceCompanion(planted);
    const path current = std::filesystem::current_path();
    std::filesystem::current_path(planted);
    {
        const HostExecutable host("");
        EXPECT_EQ(FailureToFind("FlushInternal"), NotFoundAt(FileName));
    }
    EXPECT_FALSE(IsLoaded());
    std::filesystem::current_path(current);
}

TEST_F(CompanionLibrary, PlantedOnThePathIsNotLoaded) {
    const path planted = machine.TemporaryFolder() / "planted";
    PlaceCompanion(planted);
    SetEnvironmentVariableW(L"PATH", planted.c_str());
    SetDllDirectoryW(planted.c_str());
    EXPECT_EQ(FailureToFind("FlushInternal"), NotFoundAt(BesideHost()));
    EXPECT_FALSE(IsLoaded());
}

TEST_F(CompanionLibrary, PlantedLibraryIsNotLoadedInsteadOfABrokenOne) {
    const path planted = machine.TemporaryFolder() / "planted";
    PlaceCompanion(planted);
    SetDllDirectoryW(planted.c_str());
    WriteFile(BesideHost(), "no library");
    EXPECT_NE(FailureToFind("FlushInternal"), L"");
    EXPECT_FALSE(IsLoaded());
}

TEST_F(CompanionLibrary, WhatItNeedsIsNotLoadedFromTheCurrentFolderOrThePath) {
    using Lumeq::Testing::PlaceDependency;
    Lumeq::Testing::PlaceCompanionWithDependency(machine.HostFolder());
    const path planted = machine.TemporaryFolder() / "planted";
    PlaceDependency(planted);
    SetEnvironmentVariableW(L"PATH", planted.c_str());
    const path current = std::filesystem::current_path();
    std::filesystem::current_path(planted);
    EXPECT_EQ(FailureToFind("FlushInternal"),
              L"The companion library could not be loaded: error 126\nPath: \"" + BesideHost().wstring() +
                  L"\"");
    EXPECT_EQ(GetModuleHandleW(L"LumeqTestDependency.dll"), nullptr);
    std::filesystem::current_path(current);
}

TEST_F(CompanionLibrary, WhatItNeedsIsLoadedFromItsOwnFolder) {
    Lumeq::Testing::PlaceCompanionWithDependency(machine.HostFolder());
    Lumeq::Testing::PlaceDependency(machine.HostFolder());
    EXPECT_EQ(FailureToFind("FlushInternal"), L"");
    EXPECT_EQ(Lumeq::Common::ModulePath(GetModuleHandleW(L"LumeqTestDependency.dll")),
              (machine.HostFolder() / "LumeqTestDependency.dll").wstring());
}

TEST_F(CompanionLibrary, IsFoundInAFolderOfMoreThan260Characters) {
    const path deep = machine.TemporaryFolder() / std::wstring(150, L'a') / std::wstring(150, L'b');
    PlaceCompanion(deep);
    {
        const HostExecutable host(deep / "host.exe");
        EXPECT_EQ(FailureToFind("FlushInternal"), L"");
    }
    // The machine's own clean-up does not reach folders as deep as this.
    FreeCompanion();
    std::filesystem::remove(deep / FileName);
    std::filesystem::remove(deep);
}

TEST_F(CompanionLibrary, IsMissedInAFolderOfMoreThan260Characters) {
    const path deep = machine.TemporaryFolder() / std::wstring(150, L'a') / std::wstring(150, L'b');
    const HostExecutable host(deep / "host.exe");
    EXPECT_EQ(FailureToFind("FlushInternal"), NotFoundAt(deep / FileName));
}

TEST_F(DetachedCompanionLibrary, IsFoundBesideItsOwnModule) {
    PlaceCompanion(OwnFolder());
    EXPECT_EQ(PlaceOfFlush(), (OwnFolder() / FileName).wstring());
}

TEST_F(DetachedCompanionLibrary, IsFoundBesideTheHost) {
    PlaceCompanion(machine.HostFolder());
    EXPECT_EQ(PlaceOfFlush(), (machine.HostFolder() / FileName).wstring());
}

TEST_F(DetachedCompanionLibrary, HostsFolderComesFirst) {
    PlaceCompanion(OwnFolder());
    PlaceCompanion(machine.HostFolder());
    EXPECT_EQ(PlaceOfFlush(), (machine.HostFolder() / FileName).wstring());
}

TEST_F(DetachedCompanionLibrary, MissingInBothIsNamedInTheHostsFolder) {
    EXPECT_EQ(PlaceOfFlush(), NotFoundAt(machine.HostFolder() / FileName));
}

TEST_F(CompanionLibrary, IsLoadedAndCalledInNoApartmentOfASession) {
    using Lumeq::Testing::ImportedFunction;
    PlaceCompanion(machine.HostFolder());
    CompanionOperation<void()> operation("FlushInternal");
    const Lumeq::Common::ComSession session;
    {
        const ImportedFunction<decltype(LoadLibraryExW)> loading("kernel32.dll", "LoadLibraryExW",
                                                                 &SeenApartments::Load);
        const ImportedFunction<decltype(GetProcAddress)> finding("kernel32.dll", "GetProcAddress",
                                                                 &SeenApartments::Find);
        for (int i = 0; i < 2; ++i) {
            Lumeq::Common::ComScope(L"operation of the library's own");
            ASSERT_EQ(Lumeq::Testing::ApartmentOfThread(), S_OK);
            operation();
        }
    }
    EXPECT_THAT(SeenApartments::results,
                testing::ElementsAre(Lumeq::Testing::NotInitialized, Lumeq::Testing::NotInitialized,
                                     Lumeq::Testing::NotInitialized));
}

} // namespace Zuvan::LumeqShim
