#include "support/ImportedFunction.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

namespace Zuvan::Lumeq::Testing {

namespace {

template <class Value>
Value* At(HMODULE module, std::uintptr_t offset) {
    return reinterpret_cast<Value*>(reinterpret_cast<std::uintptr_t>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* ImportedLibrary(HMODULE module, const char* library) {
    const auto* header =
        At<IMAGE_NT_HEADERS>(module, static_cast<std::uintptr_t>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const auto& directory = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
         import->Name != 0; ++import)
        if (_stricmp(At<char>(module, import->Name), library) == 0)
            return import;
    throw std::runtime_error(std::string("not imported: ") + library);
}

bool IsCodeOf(HMODULE module, void* address) {
    HMODULE owner = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const wchar_t*>(address), &owner);
    return owner == module;
}

/// Null if the module does not delay the function. A slot that still leads to the module's own code, which
/// would overwrite it, holds the function's address afterwards.
void** DelayedImportSlot(HMODULE module, const char* library, const char* function) {
    const auto find = reinterpret_cast<void** (*)(const char*)>(
        reinterpret_cast<void*>(GetProcAddress(module, "DelayedSlot")));
    void** const slot = find ? find(function) : nullptr;
    if (slot && IsCodeOf(module, *slot))
        *slot = reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(library), function));
    return slot;
}

} // namespace

void** ImportSlot(HMODULE module, const char* library, const char* function) {
    if (!module)
        module = GetModuleHandleW(nullptr);
    if (void** const slot = DelayedImportSlot(module, library, function))
        return slot;
    const IMAGE_IMPORT_DESCRIPTOR* import = ImportedLibrary(module, library);
    const auto* names = At<IMAGE_THUNK_DATA>(module, import->OriginalFirstThunk);
    auto* addresses = At<IMAGE_THUNK_DATA>(module, import->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++addresses)
        if (!IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) &&
            std::strcmp(At<IMAGE_IMPORT_BY_NAME>(module, names->u1.AddressOfData)->Name, function) == 0)
            return reinterpret_cast<void**>(&addresses->u1.Function);
    throw std::runtime_error(std::string("not imported: ") + library + " " + function);
}

void* ExportedFunction(const char* library, const char* function) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), function));
}

void* ExchangeImport(void** slot, void* function) {
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    void* const previous = *slot;
    *slot = function;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
    return previous;
}

} // namespace Zuvan::Lumeq::Testing
