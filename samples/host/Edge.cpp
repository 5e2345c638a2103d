#include "samples/host/Edge.h"

#include "samples/host/CAdapters.h"

#include <cwchar>
#include <iterator>

namespace SampleHost {

Edge ChosenEdge() {
    wchar_t name[16] = L"";
    const DWORD size = GetEnvironmentVariableW(L"LUMEQ_HOST_EDGE", name, static_cast<DWORD>(std::size(name)));
    if (size == 0 || std::wcscmp(name, L"cpp") == 0)
        return Edge::Cpp;
    if (std::wcscmp(name, L"c") == 0)
        return Edge::C;
    if (std::wcscmp(name, L"c-queued") == 0)
        return Edge::CQueued;
    throw std::runtime_error("LUMEQ_HOST_EDGE: no such edge");
}

const wchar_t* LibraryOf(Edge edge) noexcept { return edge == Edge::Cpp ? L"Lumeq.dll" : L"LumeqC.dll"; }

void Prepare(Edge edge, void* module) {
    cLibrary = static_cast<HMODULE>(module);
    if (edge != Edge::CQueued)
        return;
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    options.use_worker_thread = 1;
    // It is chosen already where the worker has kept the library since this host freed it.
    C<decltype(lumeq_configure)>("lumeq_configure")(&options);
}

void Finish(Edge edge) noexcept {
    // A call that returns something waits for those before it.
    if (edge == Edge::CQueued)
        C<decltype(lumeq_task_is_open)>("lumeq_task_is_open")(0);
}

void* FindExport(Edge edge, void* module, const char* name) noexcept {
    if (edge == Edge::Cpp)
        return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
    for (const Adapters* adapters : {&SessionAdapters(), &EventAdapters(), &TaskAdapters()})
        if (const auto found = adapters->find(name); found != adapters->end())
            return found->second;
    return nullptr;
}

} // namespace SampleHost
