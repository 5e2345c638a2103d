// Works around libwinpthread, MinGW's POSIX threads, which libstdc++ uses for its mutexes and one-time
// initialisation: it takes a slot of thread-local storage, events, semaphores and an exception handler of the
// host's process, some of them when the DLL is loaded, and keeps most of them when the DLL is unloaded. This
// file implements the seven functions that libstdc++ calls on locks of the system that need no clean-up.
//
// No longer needed once host.quiet_load_tests, host.load_unload_tests and host.runtime_tests pass without
// this file, or with a libstdc++ that is built for Win32 threads.
#include <windows.h>

#include <atomic>
#include <cerrno>
#include <pthread.h>

namespace {

/// The system's lock or condition variable, stored in the POSIX object itself. A POSIX object that has only
/// its static initialiser holds a small negative number, which no native object in use does; a new native
/// object is zero.
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

/// A recursive mutex is treated like any other: libstdc++ declares just one, which guards the construction of
/// static variables, and does not hold it while it constructs.
SRWLOCK* LockOf(pthread_mutex_t* mutex) noexcept { return NativeOf<SRWLOCK>(mutex); }
CONDITION_VARIABLE* ConditionOf(pthread_cond_t* condition) noexcept {
    return NativeOf<CONDITION_VARIABLE>(condition);
}

enum OnceState : pthread_once_t { New = PTHREAD_ONCE_INIT, Running, Done };
SRWLOCK onceLock = SRWLOCK_INIT;
CONDITION_VARIABLE onceChanged = CONDITION_VARIABLE_INIT;

/// Publishes the outcome of a run to the waiting threads: done, or, where the routine threw, to be tried
/// again by the next of them.
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

/// Whether the caller has to run the routine. False once it has been run.
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
