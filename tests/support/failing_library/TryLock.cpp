// The control of the failing library needs a try-lock, which the library itself never asks of the runtime in
// Runtime. A mutex there is a slim lock, and -1 until its first use.
#include <windows.h>

#include <cerrno>
#include <pthread.h>

extern "C" int pthread_mutex_trylock(pthread_mutex_t* mutex) {
    if (*mutex < 0)
        return pthread_mutex_lock(mutex);
    return TryAcquireSRWLockExclusive(reinterpret_cast<SRWLOCK*>(mutex)) ? 0 : EBUSY;
}
