// A machine whose active code page is UTF-8, through a host's manifest or the user's setting.
#pragma once

#include "support/ImportedFunction.h"

#include <windows.h>

#include <locale>

namespace Zuvan::Lumeq::Testing {

/// While one lives, the system refuses this program's requests to report that a character has no narrow form,
/// as it does with that code page. The global locale has character facets created meanwhile, because those of
/// the classic locale are older.
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
