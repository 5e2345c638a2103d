// Eight threads call the exports at the same time, under ThreadSanitizer. The stand-in for the machine has no
// lock of its own, so the library's lock alone keeps the threads apart.
#include "fuzz/native/Machine.h"

#include <Lumeq/LumeqApi.h>

#include <cstdio>
#include <thread>
#include <vector>

using namespace Zuvan::Lumeq;

namespace {

constexpr int Threads = 8;
constexpr int Rounds = 200;

const API::StringDictionary Context = {{L"networks_found", L"7"},
                                       {L"a name too long for a small string", L"x"}};
const API::StringDictionary Printer = {{L"dev_biid", L"unknown"}, {L"dev_modelname", L"Tarvik 3000"}};

void ReportTask() {
    API::TaskHandle task = API::DeviceConfigInitiated(&Context, nullptr);
    API::DeviceConfigCompleted(&task, L"error_a", API::ConfigurationSettingType::webservices_registration);
    API::DeviceConfigCompleted(&task, L"success", API::ConfigurationSettingType::webservices_registration);
}

/// Leaves four events, a printer and two refused calls.
void Call() {
    API::SetGlobalContextEx(L"Tarvik 3000");
    API::ButtonClicked(L"setup", nullptr, L"Home", L"first_run", L"ok", &Context, nullptr);
    API::ButtonClicked(L"setup", nullptr, L"not a name", L"first_run", L"ok", &Context, nullptr);
    API::FormSubmitted(L"dvrn", L"tarvik", L"register", L"1.0", Context, nullptr, L"Tarvik 2000");
    ReportTask();
    API::TrackDiscoveredPrintersEx({{nullptr, Printer}});
    std::wstring biid;
    API::GetBiid("1c852a4d-b800-1f08-abcd-3c52821f9ab0", biid);
}

/// 0 if as many were found as expected.
int Missing(const char* what, std::size_t found, std::size_t expected) {
    if (found == expected)
        return 0;
    std::fprintf(stderr, "%zu %s instead of %zu\n", found, what, expected);
    return 1;
}

} // namespace

int main() {
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < Rounds; ++round)
                Call();
        });
    for (std::thread& thread : threads)
        thread.join();
    const Fuzzing::Machine& machine = Fuzzing::TheMachine();
    return Missing("events", machine.events.size(), 4 * Threads * Rounds) +
           Missing("printers", machine.data.size(), Threads * Rounds) +
           Missing("errors", machine.Messages(Common::SeverityLevel::ERROR).size(), 2 * Threads * Rounds);
}
