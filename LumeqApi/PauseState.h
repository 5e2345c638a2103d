// The pause of tracking. Its state lives in the local settings file, so that it survives the process.
#pragma once

namespace Zuvan::Lumeq::API {

/// Whether a pause is marked: at a start, that an earlier run died in it.
bool IsPauseMarked();

/// Remembers the user's choice and opts out. In a pause already: what was remembered is lost, by design.
void InternalPause();

/// Restores the remembered choice if it was to opt in, and removes the mark.
void InternalResume();

/// Makes a resume restore `userHasOptedIn`, if a pause is marked.
void RememberChoiceDuringPause(bool userHasOptedIn);

} // namespace Zuvan::Lumeq::API
