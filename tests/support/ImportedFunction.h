// Puts a function of the test's own in the place of one that the program, or a library of its, imports.
#pragma once

#include <windows.h>

namespace Zuvan::Lumeq::Testing {

/// The place in the import table of `module`, null for this program, that holds the address of `function` of
/// `library`. Throws std::runtime_error where the module does not import it.
void** ImportSlot(HMODULE module, const char* library, const char* function);

/// What the loaded library exports.
void* ExportedFunction(const char* library, const char* function);

/// Writes the slot and gives what stood there.
void* ExchangeImport(void** slot, void* function);

/// The function itself, whatever stands in for it.
template <class Function>
Function* RealFunction(const char* library, const char* function) {
    return reinterpret_cast<Function*>(ExportedFunction(library, function));
}

/// While it lives, calls from this program's code, or the given module's, arrive at the replacement.
/// `Function` is a function type.
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
