#include "lumeq/Resource.h"

#include <windows.h>

#include <stdexcept>

namespace Zuvan::Lumeq::Tool {

namespace {

HMODULE ThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ThisModule), &module);
    return module;
}

} // namespace

std::string_view ProgramResource(const wchar_t* name) {
    const HMODULE module = ThisModule();
    const HRSRC found = FindResourceW(module, name, RT_RCDATA);
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    if (!loaded)
        throw std::runtime_error("the program has lost a part of itself");
    return {static_cast<const char*>(LockResource(loaded)), SizeofResource(module, found)};
}

} // namespace Zuvan::Lumeq::Tool
