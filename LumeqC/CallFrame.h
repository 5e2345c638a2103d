// The frame of every function of lumeq.h: nothing escapes it, and it makes the call directly or queues it.
#pragma once

#include "LumeqC/CallMemory.h"
#include "LumeqC/CallQueue.h"

#include <memory>
#include <type_traits>
#include <utility>

namespace Zuvan::Lumeq {

enum class CallMode { Open, Direct, Worker };

/// False if a call has been made already, or a mode was chosen before.
bool ChooseMode(CallMode mode) noexcept;
/// The first question chooses direct calls if nothing else is chosen.
bool UsesWorker() noexcept;
/// The same without choosing anything.
bool IsWorkerChosen() noexcept;
/// While the process ends its other threads are gone, so nothing may wait for one.
bool IsProcessEnding() noexcept;

template <class Body>
class CallOf final : public QueuedCall {
public:
    CallOf(Kind kind, Body body) : QueuedCall(kind), _body(std::move(body)) {}

    void Make() noexcept override {
        try {
            _body();
        } catch (...) {
            // The lock of the library proper failed, or memory ran out.
            CallQueue::CountDropped();
        }
    }

private:
    Body _body;
};

/// `copy` copies the caller's arguments and returns the body of the call, which owns them. Returns the number
/// of the queued call; 0 where it is made or dropped. While the process ends nothing is done: a thread that
/// is gone may hold the lock of the library proper.
template <class Copy>
std::uint64_t Submit(QueuedCall::Kind kind, Copy copy) noexcept {
    try {
        if (IsProcessEnding())
            return 0;
        const CallMemory memory;
        if (UsesWorker())
            return CallQueue::Add(std::make_unique<CallOf<decltype(copy())>>(kind, copy()));
        copy()();
    } catch (...) {
        CallQueue::CountDropped();
    }
    return 0;
}

template <class Copy>
void SubmitEvent(Copy copy) noexcept {
    Submit(QueuedCall::Kind::Event, std::move(copy));
}

template <class Copy>
void SubmitSession(Copy copy) noexcept {
    Submit(QueuedCall::Kind::Session, std::move(copy));
}

/// A call that waits its turn and sets `result`, which stays as it is where the call fails. On the worker
/// thread, where a companion library may call, it is made at once.
template <class Result, class Body>
Result Ask(Result result, Body body) noexcept {
    const auto set = [&result, &body] { result = body(); };
    if (UsesWorker() && CallQueue::IsWorker() && !IsProcessEnding())
        CallOf(QueuedCall::Kind::Session, set).Make();
    else
        CallQueue::WaitFor(Submit(QueuedCall::Kind::Session, [&set] { return set; }));
    return result;
}

} // namespace Zuvan::Lumeq
