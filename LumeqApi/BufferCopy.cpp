#include "LumeqApi/BufferCopy.h"

#include <cerrno>
#include <cwchar>

namespace Zuvan::Lumeq::API {

std::int32_t CopyToBuffer(wchar_t* buffer, std::size_t size, const std::wstring& text) noexcept {
    if (buffer == nullptr || size == 0)
        return EINVAL;
    if (std::wcslen(text.c_str()) >= size) {
        buffer[0] = L'\0';
        return ERANGE;
    }
    return wcscpy_s(buffer, size, text.c_str());
}

} // namespace Zuvan::Lumeq::API
