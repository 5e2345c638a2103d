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

/// Operation to kind of failure.
using Failures = std::map<std::string, std::string>;

Failures ReadScript() {
    std::ifstream file(BesideExecutable(L"LumeqCompanion.json"), std::ios::binary);
    if (!file)
        return {};
    return nlohmann::json::parse(file).value("raise", Failures());
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

void RaiseIfScripted(const std::string& operation) {
    static const Failures failures = ReadScript();
    if (const auto found = failures.find(operation); found != failures.end())
        Raise(found->second, operation);
}

} // namespace Companion
