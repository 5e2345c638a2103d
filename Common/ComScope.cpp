#include "Common/ComScope.h"

#include "Common/ComSession.h"
#include "Common/Debugger.h"
#include "Common/Logger.h"

#include <windows.h>

#include <atomic>
#include <objbase.h>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr LogSource Log(L"Common\\ComScope");

constinit std::atomic<std::int32_t> comInitCount{0};
constinit std::atomic<std::int32_t> comUninitCount{0};

void LogBalance(SeverityLevel level, const wchar_t* what, const std::wstring& functionName) {
    Log(level, L"%s t=%d, init=%d, deinit=%d, f=%s", what, GetCurrentThreadId(), comInitCount.load(),
        comUninitCount.load(), functionName.c_str());
}

HRESULT EnterApartment() { return CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }

std::int32_t Initialize(const std::wstring& functionName) {
    const HRESULT result = EnterApartment();
    if (result != RPC_E_CHANGED_MODE)
        return result;
    // The host left this thread in a multithreaded apartment. Undoing that here is a deliberate repair of an
    // unbalanced caller; the break shows it to a developer.
    LogBalance(SeverityLevel::WARNING, L"Unbalanced COM initialization", functionName);
    CoUninitialize();
    const HRESULT repaired = EnterApartment();
    BreakIfDebugged();
    return repaired;
}

} // namespace

std::int32_t ComInitCounted(const std::wstring& functionName) {
    ++comInitCount;
    LogBalance(SeverityLevel::DEBUG, L"Init", functionName);
    return ComSession::Enter([&functionName] { return Initialize(functionName); });
}

void ComUninitCounted(const std::wstring& functionName) {
    ++comUninitCount;
    LogBalance(SeverityLevel::DEBUG, L"Uninit", functionName);
    ComSession::Leave();
}

} // namespace Zuvan::Lumeq::Common
