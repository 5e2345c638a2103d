// Prints the names of functions that the system's debugging library finds in a DLL's PDB.
//   name-functions DLL FOLDER-OF-THE-PDB OFFSET...      offsets in hexadecimal, from the start of the DLL
#include <windows.h>

#include <dbghelp.h>

#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments) {
    if (count < 4)
        return 2;
    const HANDLE process = GetCurrentProcess();
    SymSetOptions(SYMOPT_EXACT_SYMBOLS | SYMOPT_FAIL_CRITICAL_ERRORS);
    if (!SymInitialize(process, arguments[2], FALSE))
        return 3;
    const DWORD64 base = SymLoadModuleEx(process, nullptr, arguments[1], nullptr, 0x10000000, 0, nullptr, 0);
    if (base == 0)
        return 4;
    for (int i = 3; i < count; ++i) {
        alignas(SYMBOL_INFO) char memory[sizeof(SYMBOL_INFO) + 2000] = {};
        auto* symbol = reinterpret_cast<SYMBOL_INFO*>(memory);
        symbol->SizeOfStruct = sizeof *symbol;
        symbol->MaxNameLen = 2000;
        DWORD64 distance = 0;
        const DWORD64 address = base + std::strtoull(arguments[i], nullptr, 16);
        std::printf("%s\n", SymFromAddr(process, address, &distance, symbol) ? symbol->Name : "?");
    }
    return 0;
}
