#include "samples/host/Library.h"

#include <windows.h>

#include <stdexcept>
#include <thread>
#include <utility>

namespace SampleHost {

void Library::Load() {
    if (_module != nullptr)
        return;
    _module = LoadLibraryW(LibraryOf(_edge));
    if (_module == nullptr)
        throw std::runtime_error("the library cannot be loaded: error " + std::to_string(GetLastError()));
    Prepare(_edge, _module);
}

void Library::Unload() noexcept {
    if (void* module = std::exchange(_module, nullptr)) {
        Finish(_edge);
        FreeLibrary(static_cast<HMODULE>(module));
    }
}

void Library::WaitUntilGone(std::chrono::milliseconds longest) const {
    const auto end = std::chrono::steady_clock::now() + longest;
    while (GetModuleHandleW(LibraryOf(_edge)) != nullptr && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

void* Library::FindAddress(const char* name) const noexcept {
    if (_module == nullptr)
        return nullptr;
    return FindExport(_edge, _module, name);
}

} // namespace SampleHost
