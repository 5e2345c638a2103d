#include "LumeqLib/Extra/Collection/Utils/WmiProperty.h"

#include "Common/ComScope.h"
#include "Common/Format.h"
#include "Common/Logger.h"

#include <windows.h>

#include <comdef.h>
#include <exception>
#include <optional>
#include <wbemidl.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

// Smart pointers that throw _com_error if a call returned success with a null pointer.
_COM_SMARTPTR_TYPEDEF(IWbemLocator, __uuidof(IWbemLocator));
_COM_SMARTPTR_TYPEDEF(IWbemServices, __uuidof(IWbemServices));
_COM_SMARTPTR_TYPEDEF(IEnumWbemClassObject, __uuidof(IEnumWbemClassObject));
_COM_SMARTPTR_TYPEDEF(IWbemClassObject, __uuidof(IWbemClassObject));

using Common::SeverityLevel;

constexpr Common::LogSource Log(L"LumeqLib\\Extra\\Collection\\Utils");
constexpr wchar_t FunctionName[] = L"Zuvan::Lumeq::Extra::Collection::Utils::GetWmiProperty";

/// Whether the step succeeded. A failure is logged with the name of the step.
bool StepSucceeded(HRESULT result, const wchar_t* step) {
    if (SUCCEEDED(result))
        return true;
    Log(SeverityLevel::WARNING, step);
    return false;
}

HRESULT CreateLocator(const WmiEntryPoints& entryPoints, IWbemLocatorPtr& locator) {
    return entryPoints.createInstance(__uuidof(WbemLocator), nullptr, CLSCTX_INPROC_SERVER,
                                      __uuidof(IWbemLocator), reinterpret_cast<void**>(&locator));
}

HRESULT Connect(IWbemLocator& locator, IWbemServicesPtr& services) {
    return locator.ConnectServer(_bstr_t(L"ROOT\\CIMV2"), nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                                 &services);
}

HRESULT SetBlanket(const WmiEntryPoints& entryPoints, IWbemServices& services) {
    return entryPoints.setProxyBlanket(&services, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                       RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr,
                                       EOAC_NONE);
}

HRESULT Query(IWbemServices& services, const std::wstring& className, IEnumWbemClassObjectPtr& instances) {
    const std::wstring query = L"SELECT * FROM " + className;
    return services.ExecQuery(_bstr_t(L"WQL"), _bstr_t(query.c_str()),
                              WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &instances);
}

void ReadFirstValue(IEnumWbemClassObject& instances, const std::wstring& propertyName, _variant_t& value) {
    for (;;) {
        IWbemClassObjectPtr instance;
        ULONG count = 0;
        if (FAILED(instances.Next(WBEM_INFINITE, 1, &instance, &count)) || count == 0)
            return;
        const HRESULT result = instance->Get(propertyName.c_str(), 0, value.GetAddress(), nullptr, nullptr);
        if (SUCCEEDED(result) && value.vt != VT_EMPTY && value.vt != VT_NULL)
            return;
    }
}

void ReadProperty(const WmiEntryPoints& entryPoints, const std::wstring& className,
                  const std::wstring& propertyName, _variant_t& value) {
    IWbemLocatorPtr locator;
    if (!StepSucceeded(CreateLocator(entryPoints, locator), L"CreateInstance"))
        return;
    IWbemServicesPtr services;
    if (!StepSucceeded(Connect(*locator, services), L"ConnectServer"))
        return;
    if (!StepSucceeded(SetBlanket(entryPoints, *services), L"CoSetProxyBlanket"))
        return;
    IEnumWbemClassObjectPtr instances;
    if (!StepSucceeded(Query(*services, className, instances), L"ExecQuery"))
        return;
    ReadFirstValue(*instances, propertyName, value);
}

} // namespace

_variant_t GetWmiProperty(const std::wstring& className, const std::wstring& propertyName,
                          const WmiEntryPoints& entryPoints) {
    _variant_t value;
    std::optional<Common::ComScope> com; // Outlives the handler, whose line comes before that of COM's end.
    try {
        com.emplace(FunctionName);
        if (com->Result() >= 0)
            ReadProperty(entryPoints, className, propertyName, value);
        else
            Log(SeverityLevel::WARNING, L"CoInitialize() failed: 0x%08lx", com->Result());
    } catch (const std::exception& failure) {
        Log(SeverityLevel::WARNING, L"Unable to retrieve WMI property: %S",
            Common::NarrowArgument(failure.what()).Text());
    }
    return value;
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
