#include "tools/companion/Script.h"

#include "Common/Exceptions.h"
#include "Common/Utf.h"
#include "tools/companion/Transcript.h"

#include <windows.h>

#include <comdef.h>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace Companion {

namespace {

struct Operations {
    std::map<std::string, std::string> failures; ///< Name to kind of failure.
    std::map<std::string, DWORD> milliseconds;   ///< Name to how long it sleeps.
};

Operations ReadScript() {
    std::ifstream file(BesideExecutable(L"LumeqCompanion.json"), std::ios::binary);
    if (!file)
        return {};
    const auto script = nlohmann::json::parse(file);
    return {script.value("raise", decltype(Operations::failures)()),
            script.value("sleepMsec", decltype(Operations::milliseconds)())};
}

[[noreturn]] void Raise(const std::string& kind, const std::string& operation) {
    const std::string message = operation + " was told to fail";
    if (kind == "vesto")
        throw Zuvan::Lumeq::Common::VestoException(Zuvan::Lumeq::Common::FromUtf8(message));
    if (kind == "com")
        throw _com_error(E_FAIL);
    if (kind == "std")
        throw std::runtime_error(message);
    if (kind == "unknown")
        throw 1;
    throw std::runtime_error("LumeqCompanion.json: unknown kind of failure: " + kind);
}

} // namespace

void FollowScript(const std::string& operation) {
    static const Operations scripted = ReadScript();
    if (const auto found = scripted.milliseconds.find(operation); found != scripted.milliseconds.end())
        Sleep(found->second);
    if (const auto found = scripted.failures.find(operation); found != scripted.failures.end())
        Raise(found->second, operation);
}

} // namespace Companion
