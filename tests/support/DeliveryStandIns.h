// Puts the stand-ins of what delivery loads where the code under test finds them: the fake mscoree.dll and
// the scripted companion library. The code under test keeps both, so they serve one test per process.
#pragma once

#include "support/fake_mscoree/FakeMscoree.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// From now on "mscoree" is the fake, scripted as fake_mscoree/FakeMscoree.h tells.
void UseFakeMscoree(const std::wstring& script);

/// The same with one that has no entry point.
void UseFakeMscoreeWithoutEntryPoint();

/// What the fake saw; all zero if it is not loaded.
FakeMscoreeState FakeMscoreeSaw();

/// Puts the companion library into the folder.
void PlaceCompanion(const std::filesystem::path& folder);

/// The same with one that lacks the operation FlushInternal.
void PlaceCompanionWithoutFlush(const std::filesystem::path& folder);

/// From now on every operation raises: "vesto", "com", "std" or "unknown"; null for nothing.
void LetCompanionRaise(const wchar_t* kind);

/// The calls that reached the companion library; none if it is not loaded.
std::vector<std::wstring> CompanionCalls();

/// From now on the companion reads the events that it is given, and nothing raises.
void LetCompanionReadEvents();

/// The events that it read, each as its object label and its action with a blank between them.
std::vector<std::wstring> CompanionEvents();

/// Makes it forget both.
void ForgetCompanionCalls();

/// Frees the companion library, so that its file can be removed. The last thing of a test.
void FreeCompanion();

/// The folder of this test program's own files, whatever the executable seems to be.
const std::filesystem::path& TestProgramFolder();

} // namespace Zuvan::Lumeq::Testing
