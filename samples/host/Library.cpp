#include "samples/host/Library.h"

#include <windows.h>

#include <stdexcept>
#include <thread>
#include <utility>

namespace SampleHost {

namespace {

constexpr wchar_t Name[] = L"Lumeq.dll";

} // namespace

void Library::Load() {
    if (_module == nullptr)
        _module = LoadLibraryW(Name);
    if (_module == nullptr)
        throw std::runtime_error("Lumeq.dll cannot be loaded: error " + std::to_string(GetLastError()));
}

void Library::Unload() noexcept {
    if (void* module = std::exchange(_module, nullptr))
        FreeLibrary(static_cast<HMODULE>(module));
}

void Library::WaitUntilGone(std::chrono::milliseconds longest) {
    const auto end = std::chrono::steady_clock::now() + longest;
    while (GetModuleHandleW(Name) != nullptr && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

void* Library::FindAddress(const char* name) const noexcept {
    if (_module == nullptr)
        return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(_module), name));
}

} // namespace SampleHost
