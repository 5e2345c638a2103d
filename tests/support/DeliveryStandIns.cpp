#include "support/DeliveryStandIns.h"

#include "Common/SystemHandles.h"
#include "support/HostExecutable.h"
#include "support/scripted_companion/ScriptedCompanion.h"

namespace Zuvan::Lumeq::Testing {

namespace {

// Asked before any test lets the executable seem to be elsewhere.
const std::filesystem::path programFolder = ExecutablePath().parent_path();

void UseMscoreeOf(const wchar_t* target) {
    SetDllDirectoryW((programFolder / "support" / "fake_mscoree" / target).c_str());
}

void CopyCompanion(const wchar_t* target, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(programFolder / "support" / "scripted_companion" / target /
                                   L"LumeqShim.Managed.dll",
                               folder / L"LumeqShim.Managed.dll");
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

void LetCompanionRaise(const wchar_t* kind) { SetEnvironmentVariableW(L"LUMEQ_SCRIPTED_COMPANION", kind); }

std::vector<std::wstring> CompanionCalls() {
    const HMODULE library = GetModuleHandleW(L"LumeqShim.Managed.dll");
    if (!library)
        return {};
    return *Common::FindFunction<ScriptedCompanionCallsFunction>(library, "ScriptedCompanion_Calls")();
}

void FreeCompanion() {
    if (const HMODULE library = GetModuleHandleW(L"LumeqShim.Managed.dll"))
        FreeLibrary(library);
}

const std::filesystem::path& TestProgramFolder() { return programFolder; }

} // namespace Zuvan::Lumeq::Testing
