#include "faults/PlatformCalls.h"

#include <windows.h>

#include <aclapi.h>
#include <atomic>
#include <objbase.h>
#include <oleauto.h>
#include <ostream>
#include <rpc.h>
#include <shlobj.h>
#include <shlwapi.h>
#include <type_traits>
#include <urlmon.h>
#include <wininet.h>

namespace Zuvan::Lumeq::Testing {

namespace {

std::atomic<int> callsUntilFailure{0}; // 0 and below: none is to fail, or it has happened

bool IsToFail() { return callsUntilFailure > 0 && --callsUntilFailure == 0; }

/// `Tag` distinguishes functions of the same type.
template <class Tag, class Result, class... Arguments>
struct Failing {
    static inline Result (*real)(Arguments...);
    static inline Result failure;
    static inline DWORD error;

    static Result Call(Arguments... arguments) {
        if (!IsToFail())
            return real(arguments...);
        SetLastError(error);
        return failure;
    }
};

struct Caller {
    const char* exported;
    Road road;
    const char* logLevel = "debug";
};

constexpr Caller Start{"StartupEx", Road::Basic};
constexpr Caller StartWithoutLog{"StartupEx", Road::Basic, ""};
constexpr Caller Choice{"SetUserOptInEx", Road::Basic};
constexpr Caller Line{"ToString", Road::Basic};
constexpr Caller Event{"ButtonClicked", Road::Managed};
constexpr Caller Task{"ScanAcquireInitiated", Road::Managed};

template <class Tag, class Result, class... Arguments>
PlatformCall Fails(Tag, Caller caller, const char* library, const char* function,
                   Result (*real)(Arguments...), std::type_identity_t<Result> failure,
                   DWORD error = ERROR_ACCESS_DENIED) {
    using Stand = Failing<Tag, Result, Arguments...>;
    static_cast<void>(real); // Only for its type; the call goes through the library's import table.
    Stand::failure = failure;
    Stand::error = error;
    return {library,
            function,
            reinterpret_cast<void*>(&Stand::Call),
            reinterpret_cast<void**>(&Stand::real),
            caller.exported,
            caller.road,
            caller.logLevel};
}

constexpr char Advapi[] = "advapi32.dll";
constexpr char Kernel[] = "kernel32.dll";
constexpr char Ole[] = "ole32.dll";
constexpr char OleAut[] = "oleaut32.dll";
constexpr char Rpc[] = "rpcrt4.dll";
constexpr char Shell[] = "shell32.dll";
constexpr char Shlwapi[] = "shlwapi.dll";
constexpr char Version[] = "version.dll";
constexpr char Internet[] = "wininet.dll";

HRESULT WINAPI NoStream(HGLOBAL, BOOL, IStream**) { return E_OUTOFMEMORY; }

BOOL WINAPI IsOlder(OSVERSIONINFOEXW*, DWORD, DWORDLONG) { return FALSE; }

const PlatformCall Calls[] = {
    Fails([] {}, Line, Advapi, "AllocateAndInitializeSid", &AllocateAndInitializeSid, FALSE),
    Fails([] {}, Choice, Advapi, "GetSecurityInfo", &GetSecurityInfo, ERROR_ACCESS_DENIED),
    Fails([] {}, Start, Advapi, "RegOpenKeyExW", &RegOpenKeyExW, ERROR_ACCESS_DENIED),
    Fails([] {}, Start, Advapi, "RegQueryValueExW", &RegQueryValueExW, ERROR_ACCESS_DENIED),
    Fails([] {}, Line, Advapi, "SetEntriesInAclW", &SetEntriesInAclW, ERROR_NOT_ENOUGH_MEMORY),
    Fails([] {}, Choice, Advapi, "SetKernelObjectSecurity", &SetKernelObjectSecurity, FALSE),
    Fails([] {}, Line, Advapi, "SetNamedSecurityInfoW", &SetNamedSecurityInfoW, ERROR_ACCESS_DENIED),
    Fails([] {}, Choice, Kernel, "CreateFileW", &CreateFileW, INVALID_HANDLE_VALUE),
    Fails([] {}, Line, Kernel, "CreateMutexW", &CreateMutexW, nullptr),
    Fails([] {}, Start, Kernel, "CreateThread", &CreateThread, nullptr, ERROR_NOT_ENOUGH_MEMORY),
    Fails([] {}, Choice, Kernel, "DeleteFileW", &DeleteFileW, FALSE),
    Fails([] {}, Choice, Kernel, "FindFirstFileW", &FindFirstFileW, INVALID_HANDLE_VALUE),
    Fails([] {}, Choice, Kernel, "FindNextFileW", &FindNextFileW, FALSE),
    Fails([] {}, Choice, Kernel, "FlushFileBuffers", &FlushFileBuffers, FALSE, ERROR_DISK_FULL),
    Fails([] {}, Choice, Kernel, "FormatMessageW", &FormatMessageW, 0)
        .While(Ole, "CreateStreamOnHGlobal", reinterpret_cast<void*>(&NoStream)),
    Fails([] {}, Start, Kernel, "GetExitCodeThread", &GetExitCodeThread, FALSE),
    Fails([] {}, Event, Kernel, "GetFileAttributesW", &GetFileAttributesW, INVALID_FILE_ATTRIBUTES),
    Fails([] {}, Choice, Kernel, "GetFileSizeEx", &GetFileSizeEx, FALSE),
    Fails([] {}, Start, Kernel, "GetLocaleInfoW", &GetLocaleInfoW, 0),
    Fails([] {}, Event, Kernel, "GetModuleFileNameW", &GetModuleFileNameW, 0),
    Fails([] {}, Start, Kernel, "GetModuleHandleExW", &GetModuleHandleExW, FALSE),
    Fails([] {}, Start, Kernel, "GetProcAddress", &GetProcAddress, nullptr, ERROR_PROC_NOT_FOUND),
    Fails([] {}, Start, Kernel, "GetSystemDirectoryW", &GetSystemDirectoryW, 0),
    Fails([] {}, Start, Kernel, "GetSystemPowerStatus", &GetSystemPowerStatus, FALSE),
    Fails([] {}, Start, Kernel, "GetTempPathW", &GetTempPathW, 0),
    Fails([] {}, Event, Kernel, "LoadLibraryExW", &LoadLibraryExW, nullptr),
    Fails([] {}, Start, Kernel, "LoadLibraryW", &LoadLibraryW, nullptr, ERROR_MOD_NOT_FOUND),
    Fails([] {}, Choice, Kernel, "MoveFileExW", &MoveFileExW, FALSE, ERROR_DISK_FULL),
    Fails([] {}, Start, Kernel, "OpenThread", &OpenThread, nullptr),
    Fails([] {}, Choice, Kernel, "ReadFile", &::ReadFile, FALSE, ERROR_READ_FAULT),
    Fails([] {}, Line, Kernel, "SetFilePointerEx", &SetFilePointerEx, FALSE),
    Fails([] {}, Start, Kernel, "VerifyVersionInfoW", &VerifyVersionInfoW, FALSE, ERROR_OLD_WIN_VERSION),
    Fails([] {}, StartWithoutLog, Kernel, "WaitForSingleObject", &WaitForSingleObject, WAIT_FAILED),
    Fails([] {}, Choice, Kernel, "WriteFile", &::WriteFile, FALSE, ERROR_DISK_FULL),
    Fails([] {}, Start, Ole, "CoCreateInstance", &CoCreateInstance, REGDB_E_CLASSNOTREG),
    Fails([] {}, Choice, Ole, "CoGetClassObject", &CoGetClassObject, REGDB_E_CLASSNOTREG),
    Fails([] {}, Start, Ole, "CoInitializeEx", &CoInitializeEx, E_OUTOFMEMORY),
    Fails([] {}, Start, Ole, "CoSetProxyBlanket", &CoSetProxyBlanket, E_ACCESSDENIED),
    Fails([] {}, Choice, Ole, "CreateStreamOnHGlobal", &CreateStreamOnHGlobal, E_OUTOFMEMORY),
    Fails([] {}, Choice, Ole, "StringFromGUID2", &StringFromGUID2, 0),
    Fails([] {}, Choice, OleAut, "SafeArrayCreateVector", &SafeArrayCreateVector, nullptr),
    Fails([] {}, Start, OleAut, "SafeArrayGetDim", &SafeArrayGetDim, 0),
    Fails([] {}, Start, OleAut, "SafeArrayGetElement", &SafeArrayGetElement, E_OUTOFMEMORY),
    Fails([] {}, Start, OleAut, "SafeArrayGetLBound", &SafeArrayGetLBound, DISP_E_BADINDEX),
    Fails([] {}, Start, OleAut, "SafeArrayGetUBound", &SafeArrayGetUBound, DISP_E_BADINDEX),
    Fails([] {}, Start, OleAut, "SafeArrayGetVartype", &SafeArrayGetVartype, E_INVALIDARG),
    Fails([] {}, Choice, OleAut, "SysAllocString", &SysAllocString, nullptr),
    Fails([] {}, Choice, Rpc, "UuidCreate", &UuidCreate, RPC_S_UUID_NO_ADDRESS),
    Fails([] {}, Task, Rpc, "UuidToStringW", &UuidToStringW, RPC_S_OUT_OF_MEMORY),
    Fails([] {}, Start, Shell, "SHCreateDirectoryExW", &SHCreateDirectoryExW, ERROR_ACCESS_DENIED),
    Fails([] {}, Start, Shell, "SHGetFolderPathW", &SHGetFolderPathW, E_FAIL),
    Fails([] {}, Start, Shell, "SHGetSpecialFolderPathW", &SHGetSpecialFolderPathW, FALSE)
        .While(Kernel, "VerifyVersionInfoW", reinterpret_cast<void*>(&IsOlder)),
    Fails([] {}, Start, Shlwapi, "PathCombineW", &PathCombineW, nullptr),
    Fails([] {}, Start, Shlwapi, "PathFileExistsW", &PathFileExistsW, FALSE, ERROR_FILE_NOT_FOUND),
    Fails([] {}, Start, Shlwapi, "PathIsDirectoryW", &PathIsDirectoryW, FALSE, ERROR_PATH_NOT_FOUND),
    Fails([] {}, Start, Version, "GetFileVersionInfoSizeW", &GetFileVersionInfoSizeW, 0),
    Fails([] {}, Start, Version, "GetFileVersionInfoW", &GetFileVersionInfoW, FALSE),
    Fails([] {}, Start, Version, "VerQueryValueW", &VerQueryValueW, FALSE),
    Fails([] {}, Start, "urlmon.dll", "ObtainUserAgentString", &ObtainUserAgentString, E_OUTOFMEMORY),
    Fails([] {}, Start, "user32.dll", "GetSystemMetrics", &GetSystemMetrics, 0),
    Fails([] {}, Start, Internet, "InternetOpenA", &InternetOpenA, nullptr, ERROR_NOT_ENOUGH_MEMORY),
    Fails([] {}, Start, Internet, "InternetConnectW", &InternetConnectW, nullptr),
    Fails([] {}, Start, Internet, "HttpOpenRequestW", &HttpOpenRequestW, nullptr),
    Fails([] {}, Start, Internet, "HttpSendRequestW", &HttpSendRequestW, FALSE, ERROR_INTERNET_TIMEOUT),
    Fails([] {}, Start, Internet, "HttpQueryInfoW", &HttpQueryInfoW, FALSE),
    Fails([] {}, Start, Internet, "InternetReadFile", &InternetReadFile, FALSE),
};

} // namespace

std::ostream& operator<<(std::ostream& stream, const PlatformCall& call) { return stream << call.function; }

std::span<const PlatformCall> PlatformCalls() { return Calls; }

PlatformCall PlatformCall::While(const char* library, const char* function, void* replacement) const {
    PlatformCall call = *this;
    call.otherLibrary = library;
    call.otherFunction = function;
    call.other = replacement;
    return call;
}

FailingPlatformCall::FailingPlatformCall(HMODULE module, const PlatformCall& call, int nth)
    : _slot(ImportSlot(module, call.library, call.function)), _original(ExchangeImport(_slot, call.failing)) {
    *call.real = _original;
    if (call.other)
        _other.emplace(module, call.otherLibrary, call.otherFunction,
                       reinterpret_cast<void (*)()>(call.other));
    callsUntilFailure = nth;
}

FailingPlatformCall::~FailingPlatformCall() {
    callsUntilFailure = 0;
    ExchangeImport(_slot, _original);
}

bool FailingPlatformCall::Happened() const { return callsUntilFailure <= 0; }

} // namespace Zuvan::Lumeq::Testing
