// Takes the place of the class that connects to Windows Management Instrumentation: waits for the
// milliseconds that LUMEQ_TEST_WMI says, and hands on to the system's own.
#include <windows.h>

#include <cwchar>
#include <guiddef.h>

extern "C" __declspec(dllexport) HRESULT WINAPI
    DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
    wchar_t milliseconds[16] = {};
    GetEnvironmentVariableW(L"LUMEQ_TEST_WMI", milliseconds, 16);
    Sleep(static_cast<DWORD>(std::wcstoul(milliseconds, nullptr, 10)));
    const HMODULE own = LoadLibraryW(L"C:\\windows\\system32\\wbem\\wbemprox.dll");
    using Function = HRESULT WINAPI(REFCLSID, REFIID, void**);
    auto* const function =
        reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(own, "DllGetClassObject")));
    return function ? function(classId, iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllCanUnloadNow() { return S_FALSE; }
