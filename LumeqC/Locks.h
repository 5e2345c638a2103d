// The system's own locks: they need no set-up and no end, so they work before, while and after the library's
// static objects do.
#pragma once

#include "Common/ThreadAnnotations.h"

#include <windows.h>

namespace Zuvan::Lumeq {

struct LUMEQ_CAPABILITY SlimLock {
    SRWLOCK native = SRWLOCK_INIT;
};

class LUMEQ_SCOPED_CAPABILITY LockedScope {
public:
    explicit LockedScope(SlimLock& lock) noexcept LUMEQ_ACQUIRE(lock) : _lock(lock.native) {
        AcquireSRWLockExclusive(&_lock);
    }
    ~LockedScope() LUMEQ_RELEASE() { ReleaseSRWLockExclusive(&_lock); }
    LockedScope(const LockedScope&) = delete;
    LockedScope& operator=(const LockedScope&) = delete;

    /// Releases the lock while it waits. False if `milliseconds` passed first.
    bool Wait(CONDITION_VARIABLE& condition, DWORD milliseconds) noexcept {
        return SleepConditionVariableSRW(&condition, &_lock, milliseconds, 0) != FALSE;
    }

private:
    SRWLOCK& _lock;
};

} // namespace Zuvan::Lumeq
