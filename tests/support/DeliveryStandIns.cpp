#include "support/DeliveryStandIns.h"

#include "Common/SystemHandles.h"
#include "support/HostExecutable.h"
#include "support/scripted_companion/ScriptedCompanion.h"

namespace Zuvan::Lumeq::Testing {

namespace {

// Read before any test changes the apparent location of the executable.
const std::filesystem::path programFolder = ExecutablePath().parent_path();

void UseMscoreeOf(const wchar_t* target) {
    SetDllDirectoryW((programFolder / "support" / "fake_mscoree" / target).c_str());
}

void CopyLibrary(const wchar_t* target, const wchar_t* name, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(programFolder / "support" / "scripted_companion" / target / name,
                               folder / name);
}

void CopyCompanion(const wchar_t* target, const std::filesystem::path& folder) {
    CopyLibrary(target, L"LumeqShim.Managed.dll", folder);
}

/// Null if it is not loaded.
template <class Function>
std::vector<std::wstring>* CompanionTexts(const char* name) {
    const HMODULE library = GetModuleHandleW(L"LumeqShim.Managed.dll");
    return library ? Common::FindFunction<Function>(library, name)() : nullptr;
}

std::vector<std::wstring>* Calls() {
    return CompanionTexts<ScriptedCompanionCallsFunction>("ScriptedCompanion_Calls");
}

std::vector<std::wstring>* Events() {
    return CompanionTexts<ScriptedCompanionEventsFunction>("ScriptedCompanion_Events");
}

std::vector<std::wstring> CopyOf(const std::vector<std::wstring>* texts) {
    return texts ? *texts : std::vector<std::wstring>();
}

} // namespace

void UseFakeMscoree(const std::wstring& script) {
    SetEnvironmentVariableW(L"LUMEQ_FAKE_MSCOREE", script.c_str());
    UseMscoreeOf(L"fake_mscoree");
}

void UseFakeMscoreeWithoutEntryPoint() { UseMscoreeOf(L"fake_mscoree_without_entry_point"); }

FakeMscoreeState FakeMscoreeSaw() {
    const HMODULE library = GetModuleHandleW(L"mscoree.dll");
    if (!library)
        return {};
    return *Common::FindFunction<FakeMscoreeStateFunction>(library, "FakeMscoree_State")();
}

void PlaceCompanion(const std::filesystem::path& folder) { CopyCompanion(L"scripted_companion", folder); }

void PlaceCompanionWithoutFlush(const std::filesystem::path& folder) {
    CopyCompanion(L"scripted_companion_without_flush", folder);
}

void PlaceCompanionWithDependency(const std::filesystem::path& folder) {
    CopyCompanion(L"scripted_companion_with_dependency", folder);
}

void PlaceDependency(const std::filesystem::path& folder) {
    CopyLibrary(L"companion_dependency", L"LumeqTestDependency.dll", folder);
}

void LetCompanionRaise(const wchar_t* kind) { SetEnvironmentVariableW(L"LUMEQ_SCRIPTED_COMPANION", kind); }

std::vector<std::wstring> CompanionCalls() { return CopyOf(Calls()); }

void LetCompanionReadEvents() { LetCompanionRaise(L"read"); }

std::vector<std::wstring> CompanionEvents() { return CopyOf(Events()); }

void ForgetCompanionCalls() {
    for (std::vector<std::wstring>* texts : {Calls(), Events()})
        if (texts)
            texts->clear();
}

void FreeCompanion() {
    if (const HMODULE library = GetModuleHandleW(L"LumeqShim.Managed.dll"))
        FreeLibrary(library);
}

const std::filesystem::path& TestProgramFolder() { return programFolder; }

} // namespace Zuvan::Lumeq::Testing
