#include "Common/ComError.h"

#include "Common/Format.h"
#include "Common/SystemHandles.h"

namespace Zuvan::Lumeq::Common {

namespace {

std::wstring SystemMessage(std::int32_t hresult) {
    UniqueLocalMemory<wchar_t*> text;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
        static_cast<DWORD>(hresult), 0, reinterpret_cast<wchar_t*>(text.Receive()), 0, nullptr);
    return length == 0 ? std::wstring() : std::wstring(text.Get(), length);
}

// The codes in which dispatch interfaces carry their own error numbers.
constexpr std::int32_t FirstDispatchError = static_cast<std::int32_t>(0x80040200);
constexpr std::int32_t LastDispatchError = static_cast<std::int32_t>(0x8004FFFF);

} // namespace

std::wstring ComErrorText(std::int32_t hresult) { return ComErrorText(hresult, SystemMessage(hresult)); }

std::wstring ComErrorText(std::int32_t hresult, std::wstring systemMessage) {
    if (!systemMessage.empty()) {
        while (!systemMessage.empty() && (systemMessage.back() == L'\n' || systemMessage.back() == L'\r'))
            systemMessage.pop_back();
        return systemMessage;
    }
    if (hresult > FirstDispatchError && hresult <= LastDispatchError)
        return FormatBounded(64, L"IDispatch error #%d", hresult - FirstDispatchError).text;
    return FormatBounded(64, L"Unknown error 0x%0lX", static_cast<unsigned long>(hresult)).text;
}

} // namespace Zuvan::Lumeq::Common
