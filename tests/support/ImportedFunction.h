// Replaces a function that the program, or one of its libraries, imports.
#pragma once

#include <windows.h>

namespace Zuvan::Lumeq::Testing {

/// The import table slot of `module` (null for this program) that holds the address of `function` of
/// `library`. Throws std::runtime_error if the module does not import it.
void** ImportSlot(HMODULE module, const char* library, const char* function);

/// The function that the loaded library exports.
void* ExportedFunction(const char* library, const char* function);

/// Writes the slot and returns its old value.
void* ExchangeImport(void** slot, void* function);

/// The function itself, whatever replaces it.
template <class Function>
Function* RealFunction(const char* library, const char* function) {
    return reinterpret_cast<Function*>(ExportedFunction(library, function));
}

/// While one lives, calls from this program, or from the given module, reach the replacement. `Function` is a
/// function type.
template <class Function>
class ImportedFunction {
public:
    ImportedFunction(const char* library, const char* function, Function* replacement)
        : ImportedFunction(nullptr, library, function, replacement) {}
    ImportedFunction(HMODULE module, const char* library, const char* function, Function* replacement)
        : _slot(ImportSlot(module, library, function)),
          _original(ExchangeImport(_slot, reinterpret_cast<void*>(replacement))) {}
    ~ImportedFunction() { ExchangeImport(_slot, _original); }
    ImportedFunction(const ImportedFunction&) = delete;
    ImportedFunction& operator=(const ImportedFunction&) = delete;

private:
    void** _slot;
    void* _original;
};

} // namespace Zuvan::Lumeq::Testing
