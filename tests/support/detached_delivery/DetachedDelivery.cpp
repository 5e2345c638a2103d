#include "Common/Exceptions.h"
#include "LumeqShim/CompanionLibrary.h"

#include <windows.h>

#include <string>

namespace Zuvan::Lumeq::Testing {

/// Full path of the library that the operation was found in, or what FindCompanionOperation threw.
extern "C" __declspec(dllexport) void Detached_PlaceOfOperation(const char* name, std::wstring& place) {
    try {
        HMODULE library = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                               GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           static_cast<const wchar_t*>(LumeqShim::FindCompanionOperation(name)), &library);
        wchar_t path[1024] = {};
        GetModuleFileNameW(library, path, static_cast<DWORD>(std::size(path)));
        place = path;
    } catch (const Common::VestoException& failure) {
        place = failure.FullMessage();
    }
}

} // namespace Zuvan::Lumeq::Testing
