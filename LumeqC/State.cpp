#include "LumeqC/State.h"

#include "LumeqC/Arguments.h"
#include "LumeqC/CallFrame.h"
#include "LumeqC/Locks.h"
#include "LumeqC/MachineState.h"

#include <array>
#include <cstring>

namespace Zuvan::Lumeq {

namespace {

/// As long as a path can be. A longer one leads nowhere, so the choice is unknown there too.
using Subfolder = std::array<wchar_t, MAX_PATH + 2>;

// Never held during a call.
constinit SlimLock subfolderLock;
constinit Subfolder subfolder LUMEQ_GUARDED_BY(subfolderLock) = {};

Subfolder SubfolderInForce() noexcept {
    const LockedScope scope(subfolderLock);
    return subfolder;
}

lumeq_state CurrentState() noexcept {
    const MachineState machine = ReadMachineState(SubfolderInForce().data());
    lumeq_state state = LUMEQ_STATE_INIT;
    state.dropped_count = CallQueue::DroppedCount();
    state.is_disabled = machine.isTrackingDisabled;
    state.choice = machine.choice;
    state.is_paused = machine.isPaused;
    state.road = machine.road;
    state.uses_worker_thread = IsWorkerChosen();
    state.queued_calls = static_cast<std::int32_t>(CallQueue::WaitingCount());
    return state;
}

} // namespace

void RememberSubfolder(const std::wstring& subpath) noexcept {
    if (!IsSubfolder(subpath.c_str()))
        return;
    const LockedScope scope(subfolderLock);
    subfolder = {};
    subpath.copy(subfolder.data(), subfolder.size() - 1);
}

bool WriteState(lumeq_state* state) noexcept {
    if (state == nullptr || state->size == 0)
        return false;
    lumeq_state current = CurrentState();
    current.size = state->size;
    std::memcpy(state, &current, KnownSize(*state));
    return true;
}

} // namespace Zuvan::Lumeq
