#include "lumeq/Resource.h"

#include <windows.h>

#include <stdexcept>

namespace Zuvan::Lumeq::Tool {

std::string_view ProgramResource(const wchar_t* name) {
    const HRSRC found = FindResourceW(nullptr, name, RT_RCDATA);
    const HGLOBAL loaded = found ? LoadResource(nullptr, found) : nullptr;
    if (!loaded)
        throw std::runtime_error("the program has lost a part of itself");
    return {static_cast<const char*>(LockResource(loaded)), SizeofResource(nullptr, found)};
}

} // namespace Zuvan::Lumeq::Tool
