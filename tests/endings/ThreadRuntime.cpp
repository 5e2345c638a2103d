// Tells what the C++ library is given by LumeqApi/Runtime/Threads.cpp when eight threads ask at once. Its own
// threads are the system's, since those of the C++ library would bring the library that is replaced.
#include <windows.h>

#include <atomic>
#include <cstdio>
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

pthread_key_t key;
std::atomic<int> ownValues;
std::atomic<int> destroyed;
void UseKey() {
    int own = 0;
    const bool isEmpty = pthread_getspecific(key) == nullptr;
    pthread_setspecific(key, &own);
    SetLastError(ERROR_FILE_NOT_FOUND);
    ownValues += isEmpty && pthread_getspecific(key) == &own && GetLastError() == ERROR_FILE_NOT_FOUND;
}

} // namespace

int main() {
    Count(&RunOnce, routines, "routines that are to run once:");
    std::printf("threads for which it was done before they went on: %d\n", doneBefore.load());
    Count(&RunFailingOnce, attempts, "attempts until the first that does not throw:");
    std::printf("threads that were told: %d\n", failures.load());
    Count(&Add, sum, "additions under a mutex:");
    Count(&UseStatic, constructions, "constructions of a static variable:");
    std::printf("threads that saw it whole: %d\n", seen.load());
    pthread_key_create(&key, [](void*) { ++destroyed; });
    Count(&UseKey, ownValues, "threads with a value of their own and the last error untouched:");
    std::printf("values destroyed at their thread's end: %d\n", destroyed.load());
    return 0;
}
