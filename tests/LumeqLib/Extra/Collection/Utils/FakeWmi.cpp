#include "FakeWmi.h"

#include "Common/Utf.h"
#include "support/PrintedNarrowTexts.h"
#include "support/ReferenceCounted.h"

#include <windows.h>

#include <sstream>
#include <wbemidl.h>

namespace Zuvan::Lumeq::Testing {

namespace {

FakeWmi* fake = nullptr;

std::string Narrow(const wchar_t* text) { return text ? Common::ToUtf8(text) : "null"; }

template <class... Arguments>
void Record(const Arguments&... arguments) {
    std::ostringstream line;
    const char* separator = "";
    ((line << separator << arguments, separator = " "), ...);
    fake->calls.push_back(line.str());
}

/// Reports its destruction.
template <class Interface>
class Counted : public ReferenceCounted<Interface> {
public:
    explicit Counted(const char* name) : _name(name) { ++fake->liveObjects; }

protected:
    ~Counted() override {
        --fake->liveObjects;
        Record("release", _name);
    }

private:
    const char* _name;
};

class Instance : public Counted<IWbemClassObject> {
public:
    explicit Instance(FakeWmi::Answer answer) : Counted("instance"), _answer(std::move(answer)) {}

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE*, LONG*) override {
        Record("Get", Narrow(name), flags);
        return FAILED(_answer.result) ? _answer.result : VariantCopy(value, &_answer.value);
    }

    HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR, LONG, VARIANT*, CIMTYPE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR, LONG, VARIANT*, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR*, VARIANT*, CIMTYPE*, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EndEnumeration() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR, IWbemQualifierSet**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetObjectText(LONG, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SpawnInstance(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CompareTo(LONG, IWbemClassObject*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR, LONG, IWbemClassObject**, IWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR, LONG, IWbemClassObject*, IWbemClassObject*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NextMethod(LONG, BSTR*, IWbemClassObject**, IWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EndMethodEnumeration() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR, IWbemQualifierSet**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }

private:
    FakeWmi::Answer _answer;
};

class Instances : public Counted<IEnumWbemClassObject> {
public:
    Instances() : Counted("instances") {}

    HRESULT STDMETHODCALLTYPE Next(LONG timeout, ULONG count, IWbemClassObject** objects,
                                   ULONG* returned) override {
        Record("Next", timeout, count);
        *returned = 0;
        if (FAILED(fake->nextResult))
            return fake->nextResult;
        if (fake->instances.empty())
            return WBEM_S_FALSE;
        *objects = new Instance(std::move(fake->instances.front()));
        fake->instances.pop_front();
        *returned = 1;
        return WBEM_S_NO_ERROR;
    }

    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NextAsync(ULONG, IWbemObjectSink*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Skip(LONG, ULONG) override { return E_NOTIMPL; }
};

class Services : public Counted<IWbemServices> {
public:
    Services() : Counted("services") {}

    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR query, LONG flags,
                                        IWbemContext* context, IEnumWbemClassObject** instances) override {
        Record("ExecQuery", Narrow(language), Narrow(query), flags, context);
        if (fake->throwsStandardException)
            throw OutOfOrder();
        if (SUCCEEDED(fake->execQueryResult))
            *instances = new Instances;
        return fake->execQueryResult;
    }

    HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR, LONG, IWbemContext*, IWbemServices**,
                                            IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG, IWbemObjectSink**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetObject(const BSTR, LONG, IWbemContext*, IWbemClassObject**,
                                        IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject*, LONG, IWbemContext*,
                                            IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR, LONG, IWbemContext*,
                                              IEnumWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR, LONG, IWbemContext*,
                                                   IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject*, LONG, IWbemContext*,
                                          IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject*, LONG, IWbemContext*,
                                               IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR, LONG, IWbemContext*,
                                                  IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR, LONG, IWbemContext*,
                                                 IEnumWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext*,
                                                      IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                             IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*,
                                                    IEnumWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                                         IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                         IWbemClassObject**, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                              IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
};

class Locator : public Counted<IWbemLocator> {
public:
    Locator() : Counted("locator") {}

    HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR resource, const BSTR user, const BSTR password,
                                            const BSTR locale, LONG flags, const BSTR authority,
                                            IWbemContext* context, IWbemServices** services) override {
        Record("ConnectServer", Narrow(resource), Narrow(user), Narrow(password), Narrow(locale), flags,
               Narrow(authority), context);
        if (SUCCEEDED(fake->connectServerResult) && !fake->givesNullServices)
            *services = new Services;
        return fake->connectServerResult;
    }
};

HRESULT STDAPICALLTYPE CreateLocator(REFCLSID classId, IUnknown* outer, DWORD context, REFIID interfaceId,
                                     void** object) {
    Record("CoCreateInstance", classId == CLSID_WbemLocator, outer, context, interfaceId == IID_IWbemLocator);
    if (SUCCEEDED(fake->createInstanceResult))
        *object = static_cast<IWbemLocator*>(new Locator);
    return fake->createInstanceResult;
}

HRESULT STDAPICALLTYPE SetBlanket(IUnknown*, DWORD authentication, DWORD authorization, OLECHAR* principal,
                                  DWORD authenticationLevel, DWORD impersonationLevel, void* identity,
                                  DWORD capabilities) {
    Record("CoSetProxyBlanket", authentication, authorization, Narrow(principal), authenticationLevel,
           impersonationLevel, identity, capabilities);
    return fake->setProxyBlanketResult;
}

} // namespace

FakeWmi::FakeWmi() { fake = this; }
FakeWmi::~FakeWmi() { fake = nullptr; }

Extra::Collection::Utils::WmiEntryPoints FakeWmi::EntryPoints() const {
    return {&CreateLocator, &SetBlanket};
}

} // namespace Zuvan::Lumeq::Testing
