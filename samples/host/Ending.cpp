#include "samples/host/Ending.h"

#include <windows.h>

#include <cstdlib>

namespace SampleHost {

namespace {

using Way = void (*)(int exitCode);

constexpr struct {
    const char* name;
    Way take;
} Ways[] = {
    {"return", [](int exitCode) { throw SessionEnd{exitCode}; }},
    {"exit", [](int exitCode) { std::exit(exitCode); }},
    {"ExitProcess", [](int exitCode) { ExitProcess(static_cast<UINT>(exitCode)); }},
    {"TerminateProcess",
     [](int exitCode) { TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode)); }},
};

Way FindWay(const Json& name) {
    for (const auto& way : Ways)
        if (name == way.name)
            return way.take;
    throw BadLine("\"end\": no such way");
}

} // namespace

Step ReadEnding(const Json& json, bool isMainThread) {
    RequireMembers(json, {"end", "code"});
    if (!json.contains("code"))
        throw BadLine("\"end\" and \"code\" go together");
    if (json["end"] == "return" && !isMainThread)
        throw BadLine("only the main thread can return from the main function");
    const Way take = FindWay(json["end"]);
    const auto exitCode = static_cast<int>(ReadNumber(json["code"], 0, 255));
    return [take, exitCode](Session&) { take(exitCode); };
}

} // namespace SampleHost
