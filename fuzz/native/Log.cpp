#include "Common/Logger.h"

#include "Common/Utf.h"
#include "fuzz/native/Machine.h"

#include <cstdarg>
#include <cstdlib>

namespace Zuvan::Lumeq::Common {

namespace {

// Handles the four conversions that the exports use, as Windows does. It reads every argument to its end, so
// that AddressSanitizer notices one that has been freed.
std::wstring Argument(wchar_t conversion, std::va_list& arguments) {
    switch (conversion) {
    case L's':
        return va_arg(arguments, const wchar_t*);
    case L'S':
        return WidenLossy(va_arg(arguments, const char*));
    case L'd':
        return std::to_wstring(va_arg(arguments, int));
    case L'p':
        return std::to_wstring(reinterpret_cast<std::uintptr_t>(va_arg(arguments, const void*)));
    }
    std::abort();
}

std::wstring Formatted(const wchar_t* format, std::va_list& arguments) {
    std::wstring text;
    for (; *format; ++format)
        text += *format == L'%' ? Argument(*++format, arguments) : std::wstring(1, *format);
    return text;
}

} // namespace

void LogMessage(SeverityLevel level, const wchar_t* /*sourceFile*/, int /*sourceLine*/,
                const wchar_t* functionName, const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    Fuzzing::TheMachine().log.push_back(
        {level, functionName ? functionName : L"", Formatted(format, arguments)});
    va_end(arguments);
}

bool IsLogged(SeverityLevel) noexcept { return true; }

} // namespace Zuvan::Lumeq::Common
