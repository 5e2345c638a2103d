// lumeq-bench-c MODE: a click through lumeq.h and through lumeq.hpp beside the export itself, each in turn.
// MODE is "direct"; "queued", for the caller of the worker thread; or "delay", of an event in the queue.
#include "bench/Measure.h"

#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.hpp>

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace LumeqBench {

namespace {

namespace API = Zuvan::Lumeq::API;

// Fewer than the queue holds, so that none is dropped.
constexpr int Burst = 500;
constexpr int Rounds = 101;

const std::wstring ScreenName = L"ChooseNetwork";
const std::wstring ControlName = L"connect";
const API::StringDictionary LocalContext = {{L"networks_found", L"7"}, {L"signal", L"good"}};

void ClickByExport() {
    API::ButtonClicked(L"setup", L"network/wireless", ScreenName, L"first_run", ControlName, &LocalContext,
                       L"Tarvik 3000");
}

void ClickInC() {
    static constexpr lumeq_field fields[] = {{L"networks_found", L"7"}, {L"signal", L"good"}};
    static constexpr lumeq_dictionary local = {fields, 2};
    const lumeq_screen screen = {sizeof screen, L"setup", L"network/wireless", L"ChooseNetwork",
                                 L"first_run",  &local,   L"Tarvik 3000"};
    lumeq_button_clicked(&screen, L"connect");
}

/// As a host does that has its screens ready.
void ClickInCpp() {
    static const auto button = lumeq::screen(L"ChooseNetwork", lumeq::flow(L"setup"))
                                   .path(L"network/wireless")
                                   .mode(L"first_run")
                                   .of(lumeq::model(L"Tarvik 3000"))
                                   .with(L"networks_found", L"7")
                                   .with(L"signal", L"good")
                                   .button(L"connect");
    button.clicked();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Of bursts in turn. The next burst waits until the queue is empty.
void MeasureBursts(const char* circumstances) {
    constexpr struct {
        const char* name;
        void (*click)();
    } ways[] = {{"export", ClickByExport}, {"lumeq.h", ClickInC}, {"lumeq.hpp", ClickInCpp}};
    std::vector<double> times[3];
    constexpr int WarmUp = 5;
    for (int round = -WarmUp; round < Rounds; ++round)
        for (int way = 0; way < 3; ++way) {
            const double burst = MicrosecondsOnce([&] {
                for (int i = 0; i < Burst; ++i)
                    ways[way].click();
            });
            lumeq_task_is_open(0);
            if (round >= 0)
                times[way].push_back(burst / Burst);
        }
    for (int way = 0; way < 3; ++way)
        Report(ways[way].name, circumstances, Median(times[way]));
}

const LARGE_INTEGER& LastEvent() {
    const HMODULE companion = GetModuleHandleW(L"LumeqShim.Managed.dll");
    return *reinterpret_cast<const LARGE_INTEGER*>(
        reinterpret_cast<void*>(GetProcAddress(companion, "LastEvent")));
}

/// From the call until the event comes to the companion library.
double DelayOfAClick() {
    LARGE_INTEGER start;
    LARGE_INTEGER second;
    QueryPerformanceFrequency(&second);
    QueryPerformanceCounter(&start);
    ClickInC();
    lumeq_task_is_open(0);
    return static_cast<double>(LastEvent().QuadPart - start.QuadPart) * 1e6 /
           static_cast<double>(second.QuadPart);
}

void MeasureDelay() {
    const auto start = [] { lumeq_startup(L"App", LUMEQ_WHY_START_APP, LUMEQ_HOW_UDC_TILE, 0, 0); };
    DelayOfAClick();
    std::vector<double> idle;
    for (int round = 0; round < Rounds; ++round) {
        idle.push_back(DelayOfAClick());
        Sleep(5);
    }
    Report("delay", "idle", Median(idle));
    Report("delay", "idle, longest", *std::max_element(idle.begin(), idle.end()));
    Report("lumeq_startup", "its caller", MicrosecondsOnce(start));
    Report("delay", "after a start", DelayOfAClick());
}

int Run(const char* mode) {
    if (std::strcmp(mode, "direct") != 0 && !lumeq::use_worker_thread())
        return 1;
    if (std::strcmp(mode, "delay") == 0)
        MeasureDelay();
    else
        MeasureBursts(mode);
    lumeq_shutdown(60'000);
    if (lumeq_dropped_count() != 0)
        std::fputs("lumeq-bench-c: calls were dropped\n", stderr);
    return lumeq_dropped_count() == 0 ? 0 : 1;
}

} // namespace
} // namespace LumeqBench

int main(int count, char** arguments) { return count == 2 ? LumeqBench::Run(arguments[1]) : 2; }
