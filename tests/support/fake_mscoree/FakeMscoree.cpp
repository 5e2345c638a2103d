#include "support/fake_mscoree/FakeMscoree.h"

#include "support/ReferenceCounted.h"

#include <windows.h>

#include <algorithm>
#include <objidl.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

// Declares the interfaces and identifiers again, independently of the code under test.

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr GUID HostClass = {0x9280188d, 0x0e8e, 0x4867, {0xb3, 0x0c, 0x7f, 0xa8, 0x38, 0x84, 0xe8, 0xde}};
constexpr GUID HostInterface = {0xd332db9e, 0xb9b3, 0x4125, {0x82, 0x07, 0xa1, 0x48, 0x84, 0xf5, 0x32, 0x16}};
constexpr HRESULT RuntimeNotFound = static_cast<HRESULT>(0x80131700);
constexpr wchar_t ScriptVariable[] = L"LUMEQ_FAKE_MSCOREE";
constexpr wchar_t LoadedVariable[] = L"LUMEQ_FAKE_MSCOREE_LOADED";

FakeMscoreeState state = {};

std::vector<std::wstring> Words() {
    wchar_t text[2048] = {};
    GetEnvironmentVariableW(ScriptVariable, text, static_cast<DWORD>(std::size(text)));
    std::vector<std::wstring> words;
    std::wistringstream script(text);
    for (std::wstring word; std::getline(script, word, L',');)
        words.push_back(word);
    return words;
}

bool IsScripted(const std::wstring& word) {
    const std::vector<std::wstring> words = Words();
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Raises an exception of the managed runtime if the script wants one out of `call`.
void RaiseManagedIfScripted(const wchar_t* call) {
    if (IsScripted(std::wstring(L"managed:") + call))
        RaiseException(0xE0434352, 0, 0, nullptr);
}

/// Counts itself in the given field while it lives.
template <class Interface, std::int32_t FakeMscoreeState::*Counter>
class CountedObject : public ReferenceCounted<Interface> {
public:
    CountedObject() { ++(state.*Counter); }

protected:
    ~CountedObject() override { --(state.*Counter); }
};

struct RuntimeInterface : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetVersionString(wchar_t* buffer, DWORD* capacity) = 0;
};

class Runtime final : public CountedObject<RuntimeInterface, &FakeMscoreeState::runtimes> {
public:
    Runtime(std::wstring version, HRESULT result) : _version(std::move(version)), _result(result) {}

    HRESULT STDMETHODCALLTYPE GetVersionString(wchar_t* buffer, DWORD* capacity) override {
        RaiseManagedIfScripted(L"GetVersionString");
        if (IsScripted(L"throw:GetVersionString"))
            throw std::runtime_error("scripted");
        if (*capacity != 256)
            return E_INVALIDARG;
        *capacity = static_cast<DWORD>(_version.size() + 1);
        if (!_version.empty())
            std::copy_n(_version.c_str(), _version.size() + 1, buffer);
        return _result;
    }

private:
    std::wstring _version;
    HRESULT _result;
};

IUnknown* MakeRuntime(const std::wstring& word) {
    constexpr wchar_t Unsure[] = L"unsure:";
    if (word == L"nameless")
        return new Runtime(L"", E_FAIL);
    if (word.rfind(Unsure, 0) == 0)
        return new Runtime(word.substr(std::size(Unsure) - 1), E_FAIL);
    return new Runtime(word, S_OK);
}

bool NamesRuntime(const std::wstring& word) {
    return word == L"nameless" || word.rfind(L"v", 0) == 0 || word.rfind(L"unsure:", 0) == 0;
}

class Enumerator final : public CountedObject<IEnumUnknown, &FakeMscoreeState::enumerators> {
public:
    Enumerator() : _words(Words()) {
        std::erase_if(_words, [](const std::wstring& word) { return !NamesRuntime(word); });
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, IUnknown** elements, ULONG* fetched) override {
        if (count != 1)
            return E_INVALIDARG;
        RaiseManagedIfScripted(L"Next");
        const bool more = _next < _words.size();
        *elements = more ? MakeRuntime(_words[_next++]) : nullptr;
        if (fetched)
            *fetched = more ? 1 : 0;
        if (more)
            return S_OK;
        return IsScripted(L"fail:Next") ? E_FAIL : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumUnknown**) override { return E_NOTIMPL; }

private:
    std::vector<std::wstring> _words;
    std::size_t _next = 0;
};

struct HostObjectInterface : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetRuntime(const wchar_t*, REFIID, void**) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVersionFromFile(const wchar_t*, wchar_t*, DWORD*) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumerateInstalledRuntimes(IEnumUnknown**) = 0;
};

class Host final : public CountedObject<HostObjectInterface, &FakeMscoreeState::hosts> {
public:
    HRESULT STDMETHODCALLTYPE GetRuntime(const wchar_t*, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetVersionFromFile(const wchar_t*, wchar_t*, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EnumerateInstalledRuntimes(IEnumUnknown** enumerator) override {
        *enumerator = nullptr;
        RaiseManagedIfScripted(L"EnumerateInstalledRuntimes");
        if (IsScripted(L"throw:EnumerateInstalledRuntimes"))
            throw std::runtime_error("scripted");
        if (IsScripted(L"fail:EnumerateInstalledRuntimes"))
            return E_FAIL;
        if (IsScripted(L"false:EnumerateInstalledRuntimes"))
            return S_FALSE;
        *enumerator = new Enumerator;
        return S_OK;
    }
};

bool IsInSingleThreadedApartment() {
    APTTYPE type = {};
    APTTYPEQUALIFIER qualifier = {};
    return CoGetApartmentType(&type, &qualifier) == S_OK && (type == APTTYPE_STA || type == APTTYPE_MAINSTA);
}

/// The variable lives longer than the library in its process.
bool WasLoadedBefore() {
    const bool before = GetEnvironmentVariableW(LoadedVariable, nullptr, 0) != 0;
    SetEnvironmentVariableW(LoadedVariable, L"1");
    return before;
}

} // namespace

extern "C" const FakeMscoreeState* FakeMscoree_State() { return &state; }

extern "C" HRESULT WINAPI CLRCreateInstance(REFCLSID classId, REFIID iid, void** instance) {
    if (IsInSingleThreadedApartment())
        ++state.callsInApartment;
    *instance = nullptr;
    RaiseManagedIfScripted(L"CLRCreateInstance");
    if (!IsEqualGUID(classId, HostClass) || !IsEqualGUID(iid, HostInterface))
        return E_NOINTERFACE;
    if (IsScripted(L"fail:CLRCreateInstance"))
        return RuntimeNotFound;
    *instance = new Host;
    return IsScripted(L"false:CLRCreateInstance") ? S_FALSE : S_OK;
}

} // namespace Zuvan::Lumeq::Testing

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    using namespace Zuvan::Lumeq::Testing;
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    const bool before = WasLoadedBefore();
    return !IsScripted(L"fail:load") && !(before && IsScripted(L"once"));
}
