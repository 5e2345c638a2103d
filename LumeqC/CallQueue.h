// The calls that wait for the worker thread, and the thread.
//
// The thread lives while there is something to do and some seconds longer, and holds a reference to this
// module until FreeLibraryAndExitThread, so a host may free the library at any time: the module goes when the
// thread does. Nothing here has a constructor or destructor to run, and nothing starts or ends under the
// loader lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Zuvan::Lumeq {

/// A call with arguments of its own.
class QueuedCall {
public:
    /// Events may be dropped; calls of the session never are.
    enum class Kind { Event, Session };

    explicit QueuedCall(Kind kind) noexcept : kind(kind) {}
    virtual ~QueuedCall() = default;
    virtual void Make() noexcept = 0;

    const Kind kind;
    std::uint64_t number = 0;
    QueuedCall* next = nullptr;
};

namespace CallQueue {

/// How many events may wait. Before the first call.
void SetCapacity(std::size_t events) noexcept;

/// Queues the call. A full queue drops it, where it is an event. Where no thread can be started the call is
/// made at once, here. Returns its number, or 0 where it is made or dropped already.
std::uint64_t Add(std::unique_ptr<QueuedCall> call) noexcept;

/// Returns when the call is made, which is at once for 0.
void WaitFor(std::uint64_t number) noexcept;

/// The same for at most so long; drops the events that wait then. The thread ends when it has no more to do.
void Drain(std::uint64_t number, std::uint32_t milliseconds) noexcept;

void CountDropped() noexcept;
std::uint64_t DroppedCount() noexcept;

/// Calls of any kind that wait, without the one that is being made.
std::size_t WaitingCount() noexcept;

/// Whether this is the worker thread: a call on it that waited its turn would wait for itself.
bool IsWorker() noexcept;

} // namespace CallQueue
} // namespace Zuvan::Lumeq
