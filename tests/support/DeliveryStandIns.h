// Installs the stand-ins for what delivery loads: the fake mscoree.dll and the scripted companion library.
// The code under test never releases either, so they serve one test per process.
#pragma once

#include "support/fake_mscoree/FakeMscoree.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// From now on "mscoree" is the fake. fake_mscoree/FakeMscoree.h documents its script.
void UseFakeMscoree(const std::wstring& script);

/// The same with a fake without the entry point.
void UseFakeMscoreeWithoutEntryPoint();

/// What the fake observed; all zero if it is not loaded.
FakeMscoreeState FakeMscoreeSaw();

/// Copies the companion library into the folder.
void PlaceCompanion(const std::filesystem::path& folder);

/// The same with a companion that lacks the operation FlushInternal.
void PlaceCompanionWithoutFlush(const std::filesystem::path& folder);

/// The same with a companion that needs LumeqTestDependency.dll.
void PlaceCompanionWithDependency(const std::filesystem::path& folder);

/// Copies that library into the folder.
void PlaceDependency(const std::filesystem::path& folder);

/// From now on every operation raises: one of the kinds that ScriptedCompanion.h names; null to raise
/// nothing.
void LetCompanionRaise(const wchar_t* kind);

/// The calls that reached the companion library; none if it is not loaded.
std::vector<std::wstring> CompanionCalls();

/// From now on the companion reads the events that it receives, and no operation raises.
void LetCompanionReadEvents();

/// The events that it read, each as its object label and its action separated by a space.
std::vector<std::wstring> CompanionEvents();

/// Clears both lists.
void ForgetCompanionCalls();

/// Frees the companion library, so that its file can be removed. Must be the last call of a test.
void FreeCompanion();

/// The folder of this test program's own files, whatever the executable's apparent location is.
const std::filesystem::path& TestProgramFolder();

} // namespace Zuvan::Lumeq::Testing
