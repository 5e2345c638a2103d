// Variables that each thread has to itself, in the place of libgcc's: those take a slot of thread-local
// storage of the host's process, and end the process where no slot or no memory is left. The C++ library has
// one such variable, the exceptions that are being handled, and so every throw comes here.
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

/// What the compiler makes of a variable.
struct Variable {
    std::size_t size;
    std::size_t alignment;
    void* unused;
    const void* initial; ///< Null for zeros.
};

/// One thread's copy of a variable. The value stands behind it.
struct Copy {
    Copy* next;
    const Variable* variable;
    DWORD thread;

    void* Value() noexcept {
        const std::uintptr_t behind = reinterpret_cast<std::uintptr_t>(this + 1);
        return reinterpret_cast<void*>((behind + variable->alignment - 1) / variable->alignment *
                                       variable->alignment);
    }
};

/// Room for a copy where there is no memory, as when the exception is std::bad_alloc.
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

/// Goes after all other static objects, since their destructors may throw and catch. At a process's end the
/// system may have stopped a thread that held the lock: the destructor does without, being alone by then.
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
        // Whoever throws after a failed call of the system may still ask for its error.
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

// The system calls what stands in this section, whenever a thread begins or ends.
__attribute__((section(".CRT$XLD"), used)) const PIMAGE_TLS_CALLBACK onThread = &OnThread;

} // namespace

extern "C" void* __emutls_get_address(void* variable);
void* __emutls_get_address(void* variable) { return variables.Find(*static_cast<const Variable*>(variable)); }
