// What clang's analysis of threads has to know: which data a lock guards, and which functions need it. Other
// compilers see nothing of it.
#pragma once

#include <mutex>

#if defined(__clang__)
#define LUMEQ_THREADS(attribute) __attribute__((attribute))
#else
#define LUMEQ_THREADS(attribute)
#endif

#define LUMEQ_LOCK LUMEQ_THREADS(capability("mutex"))
#define LUMEQ_LOCK_SCOPE LUMEQ_THREADS(scoped_lockable)
#define LUMEQ_GUARDED_BY(lock) LUMEQ_THREADS(guarded_by(lock))
#define LUMEQ_NEEDS(lock) LUMEQ_THREADS(requires_capability(lock))
#define LUMEQ_EXCLUDES(lock) LUMEQ_THREADS(locks_excluded(lock))
#define LUMEQ_TAKES(...) LUMEQ_THREADS(acquire_capability(__VA_ARGS__))
#define LUMEQ_TRIES(success) LUMEQ_THREADS(try_acquire_capability(success))
#define LUMEQ_RETURNS(...) LUMEQ_THREADS(release_capability(__VA_ARGS__))

namespace Zuvan::Lumeq::Common {

/// std::mutex, which libstdc++ does not annotate.
class LUMEQ_LOCK Mutex : public std::mutex {
public:
    void lock() LUMEQ_TAKES() { std::mutex::lock(); }
    bool try_lock() LUMEQ_TRIES(true) { return std::mutex::try_lock(); }
    void unlock() LUMEQ_RETURNS() { std::mutex::unlock(); }
};

class LUMEQ_LOCK_SCOPE MutexScope {
public:
    explicit MutexScope(Mutex& mutex) LUMEQ_TAKES(mutex) : _mutex(mutex) { _mutex.lock(); }
    ~MutexScope() LUMEQ_RETURNS() { _mutex.unlock(); }
    MutexScope(const MutexScope&) = delete;
    MutexScope& operator=(const MutexScope&) = delete;

private:
    Mutex& _mutex;
};

} // namespace Zuvan::Lumeq::Common
