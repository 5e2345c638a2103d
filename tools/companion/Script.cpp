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
#include <vector>

namespace Companion {

namespace {

/// What the calls of an operation do in turn: a kind of failure, or empty for none.
class Plan {
public:
    explicit Plan(const nlohmann::json& script) {
        for (const nlohmann::json& entry : script.is_array() ? script : nlohmann::json::array({script}))
            _kinds.push_back(entry.is_null() ? std::string() : entry.get<std::string>());
        if (_kinds.empty())
            throw std::runtime_error("LumeqCompanion.json: an empty list of failures");
    }

    /// That of this call.
    const std::string& Next() { return _kinds[_calls++ % _kinds.size()]; }

private:
    std::vector<std::string> _kinds;
    std::size_t _calls = 0;
};

struct Operations {
    std::map<std::string, Plan> failures;      ///< By name.
    std::map<std::string, DWORD> milliseconds; ///< Name to how long it sleeps.
};

Operations ReadScript() {
    std::ifstream file(BesideExecutable(L"LumeqCompanion.json"), std::ios::binary);
    if (!file)
        return {};
    const auto script = nlohmann::json::parse(file);
    Operations operations{{}, script.value("sleepMsec", decltype(Operations::milliseconds)())};
    const auto raised = script.value("raise", nlohmann::json::object());
    for (const auto& [name, failures] : raised.items())
        operations.failures.emplace(name, failures);
    return operations;
}

// The code of every exception that leaves the runtime since its version 4.
constexpr DWORD ManagedException = 0xE0434352;

void Raise(const std::string& kind, const std::string& operation) {
    if (kind == "managed")
        return RaiseException(ManagedException, EXCEPTION_NONCONTINUABLE, 0, nullptr);
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
    static Operations scripted = ReadScript();
    if (const auto found = scripted.milliseconds.find(operation); found != scripted.milliseconds.end())
        Sleep(found->second);
    const auto found = scripted.failures.find(operation);
    if (found == scripted.failures.end())
        return;
    if (const std::string& kind = found->second.Next(); !kind.empty())
        Raise(kind, operation);
}

} // namespace Companion
