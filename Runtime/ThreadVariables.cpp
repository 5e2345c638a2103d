// Works around libgcc's emulation of thread_local (emutls): it takes one of the process's slots for
// thread-local storage at its first use, never frees it, and aborts the process where no slot or no memory is
// left. libstdc++ keeps the exceptions that a thread is handling in such a variable, so every throw comes
// here.
//
// No longer needed once host.runtime_tests and host.load_unload_tests pass without this file. libgcc's own
// version needs libwinpthread, so Threads.cpp goes first. A toolchain with native thread_local does not call
// __emutls_get_address at all.
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

/// How the compiler describes a variable. The layout is libgcc's.
struct Variable {
    std::size_t size;
    std::size_t alignment;
    void* unused;
    const void* initial; ///< Null for zeros.
};

/// One thread's copy of a variable. The value follows it in memory.
struct Copy {
    Copy* next;
    const Variable* variable;
    DWORD thread;

    void* Value() noexcept {
        const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(this + 1);
        return reinterpret_cast<void*>((end + variable->alignment - 1) / variable->alignment *
                                       variable->alignment);
    }
};

/// Room for a copy when memory has run out, as it has when std::bad_alloc is thrown.
struct Spare {
    static constexpr std::size_t Size = 64;

    bool isTaken;
    alignas(Copy) std::byte room[Size];
};

class Lock {
public:
    explicit Lock(SRWLOCK& lock) noexcept : _lock(lock) { AcquireSRWLockExclusive(&_lock); }
    ~Lock() { ReleaseSRWLockExclusive(&_lock); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    SRWLOCK& _lock;
};

/// Destroyed after every other static object, since their destructors may throw and catch. The destructor
/// does not take the lock: at the end of a process the system may have stopped the thread that held it, and
/// no other thread runs by then.
class ThreadVariables {
public:
    ~ThreadVariables() {
        while (_first)
            Remove(_first);
    }

    void* Find(const Variable& variable) noexcept {
        const Lock lock(_lock);
        const DWORD thread = GetCurrentThreadId();
        for (Copy* copy = _first; copy; copy = copy->next)
            if (copy->thread == thread && copy->variable == &variable)
                return copy->Value();
        return Add(variable, thread).Value();
    }

    void ForgetThread() noexcept {
        const Lock lock(_lock);
        const DWORD thread = GetCurrentThreadId();
        for (Copy** copy = &_first; *copy;)
            if ((*copy)->thread == thread)
                Remove(*copy);
            else
                copy = &(*copy)->next;
    }

private:
    Copy& Add(const Variable& variable, DWORD thread) noexcept {
        Copy& copy = *static_cast<Copy*>(Take(sizeof(Copy) + variable.size + variable.alignment - 1));
        copy = {_first, &variable, thread};
        if (variable.initial)
            std::memcpy(copy.Value(), variable.initial, variable.size);
        else
            std::memset(copy.Value(), 0, variable.size);
        _first = &copy;
        return copy;
    }

    void Remove(Copy*& place) noexcept {
        Copy* const copy = place;
        place = copy->next;
        for (Spare& spare : _spares)
            if (reinterpret_cast<std::byte*>(copy) == spare.room) {
                spare.isTaken = false;
                return;
            }
        std::free(copy);
    }

    void* Take(std::size_t size) noexcept {
        // A handler may read the error of the system call whose failure caused the throw.
        const DWORD error = GetLastError();
        void* const memory = std::malloc(size);
        SetLastError(error);
        if (memory)
            return memory;
        for (Spare& spare : _spares)
            if (!spare.isTaken && size <= Spare::Size) {
                spare.isTaken = true;
                return spare.room;
            }
        std::abort();
    }

    SRWLOCK _lock = SRWLOCK_INIT;
    Copy* _first = nullptr;
    Spare _spares[64] = {};
};
__attribute__((init_priority(102))) constinit ThreadVariables variables;

void NTAPI OnThread(void*, DWORD reason, void*) {
    if (reason == DLL_THREAD_DETACH)
        variables.ForgetThread();
}

// The system calls every function listed in this section when a thread begins or ends.
__attribute__((section(".CRT$XLD"), used)) const PIMAGE_TLS_CALLBACK onThread = &OnThread;

} // namespace

extern "C" void* __emutls_get_address(void* variable);
void* __emutls_get_address(void* variable) { return variables.Find(*static_cast<const Variable*>(variable)); }
