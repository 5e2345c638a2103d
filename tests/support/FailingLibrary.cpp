#include "support/FailingLibrary.h"

#include "support/DeliveryStandIns.h"

#include <stdexcept>
#include <string>

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr wchar_t FileName[] = L"failing_library.dll";

int openApartments = 0;

HRESULT STDAPICALLTYPE CountedInitialize(void* reserved, DWORD model) {
    const HRESULT result = CoInitializeEx(reserved, model);
    if (SUCCEEDED(result))
        ++openApartments;
    return result;
}

void STDAPICALLTYPE CountedUninitialize() {
    --openApartments;
    CoUninitialize();
}

HMODULE Load() {
    // A worker of the previous one may still be about to end.
    for (int milliseconds = 0; GetModuleHandleW(FileName); ++milliseconds) {
        if (milliseconds == 5000)
            throw std::runtime_error("the failing library is still loaded");
        Sleep(1);
    }
    const std::wstring path = (TestProgramFolder() / "support" / "failing_library" / FileName).wstring();
    if (const HMODULE module = LoadLibraryW(path.c_str()))
        return module;
    throw std::runtime_error("the failing library cannot be loaded: error " + std::to_string(GetLastError()));
}

} // namespace

FailingLibrary::FailingLibrary()
    : _module(Load()), _control(Find<FailingLibraryControlFunction>("FailingLibrary_Control")()) {
    openApartments = 0;
    _initializing.emplace(_module, "ole32.dll", "CoInitializeEx", &CountedInitialize);
    _uninitializing.emplace(_module, "ole32.dll", "CoUninitialize", &CountedUninitialize);
}

FailingLibrary::~FailingLibrary() {
    _initializing.reset();
    _uninitializing.reset();
    FreeLibrary(_module);
}

void* FailingLibrary::FindAddress(const char* name) const {
    if (void* const address = reinterpret_cast<void*>(GetProcAddress(_module, name)))
        return address;
    throw std::runtime_error(std::string("no export ") + name);
}

int FailingLibrary::OpenApartments() { return openApartments; }

} // namespace Zuvan::Lumeq::Testing
