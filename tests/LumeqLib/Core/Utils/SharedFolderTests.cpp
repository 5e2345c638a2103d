#include "LumeqLib/Core/Utils/SharedFolder.h"

#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <vector>

namespace Zuvan::Lumeq::Core::Utils {

using Testing::IsolatedMachine;

namespace {

/// Records each call and passes it on to the real system, unless it is set to fail there.
class RecordingSystem : public SharedFolderSystem {
public:
    enum class Step { None, Create, Sid, List, Security };

    explicit RecordingSystem(Step failing = Step::None) : _failing(failing) {}

    bool FolderExists(const wchar_t* folder) const override {
        asked.emplace_back(folder);
        return SharedFolderSystem::FolderExists(folder);
    }
    void CreateFolder(const wchar_t* folder) const override {
        created.emplace_back(folder);
        if (_failing != Step::Create)
            SharedFolderSystem::CreateFolder(folder);
    }
    bool AllocateSid(SID_IDENTIFIER_AUTHORITY& authority, BYTE count, DWORD subAuthority,
                     PSID* sid) const override {
        const bool made =
            _failing != Step::Sid && SharedFolderSystem::AllocateSid(authority, count, subAuthority, sid);
        lastSid = *sid;
        return made;
    }
    DWORD MakeAccessList(ULONG count, EXPLICIT_ACCESS_W* entries, ACL* oldList, ACL** list) const override {
        entryCount = count;
        entry = *entries;
        hadOldList = oldList != nullptr;
        sidIsEveryone = IsWellKnownSid(entries->Trustee.ptstrName, WinWorldSid) != FALSE;
        if (_failing == Step::List)
            return ERROR_NOT_ENOUGH_MEMORY;
        return SharedFolderSystem::MakeAccessList(count, entries, oldList, list);
    }
    DWORD SetSecurity(wchar_t* name, SE_OBJECT_TYPE type, SECURITY_INFORMATION information, PSID owner,
                      PSID group, ACL* dacl, ACL* sacl) const override {
        secured.emplace_back(name);
        EXPECT_EQ(type, SE_FILE_OBJECT);
        EXPECT_EQ(information, 4U); // DACL_SECURITY_INFORMATION
        EXPECT_EQ(owner, nullptr);
        EXPECT_EQ(group, nullptr);
        EXPECT_NE(dacl, nullptr);
        EXPECT_EQ(sacl, nullptr);
        if (_failing == Step::Security)
            return ERROR_ACCESS_DENIED;
        return SharedFolderSystem::SetSecurity(name, type, information, owner, group, dacl, sacl);
    }

    mutable std::vector<std::wstring> asked;
    mutable std::vector<std::wstring> created;
    mutable std::vector<std::wstring> secured;
    mutable PSID lastSid = nullptr;
    mutable ULONG entryCount = 0;
    mutable std::optional<EXPLICIT_ACCESS_W> entry;
    mutable bool hadOldList = false;
    mutable bool sidIsEveryone = false;

private:
    Step _failing;
};

using Step = RecordingSystem::Step;

} // namespace

TEST(SharedFolder, IsMadeWithTheFoldersAboveIt) {
    const IsolatedMachine machine;
    const RecordingSystem system;
    EnsureSharedFolder((machine.ProgramData() / "a" / "b" / "file.xml").wstring(), system);
    EXPECT_TRUE(std::filesystem::is_directory(machine.ProgramData() / "a" / "b"));
    EXPECT_FALSE(std::filesystem::exists(machine.ProgramData() / "a" / "b" / "file.xml"));
}

TEST(SharedFolder, GrantsEveryoneFullControlOfItsFiles) {
    const IsolatedMachine machine;
    const RecordingSystem system;
    const std::wstring folder = (machine.ProgramData() / "a" / "b").wstring();
    EnsureSharedFolder(folder + L"\\file.xml", system);
    ASSERT_TRUE(system.entry);
    EXPECT_EQ(system.entryCount, 1U);
    EXPECT_FALSE(system.hadOldList);
    EXPECT_EQ(system.entry->grfAccessPermissions, 0x1FFFFFU);
    EXPECT_EQ(system.entry->grfAccessMode, SET_ACCESS);
    EXPECT_EQ(system.entry->grfInheritance, 1U); // OBJECT_INHERIT_ACE: files, not folders
    EXPECT_EQ(system.entry->Trustee.pMultipleTrustee, nullptr);
    EXPECT_EQ(system.entry->Trustee.MultipleTrusteeOperation, NO_MULTIPLE_TRUSTEE);
    EXPECT_EQ(system.entry->Trustee.TrusteeForm, TRUSTEE_IS_SID);
    EXPECT_EQ(system.entry->Trustee.TrusteeType, TRUSTEE_IS_WELL_KNOWN_GROUP);
    EXPECT_EQ(reinterpret_cast<PSID>(system.entry->Trustee.ptstrName), system.lastSid);
    EXPECT_TRUE(system.sidIsEveryone);
}

TEST(SharedFolder, OnlyTheDeepestFolderIsOpenedToEveryone) {
    const IsolatedMachine machine;
    const RecordingSystem system;
    const std::wstring folder = (machine.ProgramData() / "a" / "b").wstring();
    EnsureSharedFolder(folder + L"\\file.xml", system);
    EXPECT_EQ(system.created, std::vector<std::wstring>{folder});
    EXPECT_EQ(system.secured, std::vector<std::wstring>{folder});
}

TEST(SharedFolder, EveryoneMayWriteInIt) {
    const IsolatedMachine machine;
    const std::filesystem::path folder = machine.ProgramData() / "shared";
    EnsureSharedFolder((folder / "file.xml").wstring());
    ACL* list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_EQ(GetNamedSecurityInfoW(folder.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                    nullptr, &list, nullptr, &descriptor),
              static_cast<DWORD>(ERROR_SUCCESS));
    BYTE sid[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof sid;
    ASSERT_TRUE(CreateWellKnownSid(WinWorldSid, nullptr, sid, &size));
    ACCESS_MASK rights = 0;
    for (DWORD i = 0; i < list->AceCount; ++i) {
        void* ace = nullptr;
        ASSERT_TRUE(GetAce(list, i, &ace));
        const auto* allowed = static_cast<const ACCESS_ALLOWED_ACE*>(ace);
        if (allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE &&
            EqualSid(sid, const_cast<DWORD*>(&allowed->SidStart)))
            rights |= allowed->Mask;
    }
    LocalFree(descriptor);
    EXPECT_EQ(rights & FILE_GENERIC_WRITE, static_cast<ACCESS_MASK>(FILE_GENERIC_WRITE));
}

TEST(SharedFolder, ExistingOneKeepsItsAccessRights) {
    const IsolatedMachine machine;
    const RecordingSystem system;
    EnsureSharedFolder((machine.ProgramData() / "file.xml").wstring(), system);
    EXPECT_EQ(system.asked, std::vector<std::wstring>{machine.ProgramData().wstring()});
    EXPECT_TRUE(system.created.empty());
    EXPECT_TRUE(system.secured.empty());
    EXPECT_FALSE(system.entry);
}

TEST(SharedFolder, FailureOfAnyStepIsIgnored) {
    const IsolatedMachine machine;
    for (const Step step : {Step::Create, Step::Sid, Step::List, Step::Security}) {
        const RecordingSystem system(step);
        const std::filesystem::path folder = machine.ProgramData() / std::to_wstring(static_cast<int>(step));
        EXPECT_NO_THROW(EnsureSharedFolder((folder / "file.xml").wstring(), system));
        EXPECT_EQ(std::filesystem::exists(folder), step != Step::Create);
        const bool secures = step == Step::Create || step == Step::Security;
        EXPECT_EQ(system.secured.size(), secures ? 1U : 0U);
    }
}

TEST(SharedFolder, RemainingStepsRunAfterAFailedCreation) {
    const IsolatedMachine machine;
    const RecordingSystem system(Step::Create);
    const std::wstring folder = (machine.ProgramData() / "a").wstring();
    EnsureSharedFolder(folder + L"\\file.xml", system);
    EXPECT_TRUE(system.sidIsEveryone);
    EXPECT_EQ(system.secured, std::vector<std::wstring>{folder});
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(SharedFolder, FileInItsPlaceKeepsItsAccessRights) {
    const IsolatedMachine machine;
    const RecordingSystem system;
    const std::filesystem::path place = machine.ProgramData() / "LUMEQ";
    std::ofstream(place) << "somebody's";
    EnsureSharedFolder((place / "file.xml").wstring(), system);
    EXPECT_EQ(system.created, std::vector<std::wstring>{place.wstring()});
    EXPECT_TRUE(system.secured.empty());
    EXPECT_TRUE(std::filesystem::is_regular_file(place));
}

TEST(SharedFolder, PathIsCutAtTheLongestThatTheSystemTakes) {
    const RecordingSystem system(Step::Create);
    const std::wstring path = L"Q:\\" + std::wstring(256, L'a') + L"\\file.xml";
    EnsureSharedFolder(path, system);
    EXPECT_EQ(system.asked, std::vector<std::wstring>{L"Q:\\" + std::wstring(256, L'a')});
    const RecordingSystem cut(Step::Create);
    EnsureSharedFolder(L"Q:\\a\\" + std::wstring(300, L'b') + L"\\file.xml", cut);
    EXPECT_EQ(cut.asked, std::vector<std::wstring>{L"Q:\\a"});
}

} // namespace Zuvan::Lumeq::Core::Utils
