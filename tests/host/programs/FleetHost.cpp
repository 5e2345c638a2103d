// One host of many that start at about the same time.
//   lumeq-fleet-host DELAY    prints "ready", waits for the gate, then DELAY milliseconds, and starts. Prints
//                             how many milliseconds StartupEx took, and for how many it waited for the post.
//   lumeq-fleet-host open     opens the gate to all hosts of the machine
#include "support/ImportedFunction.h"

#include <windows.h>

#include <Lumeq/LumeqApi.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

namespace API = Zuvan::Lumeq::API;

using Wait = DWORD WINAPI(HANDLE, DWORD);
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr DWORD LimitOfThePost = 3000;
constexpr DWORD RunsOn = 10000;
Milliseconds waitedForThePost{};

template <class Function>
Milliseconds TimeOf(Function function) {
    const auto begin = std::chrono::steady_clock::now();
    function();
    return std::chrono::steady_clock::now() - begin;
}

DWORD WINAPI TimedWait(HANDLE object, DWORD limit) {
    DWORD result = 0;
    const Milliseconds time = TimeOf([&] { result = WaitForSingleObject(object, limit); });
    if (limit == LimitOfThePost)
        waitedForThePost += time;
    return result;
}

HANDLE Gate() { return CreateEventW(nullptr, TRUE, FALSE, L"LumeqFleetGate"); }

int Start(DWORD delay) {
    const HMODULE library = LoadLibraryW(L"Lumeq.dll");
    if (library == nullptr)
        return 1;
    const auto startup = reinterpret_cast<decltype(&API::StartupEx)>(
        reinterpret_cast<void*>(GetProcAddress(library, "StartupEx")));
    const Zuvan::Lumeq::Testing::ImportedFunction<Wait> timed(library, "kernel32.dll", "WaitForSingleObject",
                                                              &TimedWait);
    std::puts("ready");
    std::fflush(stdout);
    WaitForSingleObject(Gate(), INFINITE);
    Sleep(delay);
    const Milliseconds whole = TimeOf([&] {
        startup(L"Scan Studio", API::WhyType::start_app, API::HowType::desktop_shortcut, false, false);
    });
    std::printf("%.1f %.1f\n", whole.count(), waitedForThePost.count());
    std::fflush(stdout);
    // As hosts do. A message that is still on its way would be lost at once.
    Sleep(RunsOn);
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2)
        return 2;
    if (std::string_view(arguments[1]) == "open")
        return SetEvent(Gate()) ? 0 : 1;
    return Start(std::strtoul(arguments[1], nullptr, 10));
}
