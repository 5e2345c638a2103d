#include "host/programs/ImportWatch.h"

#include <cstdint>
#include <cstring>
#include <deque>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

/// Replaces one function: code that counts and jumps, and the data of that code.
struct alignas(16) StandIn {
    std::uint8_t code[16];
    volatile LONG count;
    void* function;
};
static_assert(offsetof(StandIn, count) == 16 && offsetof(StandIn, function) == 24);

constexpr std::uint8_t CountAndJump[16] = {0xF0, 0xFF, 0x05, 0x09, 0, 0,
                                           0, // lock inc dword [count], 9 after the end of the instruction
                                           0xFF, 0x25, 0x0B, 0,    0, 0, // jmp [function], 11 after
                                           0xCC, 0xCC, 0xCC};

struct Watched {
    std::string name;
    StandIn* standIn;
};

// Both belong to the one watch that lives. The loader's lock serialises every change.
std::wstring watchedFile;
std::deque<Watched> watched;

StandIn* MakeStandIn(void* function) {
    constexpr std::size_t PageSize = 4096;
    static std::uint8_t* next = nullptr;
    static std::size_t left = 0;
    if (left < sizeof(StandIn)) {
        left = 64 * PageSize;
        next = static_cast<std::uint8_t*>(
            VirtualAlloc(nullptr, left, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
    }
    auto* const standIn = reinterpret_cast<StandIn*>(next);
    next += sizeof(StandIn);
    left -= sizeof(StandIn);
    std::memcpy(standIn->code, CountAndJump, sizeof CountAndJump);
    standIn->count = 0;
    standIn->function = function;
    return standIn;
}

void Replace(IMAGE_THUNK_DATA& slot, const std::string& name) {
    DWORD protection = 0;
    VirtualProtect(&slot, sizeof slot, PAGE_READWRITE, &protection);
    StandIn* const standIn = MakeStandIn(reinterpret_cast<void*>(slot.u1.Function));
    slot.u1.Function = reinterpret_cast<std::uintptr_t>(standIn->code);
    VirtualProtect(&slot, sizeof slot, protection, &protection);
    watched.push_back({name, standIn});
}

/// Imported data must not be replaced. The C runtime's data is recognised by not being in a code section.
bool IsCode(std::uintptr_t address) {
    MEMORY_BASIC_INFORMATION memory{};
    VirtualQuery(reinterpret_cast<const void*>(address), &memory, sizeof memory);
    constexpr DWORD Executable =
        PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    return (memory.Protect & Executable) != 0;
}

void ReplaceImports(std::uintptr_t base) {
    const auto at = [base](std::uintptr_t offset) { return reinterpret_cast<void*>(base + offset); };
    const auto* dos = static_cast<const IMAGE_DOS_HEADER*>(at(0));
    const auto* header = static_cast<const IMAGE_NT_HEADERS*>(at(static_cast<std::uintptr_t>(dos->e_lfanew)));
    const auto& directory = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0)
        return;
    auto* import = static_cast<const IMAGE_IMPORT_DESCRIPTOR*>(at(directory.VirtualAddress));
    for (; import->Name != 0; ++import) {
        const std::string library = static_cast<const char*>(at(import->Name));
        const auto* name = static_cast<const IMAGE_THUNK_DATA*>(at(import->OriginalFirstThunk));
        auto* slot = static_cast<IMAGE_THUNK_DATA*>(at(import->FirstThunk));
        for (; name->u1.AddressOfData != 0; ++name, ++slot)
            if (IsCode(slot->u1.Function))
                Replace(
                    *slot,
                    library + "!" +
                        (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)
                             ? std::to_string(IMAGE_ORDINAL(name->u1.Ordinal))
                             : static_cast<const IMAGE_IMPORT_BY_NAME*>(at(name->u1.AddressOfData))->Name));
    }
}

// Declarations from the system's headers for drivers.
struct UnicodeText {
    USHORT bytes;
    USHORT capacity;
    const wchar_t* text;
};
struct LoadedLibrary {
    ULONG flags;
    const UnicodeText* path;
    const UnicodeText* fileName;
    void* base;
    ULONG size;
};
using NotificationCallback = void(CALLBACK*)(ULONG reason, const LoadedLibrary* library, void* context);
using Register = LONG(NTAPI*)(ULONG flags, NotificationCallback, void* context, void** cookie);
using Unregister = LONG(NTAPI*)(void* cookie);

void CALLBACK WhenLoaded(ULONG reason, const LoadedLibrary* library, void*) {
    constexpr ULONG Loaded = 1;
    const std::wstring name(library->fileName->text, library->fileName->bytes / sizeof(wchar_t));
    // The library's imports are bound by now, but its entry point has not been called yet.
    if (reason == Loaded && _wcsicmp(name.c_str(), watchedFile.c_str()) == 0)
        ReplaceImports(reinterpret_cast<std::uintptr_t>(library->base));
}

template <class Function>
Function LoaderFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), name)));
}

} // namespace

ImportWatch::ImportWatch(const std::wstring& fileName) {
    watchedFile = fileName;
    const auto watch = LoaderFunction<Register>("LdrRegisterDllNotification");
    if (watch == nullptr || watch(0, &WhenLoaded, nullptr, &_cookie) != 0)
        throw std::runtime_error("the loading of libraries cannot be watched");
}

ImportWatch::~ImportWatch() { LoaderFunction<Unregister>("LdrUnregisterDllNotification")(_cookie); }

ImportCounts ImportWatch::Take() {
    ImportCounts counts;
    for (const Watched& function : watched)
        if (const LONG count = InterlockedExchange(&function.standIn->count, 0); count > 0)
            counts[function.name] += static_cast<unsigned long>(count);
    return counts;
}

} // namespace Zuvan::Lumeq::Testing
