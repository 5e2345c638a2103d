#include "samples/host/Library.h"

#include <windows.h>

#include <stdexcept>
#include <utility>

namespace SampleHost {

void Library::Load() {
    if (_module == nullptr)
        _module = LoadLibraryW(L"Lumeq.dll");
    if (_module == nullptr)
        throw std::runtime_error("Lumeq.dll cannot be loaded: error " + std::to_string(GetLastError()));
}

void Library::Unload() noexcept {
    if (void* module = std::exchange(_module, nullptr))
        FreeLibrary(static_cast<HMODULE>(module));
}

void* Library::FindAddress(const char* name) const noexcept {
    if (_module == nullptr)
        return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(_module), name));
}

} // namespace SampleHost
