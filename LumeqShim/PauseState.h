// The pause of tracking. Its state lives in the local settings file, so that it survives the process. The
// basic store reads that file on both roads; the choice itself changes on the road in force. Only under the
// API lock.
#pragma once

namespace Zuvan::LumeqShim {

/// What UserOptInKey held before a pause; present only during one.
inline constexpr wchar_t OptinBeforePauseKey[] = L"OptinBeforePause";

/// Whether a pause is marked. At a start this means that an earlier run died during a pause.
bool IsPauseMarked();

/// Remembers the user's choice and opts out. A second pause forgets the choice by design: what it remembers
/// is the first one's opting out.
void InternalPause();

/// Restores the remembered choice if it was to opt in, and removes the mark.
void InternalResume();

/// Makes a resume restore `userHasOptedIn`, if a pause is marked.
void RememberChoiceDuringPause(bool userHasOptedIn);

} // namespace Zuvan::LumeqShim
