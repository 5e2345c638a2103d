// The entry point of a host without a C runtime, for the compilers and linkers of Microsoft's world.
#include "../c/day.h"

#include <stddef.h>

#if defined(__cplusplus)
#define EXTERN_C extern "C"
#else
#define EXTERN_C extern
#endif

EXTERN_C __declspec(dllimport) void ExitProcess(unsigned code);
EXTERN_C __declspec(dllimport) const wchar_t* GetCommandLineW(void);
EXTERN_C void start(void);
EXTERN_C void* memcpy(void* target, const void* source, size_t size);
EXTERN_C void* memset(void* target, int value, size_t size);

// Compilers call these two for initialisers of structs and arrays.
void* memcpy(void* target, const void* source, size_t size) {
    char* to = (char*)target;
    const char* from = (const char*)source;
    while (size-- > 0)
        *to++ = *from++;
    return target;
}

void* memset(void* target, int value, size_t size) {
    char* to = (char*)target;
    while (size-- > 0)
        *to++ = (char)value;
    return target;
}

static int ends_with_worker(const wchar_t* text) {
    const wchar_t* const word = L"worker";
    size_t length = 0;
    size_t i;
    while (text[length] != 0)
        ++length;
    if (length < 6)
        return 0;
    for (i = 0; i < 6; ++i)
        if (text[length - 6 + i] != word[i])
            return 0;
    return 1;
}

void start(void) { ExitProcess(play_day(ends_with_worker(GetCommandLineW())) ? 0 : 1); }
