#include "LumeqC/CallFrame.h"

#include <windows.h>

#include <atomic>

// Exported by every system since Windows XP, and declared by no header.
extern "C" __declspec(dllimport) BOOLEAN NTAPI RtlDllShutdownInProgress();

namespace Zuvan::Lumeq {

namespace {

constinit std::atomic<CallMode> chosen{CallMode::Open};

} // namespace

bool ChooseMode(CallMode mode) noexcept {
    CallMode expected = CallMode::Open;
    return chosen.compare_exchange_strong(expected, mode);
}

bool UsesWorker() noexcept {
    if (chosen == CallMode::Open)
        ChooseMode(CallMode::Direct);
    return chosen == CallMode::Worker;
}

bool IsWorkerChosen() noexcept { return chosen == CallMode::Worker; }

bool IsProcessEnding() noexcept { return RtlDllShutdownInProgress(); }

} // namespace Zuvan::Lumeq
