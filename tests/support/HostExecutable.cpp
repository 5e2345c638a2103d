#include "support/HostExecutable.h"

#include <iterator>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

/// The loader's name of the executable, which GetModuleFileNameW reads.
UNICODE_STRING& ExecutableName() {
    static const auto currentPeb =
        Common::FindFunction<PEB * NTAPI()>(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb");
    LIST_ENTRY* const head = &currentPeb()->Ldr->InMemoryOrderModuleList;
    for (LIST_ENTRY* link = head->Flink; link != head; link = link->Flink) {
        auto* const module = CONTAINING_RECORD(link, LDR_DATA_TABLE_ENTRY, InMemoryOrderLinks);
        if (module->DllBase == GetModuleHandleW(nullptr))
            return module->FullDllName;
    }
    throw std::runtime_error("the loader does not list the executable");
}

} // namespace

std::filesystem::path ExecutablePath() {
    wchar_t path[32768] = {};
    GetModuleFileNameW(nullptr, path, static_cast<DWORD>(std::size(path)));
    return path;
}

HostExecutable::HostExecutable(const std::filesystem::path& path)
    : _path(path.wstring()), _original(ExecutableName()) {
    const auto bytes = static_cast<USHORT>(_path.size() * sizeof(wchar_t));
    UNICODE_STRING& name = ExecutableName();
    name.Buffer = _path.data();
    name.Length = bytes;
    name.MaximumLength = static_cast<USHORT>(bytes + sizeof(wchar_t));
}

HostExecutable::~HostExecutable() { ExecutableName() = _original; }

} // namespace Zuvan::Lumeq::Testing
