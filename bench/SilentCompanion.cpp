// A companion library that does nothing, so that the benchmark measures only the library that calls it. With
// the environment variable LUMEQ_BENCH_START, a start takes that many milliseconds, and the time of each
// event is noted.
#include <Lumeq/LumeqRecords.h>

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using Zuvan::Lumeq::Extra::Eventing::EventingEvent;
using Zuvan::Lumeq::Extra::Eventing::StringDictionary;
using Zuvan::LumeqShim::StartupTypes;

const char* const StartMilliseconds = std::getenv("LUMEQ_BENCH_START");

} // namespace

extern "C" {

/// On the performance counter's clock.
__declspec(dllexport) LARGE_INTEGER LastEvent{};

void StartupInternal(const std::wstring&, const StartupTypes*, bool, bool) {
    if (StartMilliseconds != nullptr)
        Sleep(static_cast<DWORD>(std::atoi(StartMilliseconds)));
}
void ShutdownInternal(std::int32_t) {}
void FlushInternal(std::int32_t) {}
bool GetUserOptInInternal() { return false; }
void SetUserOptInInternal(bool) {}
void SetLocalValueInternal(const std::wstring&, const std::wstring&) {}
void LocalSettingsSubfolderInternal(const std::wstring&) {}
void PostEventInternal(const EventingEvent&, void*, void*) {
    if (StartMilliseconds != nullptr)
        QueryPerformanceCounter(&LastEvent);
}
void PostDataInternal(const StringDictionary&, const std::wstring&, void*) {}
void TrackPrintQueueInfoInternal() {}
void TrackSystemInformationInternal() {}
}
