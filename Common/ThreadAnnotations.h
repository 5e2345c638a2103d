// What clang's analysis of threads has to know: which data a lock guards, and which functions need it. Other
// compilers see nothing of it.
#pragma once

#if defined(__clang__)
#define LUMEQ_THREAD_ATTRIBUTE(attribute) __attribute__((attribute))
#else
#define LUMEQ_THREAD_ATTRIBUTE(attribute)
#endif

#define LUMEQ_CAPABILITY LUMEQ_THREAD_ATTRIBUTE(capability("mutex"))
#define LUMEQ_SCOPED_CAPABILITY LUMEQ_THREAD_ATTRIBUTE(scoped_lockable)
#define LUMEQ_GUARDED_BY(lock) LUMEQ_THREAD_ATTRIBUTE(guarded_by(lock))
#define LUMEQ_REQUIRES(lock) LUMEQ_THREAD_ATTRIBUTE(requires_capability(lock))
#define LUMEQ_EXCLUDES(lock) LUMEQ_THREAD_ATTRIBUTE(locks_excluded(lock))
#define LUMEQ_ACQUIRE(...) LUMEQ_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define LUMEQ_TRY_ACQUIRE(success) LUMEQ_THREAD_ATTRIBUTE(try_acquire_capability(success))
#define LUMEQ_RELEASE(...) LUMEQ_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
