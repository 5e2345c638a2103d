#include "LumeqShim/PauseState.h"

#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/LumeqNativeShim.h"

#include <string>

namespace Zuvan::LumeqShim {

bool IsPauseMarked() { return BasicDidUserOpted(OptinBeforePauseKey); }

void InternalPause() {
    const bool userHasOptedIn = BasicGetUserOptIn(UserOptInKey);
    std::wstring key = OptinBeforePauseKey; // the call consumes it
    SetLocalValue(userHasOptedIn, key);
    SetUserOptInXX(false);
}

void InternalResume() {
    if (BasicGetUserOptIn(OptinBeforePauseKey))
        SetUserOptInXX(true);
    BasicClearOptIn(OptinBeforePauseKey);
}

void RememberChoiceDuringPause(bool userHasOptedIn) {
    if (IsPauseMarked())
        BasicSetUserOptIn(userHasOptedIn, OptinBeforePauseKey);
}

} // namespace Zuvan::LumeqShim
