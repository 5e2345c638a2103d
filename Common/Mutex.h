// std::mutex with annotations, which libstdc++'s has not.
#pragma once

#include "Common/ThreadAnnotations.h"

#include <mutex>

namespace Zuvan::Lumeq::Common {

class LUMEQ_CAPABILITY Mutex : public std::mutex {
public:
    void lock() LUMEQ_ACQUIRE() { std::mutex::lock(); }
    bool try_lock() LUMEQ_TRY_ACQUIRE(true) { return std::mutex::try_lock(); }
    void unlock() LUMEQ_RELEASE() { std::mutex::unlock(); }
};

class LUMEQ_SCOPED_CAPABILITY MutexScope {
public:
    explicit MutexScope(Mutex& mutex) LUMEQ_ACQUIRE(mutex) : _mutex(mutex) { _mutex.lock(); }
    ~MutexScope() LUMEQ_RELEASE() { _mutex.unlock(); }
    MutexScope(const MutexScope&) = delete;
    MutexScope& operator=(const MutexScope&) = delete;

private:
    Mutex& _mutex;
};

} // namespace Zuvan::Lumeq::Common
