// Another process that uses the same settings files.
//   lumeq_opt_in_process FACTORY_FILE LOCAL_FILE set True|False
//   lumeq_opt_in_process FACTORY_FILE LOCAL_FILE toggle COUNT
// `toggle` writes both values in turn, without end if COUNT is 0. Exit code: 0, or 1 for bad arguments.
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqShim/Basic/BasicOptIn.h"

#include <cwchar>
#include <string>

using namespace Zuvan;

namespace {

void Toggle(long count) {
    for (long i = 0; count == 0 || i < count; ++i)
        LumeqShim::BasicSetUserOptIn(i % 2 == 0, LumeqShim::UserOptInKey);
}

} // namespace

int wmain(int argumentCount, wchar_t** arguments) {
    if (argumentCount != 5)
        return 1;
    Lumeq::Core::Utils::factorySettingsPathOverride = arguments[1];
    Lumeq::Core::Utils::localSettingsPathOverride = arguments[2];
    const std::wstring command = arguments[3];
    if (command == L"set")
        LumeqShim::BasicSetUserOptIn(std::wstring(arguments[4]) == L"True", LumeqShim::UserOptInKey);
    else if (command == L"toggle")
        Toggle(std::wcstol(arguments[4], nullptr, 10));
    else
        return 1;
    return 0;
}
