#include "LumeqC/CallQueue.h"

#include "LumeqC/Locks.h"

#include <objbase.h>

#include <atomic>
#include <utility>

namespace Zuvan::Lumeq::CallQueue {

namespace {

constexpr DWORD IdleMilliseconds = 5000;

constinit SlimLock queueLock;
constinit CONDITION_VARIABLE called = CONDITION_VARIABLE_INIT;   // the worker waits for it
constinit CONDITION_VARIABLE finished = CONDITION_VARIABLE_INIT; // callers wait for it
constinit QueuedCall* first LUMEQ_GUARDED_BY(queueLock) = nullptr;
constinit QueuedCall* last LUMEQ_GUARDED_BY(queueLock) = nullptr;
constinit std::size_t waitingEvents LUMEQ_GUARDED_BY(queueLock) = 0;
constinit std::size_t capacity LUMEQ_GUARDED_BY(queueLock) = 1000;
constinit std::uint64_t lastNumber LUMEQ_GUARDED_BY(queueLock) = 0;
constinit std::uint64_t finishedNumber LUMEQ_GUARDED_BY(queueLock) = 0;
constinit bool isIdle LUMEQ_GUARDED_BY(queueLock) = false;
constinit bool endsWhenIdle LUMEQ_GUARDED_BY(queueLock) = false;

// Written under the lock, and read without: a call may come while the process ends, when a thread that is
// gone may have taken the lock along.
constinit std::atomic<std::uint64_t> dropped{0};
constinit std::atomic<DWORD> worker{0}; // the running thread's identifier

/// A list of calls that are to be deleted without the lock: their arguments take time, and locks of the
/// heap's.
void DeleteAll(QueuedCall* call) noexcept {
    while (call != nullptr)
        delete std::exchange(call, call->next);
}

void Append(QueuedCall* call) noexcept LUMEQ_REQUIRES(queueLock) {
    (last ? last->next : first) = call;
    last = call;
    waitingEvents += call->kind == QueuedCall::Kind::Event;
    call->number = ++lastNumber;
}

QueuedCall* TakeFirst() noexcept LUMEQ_REQUIRES(queueLock) {
    QueuedCall* const call = first;
    first = call->next;
    if (first == nullptr)
        last = nullptr;
    waitingEvents -= call->kind == QueuedCall::Kind::Event;
    return call;
}

/// Takes the events out of the queue. To be deleted by the caller.
QueuedCall* DropEvents() noexcept LUMEQ_REQUIRES(queueLock) {
    QueuedCall* events = nullptr;
    QueuedCall** link = &first;
    last = nullptr;
    while (QueuedCall* const call = *link) {
        if (call->kind == QueuedCall::Kind::Event) {
            *link = std::exchange(call->next, events);
            events = call;
        } else {
            last = call;
            link = &call->next;
        }
    }
    dropped += std::exchange(waitingEvents, 0);
    return events;
}

/// Null: the thread is to end, and counts as ended.
QueuedCall* AwaitCall(LockedScope& scope) noexcept LUMEQ_REQUIRES(queueLock) {
    while (first == nullptr) {
        isIdle = true;
        const bool inTime = !endsWhenIdle && scope.Wait(called, IdleMilliseconds);
        isIdle = false;
        if (!inTime && first == nullptr) {
            worker = 0;
            return nullptr;
        }
    }
    return TakeFirst();
}

/// One stretch of calls in a single-threaded apartment. The thread is in none while it is idle, because it
/// does not dispatch the messages that an apartment's hidden window gets.
void MakeCalls(QueuedCall* call) noexcept {
    const HRESULT apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    while (call != nullptr) {
        call->Make();
        const std::uint64_t number = call->number;
        delete call;
        const LockedScope scope(queueLock);
        finishedNumber = number;
        WakeAllConditionVariable(&finished);
        call = first ? TakeFirst() : nullptr;
    }
    if (SUCCEEDED(apartment))
        CoUninitialize();
}

QueuedCall* NextCall() noexcept {
    LockedScope scope(queueLock);
    return AwaitCall(scope);
}

DWORD WINAPI Work(void* module) {
    while (QueuedCall* const call = NextCall())
        MakeCalls(call);
    FreeLibraryAndExitThread(static_cast<HMODULE>(module), 0);
}

/// The new thread waits for the lock. False if there is none.
bool EnsureWorker() noexcept LUMEQ_REQUIRES(queueLock) {
    if (worker != 0)
        return true;
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&Work),
                            &module))
        return false;
    DWORD identifier = 0;
    const HANDLE thread = CreateThread(nullptr, 0, Work, module, 0, &identifier);
    if (thread == nullptr) {
        FreeLibrary(module);
        return false;
    }
    CloseHandle(thread);
    worker = identifier;
    return true;
}

/// What is not queued stays the caller's. False: no thread can be started.
bool Place(std::unique_ptr<QueuedCall>& call, std::uint64_t& number) noexcept {
    const LockedScope scope(queueLock);
    if (!EnsureWorker())
        return false;
    if (call->kind == QueuedCall::Kind::Event && waitingEvents >= capacity) {
        ++dropped;
        return true;
    }
    Append(call.release());
    number = lastNumber;
    endsWhenIdle = false;
    if (isIdle)
        WakeConditionVariable(&called);
    return true;
}

} // namespace

void SetCapacity(std::size_t events) noexcept {
    const LockedScope scope(queueLock);
    capacity = events;
}

std::uint64_t Add(std::unique_ptr<QueuedCall> call) noexcept {
    std::uint64_t number = 0;
    if (!Place(call, number))
        call->Make();
    return number;
}

void WaitFor(std::uint64_t number) noexcept {
    if (number == 0)
        return;
    LockedScope scope(queueLock);
    while (finishedNumber < number)
        scope.Wait(finished, INFINITE);
}

void Drain(std::uint64_t number, std::uint32_t milliseconds) noexcept {
    const ULONGLONG start = GetTickCount64();
    QueuedCall* late = nullptr;
    {
        LockedScope scope(queueLock);
        endsWhenIdle = true;
        while (finishedNumber < number) {
            const ULONGLONG passed = GetTickCount64() - start;
            if (passed >= milliseconds) {
                late = DropEvents();
                break;
            }
            scope.Wait(finished, static_cast<DWORD>(milliseconds - passed));
        }
        if (isIdle)
            WakeConditionVariable(&called);
    }
    DeleteAll(late);
}

void CountDropped() noexcept { ++dropped; }

std::uint64_t DroppedCount() noexcept { return dropped; }

std::size_t WaitingCount() noexcept {
    const LockedScope scope(queueLock);
    std::size_t count = 0;
    for (const QueuedCall* call = first; call != nullptr; call = call->next)
        ++count;
    return count;
}

bool IsWorker() noexcept { return worker == GetCurrentThreadId(); }

} // namespace Zuvan::Lumeq::CallQueue
