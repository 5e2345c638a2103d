// A machine whose active code page is UTF-8, as a host's manifest or the user can have it.
#pragma once

#include "support/ImportedFunction.h"

#include <windows.h>

#include <locale>

namespace Zuvan::Lumeq::Testing {

/// While it lives, the system refuses this program's code to tell whether a character has no narrow form, as
/// it does with that code page, and the global locale has characters made meanwhile: those of the classic one
/// are older.
class Utf8CodePage {
public:
    Utf8CodePage() : _previous(std::locale::global({std::locale(), new std::ctype<wchar_t>})) {}
    ~Utf8CodePage() { std::locale::global(_previous); }
    Utf8CodePage(const Utf8CodePage&) = delete;
    Utf8CodePage& operator=(const Utf8CodePage&) = delete;

private:
    static int WINAPI Refuse(UINT codePage, DWORD flags, const wchar_t* wide, int wideLength, char* narrow,
                             int narrowSize, const char* defaultCharacter, BOOL* usedDefault) {
        if (usedDefault) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
        }
        return RealFunction<decltype(WideCharToMultiByte)>("kernel32.dll", "WideCharToMultiByte")(
            codePage, flags, wide, wideLength, narrow, narrowSize, defaultCharacter, nullptr);
    }

    ImportedFunction<decltype(WideCharToMultiByte)> _refused{"kernel32.dll", "WideCharToMultiByte", &Refuse};
    std::locale _previous;
};

} // namespace Zuvan::Lumeq::Testing
