// What MinGW's C++ library asks of POSIX threads, in the place of libwinpthread: that one takes a slot of
// thread-local storage, events, semaphores and an exception handler of the host's process, some of them while
// it is loaded, and leaves most of them behind when a host lets this library go. Nothing here needs to be
// given back.
#include <windows.h>

#include <atomic>
#include <cerrno>
#include <pthread.h>

namespace {

/// A mutex or condition variable in the place of a POSIX one. Their static initialisers are small negative
/// numbers, which no lock in use consists of; ours is zero.
template <class Native, class Posix>
Native* NativeOf(Posix* object) noexcept {
    static_assert(sizeof(Native) == sizeof(Posix));
    constexpr Posix LeastInitializer = GENERIC_RECURSIVE_INITIALIZER;
    std::atomic_ref<Posix> word(*object);
    Posix value = word.load(std::memory_order_relaxed);
    if (value < 0 && value >= LeastInitializer)
        word.compare_exchange_strong(value, 0);
    return reinterpret_cast<Native*>(object);
}

/// A recursive one is not told apart: the C++ library declares one such mutex, for the construction of static
/// variables, and does not hold it while it constructs.
SRWLOCK* LockOf(pthread_mutex_t* mutex) noexcept { return NativeOf<SRWLOCK>(mutex); }
CONDITION_VARIABLE* ConditionOf(pthread_cond_t* condition) noexcept {
    return NativeOf<CONDITION_VARIABLE>(condition);
}

enum OnceState : pthread_once_t { New = PTHREAD_ONCE_INIT, Running, Done };
SRWLOCK onceLock = SRWLOCK_INIT;
CONDITION_VARIABLE onceChanged = CONDITION_VARIABLE_INIT;

/// Tells the outcome to those who wait: done, or to be tried by the next where the routine threw.
class OnceRun {
public:
    explicit OnceRun(pthread_once_t& once) noexcept : _once(once) {}
    ~OnceRun() {
        AcquireSRWLockExclusive(&onceLock);
        std::atomic_ref(_once).store(outcome);
        ReleaseSRWLockExclusive(&onceLock);
        WakeAllConditionVariable(&onceChanged);
    }
    OnceRun(const OnceRun&) = delete;
    OnceRun& operator=(const OnceRun&) = delete;

    OnceState outcome = New;

private:
    pthread_once_t& _once;
};

/// Whether the caller has to run the routine; else it has been run.
bool BeginOnce(pthread_once_t& once) noexcept {
    std::atomic_ref state(once);
    pthread_once_t expected = New;
    while (!state.compare_exchange_strong(expected, Running)) {
        if (expected == Done)
            return false;
        AcquireSRWLockExclusive(&onceLock);
        while (state.load() == Running)
            SleepConditionVariableSRW(&onceChanged, &onceLock, INFINITE, 0);
        ReleaseSRWLockExclusive(&onceLock);
        expected = New;
    }
    return true;
}

} // namespace

extern "C" {

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*) {
    *mutex = 0;
    return 0;
}
int pthread_mutex_destroy(pthread_mutex_t*) { return 0; }
int pthread_mutex_lock(pthread_mutex_t* mutex) {
    AcquireSRWLockExclusive(LockOf(mutex));
    return 0;
}
int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    ReleaseSRWLockExclusive(LockOf(mutex));
    return 0;
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    return SleepConditionVariableSRW(ConditionOf(condition), LockOf(mutex), INFINITE, 0) ? 0 : EINVAL;
}
int pthread_cond_broadcast(pthread_cond_t* condition) {
    WakeAllConditionVariable(ConditionOf(condition));
    return 0;
}

int pthread_once(pthread_once_t* once, void (*routine)()) {
    if (std::atomic_ref(*once).load(std::memory_order_acquire) == Done || !BeginOnce(*once))
        return 0;
    OnceRun run(*once);
    routine();
    run.outcome = Done;
    return 0;
}

} // extern "C"
