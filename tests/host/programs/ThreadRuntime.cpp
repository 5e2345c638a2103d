// Prints what the C++ library receives from Runtime when eight threads ask at once in a process
// without free thread-local storage. Uses the system's threads, because std::thread would bring in the
// library that Runtime replaces.
#include "support/ImportedFunction.h"

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <pthread.h>

namespace {

constexpr int ThreadCount = 8;

void RunThreads(void (*run)()) {
    HANDLE threads[ThreadCount];
    for (HANDLE& thread : threads)
        thread = CreateThread(
            nullptr, 0,
            [](void* argument) -> DWORD {
                reinterpret_cast<void (*)()>(argument)();
                return 0;
            },
            reinterpret_cast<void*>(run), 0, nullptr);
    for (HANDLE thread : threads) {
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    }
}

void Count(void (*run)(), const std::atomic<int>& counter, const char* what) {
    RunThreads(run);
    std::printf("%s %d\n", what, counter.load());
}

pthread_once_t once = PTHREAD_ONCE_INIT;
std::atomic<int> routines;
std::atomic<int> doneBefore;
void RunOnce() {
    pthread_once(&once, [] {
        Sleep(50);
        ++routines;
    });
    doneBefore += routines == 1;
}

pthread_once_t failingOnce = PTHREAD_ONCE_INIT;
std::atomic<int> attempts;
std::atomic<int> failures;
void RunFailingOnce() {
    try {
        pthread_once(&failingOnce, [] {
            if (++attempts < 4)
                throw 1;
        });
    } catch (int) {
        ++failures;
    }
}

pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
int plainSum = 0;
std::atomic<int> sum;
void Add() {
    for (int i = 0; i < 10'000; ++i) {
        pthread_mutex_lock(&mutex);
        sum = ++plainSum;
        pthread_mutex_unlock(&mutex);
    }
}

std::atomic<int> constructions;
std::atomic<int> seen;
struct SlowToMake {
    SlowToMake() {
        Sleep(50);
        ++constructions;
    }
};
void UseStatic() {
    static const SlowToMake made;
    seen += constructions == 1;
}

thread_local int ownNumber = 7;
thread_local char ownZeros[1000];
struct alignas(256) Aligned {
    int number;
};
thread_local Aligned ownAligned{8};
std::atomic<int> freshThreads;
std::atomic<int> ownThreads;
void UseOwn() {
    SetLastError(ERROR_FILE_NOT_FOUND);
    freshThreads += ownNumber == 7 && ownZeros[0] == 0 && ownZeros[999] == 0 && ownAligned.number == 8 &&
                    reinterpret_cast<std::uintptr_t>(&ownAligned) % 256 == 0 &&
                    GetLastError() == ERROR_FILE_NOT_FOUND;
    const int own = static_cast<int>(GetCurrentThreadId());
    ownNumber = ownAligned.number = own;
    ownZeros[999] = 1;
    Sleep(50);
    ownThreads += ownNumber == own && ownAligned.number == own && ownZeros[999] == 1;
}

std::atomic<int> caught;
void ThrowAgain() {
    try {
        try {
            throw 1;
        } catch (int) {
            Sleep(50); // so that all exceptions are handled at the same time
            throw;
        }
    } catch (int value) {
        caught += value;
    }
}

namespace Testing = Zuvan::Lumeq::Testing;
constexpr char Runtime[] = "msvcrt.dll";
const auto allocate = Testing::RealFunction<decltype(std::malloc)>(Runtime, "malloc");
const auto release = Testing::RealFunction<decltype(std::free)>(Runtime, "free");
std::atomic<bool> isMemoryLeft = true;
std::atomic<int> blocks;
std::atomic<int> refusals;
void* CountedAllocate(std::size_t size) {
    void* const memory = isMemoryLeft ? allocate(size) : nullptr;
    ++(memory ? blocks : refusals);
    return memory;
}
void CountedFree(void* memory) {
    blocks -= memory != nullptr;
    release(memory);
}

void TakeAllSlots() {
    while (TlsAlloc() != TLS_OUT_OF_INDEXES) {
    }
    while (FlsAlloc(nullptr) != FLS_OUT_OF_INDEXES) {
    }
}

} // namespace

int main() {
    TakeAllSlots();
    Count(&RunOnce, routines, "routines that are to run once:");
    std::printf("threads for which it was done before they went on: %d\n", doneBefore.load());
    Count(&RunFailingOnce, attempts, "attempts until the first that does not throw:");
    std::printf("threads that were told: %d\n", failures.load());
    Count(&Add, sum, "additions under a mutex:");
    Count(&UseStatic, constructions, "constructions of a static variable:");
    std::printf("threads that saw it whole: %d\n", seen.load());
    {
        const Testing::ImportedFunction allocating(Runtime, "malloc", &CountedAllocate);
        const Testing::ImportedFunction freeing(Runtime, "free", &CountedFree);
        RunThreads(&UseOwn);
        isMemoryLeft = false;
        for (int i = 0; i < 10; ++i)
            RunThreads(&ThrowAgain);
    }
    std::printf("threads whose variables are new and the last error untouched: %d\n", freshThreads.load());
    std::printf("threads whose variables are their own: %d\n", ownThreads.load());
    std::printf("exceptions thrown twice and caught without memory: %d\n", caught.load());
    std::printf("memory was asked for: %d\n", refusals > 0);
    std::printf("blocks of memory that are left behind: %d\n", blocks.load());
    return 0;
}
