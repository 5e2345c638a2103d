#include "LumeqShim/PreLoadingCode.h"

#include "Common/ComScope.h"
#include "Common/ComSession.h"
#include "Common/Exceptions.h"
#include "Common/Logger.h"
#include "Common/SystemHandles.h"
#include "LumeqShim/ClrHosting.h"
#include "LumeqShim/ForeignCall.h"

#include <array>
#include <string>
#include <string_view>
#include <wrl/client.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::SeverityLevel;
using Microsoft::WRL::ComPtr;

constinit bool RuntimeCheckPending = true;
constinit bool RuntimeMissing = false;

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\PreLoadingCode");
constexpr wchar_t RuntimeLibrary[] = L"mscoree";
constexpr char EntryPoint[] = "CLRCreateInstance";
constexpr DWORD VersionCapacity = 256; // wide characters

/// COM for the duration of the probe and not longer. Undoes the initialisation even if that failed.
class ProbeComScope {
public:
    ProbeComScope() { Lumeq::Common::ComInitCounted(_label); }
    ~ProbeComScope() {
        Lumeq::Common::ComUninitCounted(_label);
        Lumeq::Common::ComSession::Suspend();
    }
    ProbeComScope(const ProbeComScope&) = delete;
    ProbeComScope& operator=(const ProbeComScope&) = delete;

private:
    const std::wstring _label = L"Zuvan::LumeqShim::IsRequiredDotNetVersionInstalled";
};

/// Any runtime that reports this text qualifies.
bool IsRequiredVersion(std::wstring_view version) {
    return version.find(L"v4.0.30319") != std::wstring_view::npos;
}

/// Throws if the entry point has disappeared since IsCLRCreateInstanceSupported saw it.
CLRCreateInstanceFunction& LoadCLRCreateInstance() {
    Lumeq::Common::UniqueModule library(LoadLibraryW(RuntimeLibrary));
    auto* const function =
        library ? Lumeq::Common::FindFunction<CLRCreateInstanceFunction>(library.Get(), EntryPoint) : nullptr;
    if (!function)
        throw Lumeq::Common::InvalidOperationException(L"mscoree.dll has no CLRCreateInstance");
    // Deliberate leak: a managed runtime cannot be unloaded, and the companion library runs on it.
    static_cast<void>(library.Release());
    return *function;
}

bool IsRequiredRuntime(ICLRRuntimeInfo& runtime) {
    std::array<wchar_t, VersionCapacity + 1> version = {};
    DWORD capacity = VersionCapacity;
    if (SUCCEEDED(CallForeign([&] { return runtime.GetVersionString(version.data(), &capacity); })))
        Log(SeverityLevel::DEBUG, L"Found .NET version: %s", version.data());
    return IsRequiredVersion(version.data());
}

/// Looks at every runtime, even after a match, because the log lists them all.
bool ContainsRequiredRuntime(IEnumUnknown& runtimes) {
    bool found = false;
    ComPtr<IUnknown> element;
    while (CallForeign([&, next = element.ReleaseAndGetAddressOf()] {
               return runtimes.Next(1, next, nullptr);
           }) == S_OK) {
        // The elements are runtime objects already; this does not query them for the interface.
        if (IsRequiredRuntime(*static_cast<ICLRRuntimeInfo*>(element.Get())))
            found = true;
    }
    return found;
}

bool FindRequiredRuntime() {
    ComPtr<ICLRMetaHost> createdHost;
    const HRESULT created =
        CallForeign([&create = LoadCLRCreateInstance(), created = createdHost.GetAddressOf()] {
            return create(CLSID_CLRMetaHost, IID_ICLRMetaHost, reinterpret_cast<void**>(created));
        });
    if (FAILED(created)) {
        Log(SeverityLevel::WARNING, L"CLRCreateInstance failed 0x%08lx", static_cast<unsigned long>(created));
        return false;
    }
    // Deliberate leak: the host object belongs to the runtime, which stays for the life of the process.
    ICLRMetaHost* const host = createdHost.Detach();
    Log(SeverityLevel::DEBUG, L"CLR versions available from CLR:");
    ComPtr<IEnumUnknown> runtimes;
    if (CallForeign([host, found = runtimes.GetAddressOf()] {
            return host->EnumerateInstalledRuntimes(found);
        }) != S_OK) {
        // The result of CLRCreateInstance, not of the failed call: readers of the log depend on it.
        Log(SeverityLevel::WARNING, L"EnumerateInstalledRuntimes failed 0x%08lx",
            static_cast<unsigned long>(created));
        return false;
    }
    Log(SeverityLevel::DEBUG, L"EnumerateInstalledRuntimes");
    return ContainsRequiredRuntime(*runtimes.Get());
}

bool Probe() {
    Lumeq::Common::ComSession::Suspend();
    const Lumeq::Common::ScopedDurationLog duration(L"IsRequiredDotNetVersionInstalled()");
    bool found = false;
    if (IsCLRCreateInstanceSupported()) {
        const ProbeComScope com;
        found = FindRequiredRuntime();
    }
    RuntimeMissing = !found;
    Log(SeverityLevel::DEBUG, L"IsRequiredDotNetVersionInstalled() returns %d", found);
    return found;
}

} // namespace

bool IsRequiredDotNetVersionInstalled() {
    if (!RuntimeCheckPending)
        return !RuntimeMissing;
    RuntimeCheckPending = false;
    try {
        return Probe();
    } catch (...) {
        // Not logged, and RuntimeMissing stays false, so this call takes the basic road and every later one
        // the managed road. Do not smooth this over: the order of events is required.
        return false;
    }
}

bool IsRequiredRuntimeKnownMissing() noexcept { return !RuntimeCheckPending && RuntimeMissing; }

bool IsCLRCreateInstanceSupported() {
    Log(SeverityLevel::DEBUG, L"IsCLRCreateInstanceSupported()");
    bool supported = false;
    if (const Lumeq::Common::UniqueModule library{LoadLibraryW(RuntimeLibrary)})
        supported = GetProcAddress(library.Get(), EntryPoint) != nullptr;
    Log(SeverityLevel::DEBUG, L"IsCLRCreateInstanceSupported() returns %d", supported);
    return supported;
}

} // namespace Zuvan::LumeqShim
