// What the library itself never asks of the runtime in Runtime/, and the control of the failing
// library does: a mutex there is a slim lock, and -1 until it is used for the first time.
#include <windows.h>

#include <cerrno>
#include <pthread.h>

extern "C" int pthread_mutex_trylock(pthread_mutex_t* mutex) {
    if (*mutex < 0)
        return pthread_mutex_lock(mutex);
    return TryAcquireSRWLockExclusive(reinterpret_cast<SRWLOCK*>(mutex)) ? 0 : EBUSY;
}
