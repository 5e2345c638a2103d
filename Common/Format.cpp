#include "Common/Format.h"

#include <cwchar>

namespace Zuvan::Lumeq::Common {

FormattedText FormatBoundedV(std::size_t capacity, const wchar_t* format, std::va_list arguments) {
    std::wstring buffer(capacity, L'\0');
    // The function writes no terminator if the text fills the buffer or does not fit, and does not report
    // where a conversion failed. The zeros in the buffer mark the end in each case.
    const int length = _vsnwprintf(buffer.data(), capacity, format, arguments);
    const bool truncated = length < 0 || static_cast<std::size_t>(length) >= capacity;
    buffer.back() = L'\0';
    buffer.resize(std::wcslen(buffer.c_str()));
    return {std::move(buffer), truncated};
}

FormattedText FormatBounded(std::size_t capacity, const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormattedText result = FormatBoundedV(capacity, format, arguments);
    va_end(arguments);
    return result;
}

} // namespace Zuvan::Lumeq::Common
