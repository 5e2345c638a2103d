// Watches the narrow texts that this program passes to the platform's wide printf.
#pragma once

#include "support/ImportedFunction.h"

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <exception>

namespace Zuvan::Lumeq::Testing {

/// While one lives, counts the texts for %S by the byte after their terminator: a second zero, or another.
class PrintedNarrowTexts {
public:
    PrintedNarrowTexts() { _guarded = _bare = 0; }

    int Guarded() const { return _guarded; }
    int Bare() const { return _bare; }

private:
    // A va_list is a plain pointer here, but has an attribute that a template cannot take.
    using Arguments = char*;
    using Print = int(wchar_t*, std::size_t, const wchar_t*, Arguments);

    static int Watch(wchar_t* buffer, std::size_t size, const wchar_t* format, Arguments arguments) {
        std::va_list each;
        va_copy(each, arguments);
        for (const wchar_t* at = std::wcschr(format, L'%'); at; at = std::wcschr(at, L'%')) {
            at += 1 + std::wcscspn(at + 1, L"%sSdpuxX");
            // Every argument occupies eight bytes here, whatever its type.
            if (const void* const argument = *at == L'%' ? nullptr : va_arg(each, const void*); *at == L'S')
                Count(static_cast<const char*>(argument));
            at += *at != L'\0';
        }
        va_end(each);
        return RealFunction<Print>("msvcrt.dll", "_vsnwprintf")(buffer, size, format, arguments);
    }
    static void Count(const char* text) { ++(text[std::strlen(text) + 1] == '\0' ? _guarded : _bare); }

    static inline std::atomic<int> _guarded{0};
    static inline std::atomic<int> _bare{0};
    ImportedFunction<Print> _watched{"msvcrt.dll", "_vsnwprintf", &Watch};
};

/// The byte after the terminator is not zero.
class OutOfOrder : public std::exception {
public:
    const char* what() const noexcept override { return "out of order\0, and more"; }
};

} // namespace Zuvan::Lumeq::Testing
