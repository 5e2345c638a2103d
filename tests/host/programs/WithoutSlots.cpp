// A host that has taken all slots of thread-local storage, and loads, calls and frees a library.
//   lumeq-without-slots FILE WHEN
// WHEN says when the storage without callbacks is taken too: "before" or "after" the library is first loaded.
// In each of three rounds three threads call: one without memory, one with enough memory, and one that is
// alive while the library is freed. Prints the results of their calls, and how many more blocks of the C
// runtime's memory are allocated than in the first round.
#include "support/ImportedFunction.h"

#include <windows.h>

#include <Lumeq/LumeqApi.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <malloc.h>
#include <string_view>

namespace {

namespace API = Zuvan::Lumeq::API;

std::atomic<int> exceptions;

LONG CALLBACK CountException(EXCEPTION_POINTERS* raised) {
    constexpr DWORD Thrown = 0x20474343;
    exceptions += raised->ExceptionRecord->ExceptionCode == Thrown;
    return EXCEPTION_CONTINUE_SEARCH;
}

template <class Function>
Function* Find(HMODULE library, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

/// An export whose argument throws, and one that returns something.
bool Call(HMODULE library) {
    Find<decltype(API::AdDisplayed)>(library, "AdDisplayed")(static_cast<API::AdType>(5), L"", L"", L"",
                                                             nullptr, nullptr, L"Home", nullptr, L"ok",
                                                             nullptr, nullptr);
    wchar_t text[32] = {};
    return Find<decltype(API::ToString_Internal)>(library, "ToString_Internal")(
               text, std::size(text), API::ConnectionMethodType::usb) == 0 &&
           std::wstring_view(text) == L"usb";
}

/// Calls on a thread that has not called yet, while the library has no memory at all. Returns whether nothing
/// escaped.
DWORD WINAPI CallWithoutMemory(void* library) {
    const auto module = static_cast<HMODULE>(library);
    const Zuvan::Lumeq::Testing::ImportedFunction<void*(std::size_t)> none(
        module, "msvcrt.dll", "malloc", [](std::size_t) -> void* { return nullptr; });
    try {
        Call(module);
        return TRUE;
    } catch (...) {
        return FALSE;
    }
}

bool SurvivesWithoutMemory(HMODULE library) {
    const HANDLE thread = CreateThread(nullptr, 0, &CallWithoutMemory, library, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    DWORD result = FALSE;
    GetExitCodeThread(thread, &result);
    CloseHandle(thread);
    return result;
}

HANDLE called;
HANDLE freed;
std::atomic<bool> hasWorked;
DWORD WINAPI CallAndLiveOn(void* library) {
    hasWorked = Call(static_cast<HMODULE>(library));
    SetEvent(called);
    WaitForSingleObject(freed, INFINITE);
    return 0;
}

int CountBlocks() {
    int count = 0;
    _HEAPINFO block{};
    while (_heapwalk(&block) == _HEAPOK)
        count += block._useflag == _USEDENTRY;
    return count;
}

template <class Take>
void TakeAll(Take take) {
    static_assert(FLS_OUT_OF_INDEXES == TLS_OUT_OF_INDEXES);
    while (take() != TLS_OUT_OF_INDEXES) {
    }
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3)
        return 1;
    const bool isTakenBefore = std::wstring_view(arguments[2]) == L"before";
    AddVectoredExceptionHandler(1, &CountException);
    called = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    freed = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    TakeAll([] { return FlsAlloc(nullptr); });
    int blocks = 0;
    for (int round = 1; round <= 3; ++round) {
        if (isTakenBefore)
            TakeAll(&TlsAlloc);
        const HMODULE library = LoadLibraryW(arguments[1]);
        if (library == nullptr) {
            std::printf("cannot be loaded: %lu\n", GetLastError());
            return 0;
        }
        TakeAll(&TlsAlloc);
        exceptions = 0;
        const bool isUndisturbed = SurvivesWithoutMemory(library);
        const bool isAnswered = Call(library);
        const HANDLE thread = CreateThread(nullptr, 0, &CallAndLiveOn, library, 0, nullptr);
        WaitForSingleObject(called, INFINITE);
        FreeLibrary(library);
        const bool isGone = GetModuleHandleW(arguments[1]) == nullptr;
        if (round == 1)
            blocks = CountBlocks();
        const int more = CountBlocks() - blocks;
        SetEvent(freed);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
        std::printf("undisturbed %d, answered %d %d, threw %d, gone %d, more blocks %d\n", isUndisturbed,
                    isAnswered, hasWorked.load(), exceptions.load(), isGone, more);
    }
    return 0;
}
