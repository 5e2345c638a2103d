// A companion library that does nothing, so that the benchmark measures only the library that calls it.
#include <Lumeq/LumeqRecords.h>

#include <cstdint>
#include <string>

namespace {

using Zuvan::Lumeq::Extra::Eventing::EventingEvent;
using Zuvan::Lumeq::Extra::Eventing::StringDictionary;
using Zuvan::LumeqShim::StartupTypes;

} // namespace

extern "C" {

void StartupInternal(const std::wstring&, const StartupTypes*, bool, bool) {}
void ShutdownInternal(std::int32_t) {}
void FlushInternal(std::int32_t) {}
bool GetUserOptInInternal() { return false; }
void SetUserOptInInternal(bool) {}
void SetLocalValueInternal(const std::wstring&, const std::wstring&) {}
void LocalSettingsSubfolderInternal(const std::wstring&) {}
void PostEventInternal(const EventingEvent&, void*, void*) {}
void PostDataInternal(const StringDictionary&, const std::wstring&, void*) {}
void TrackPrintQueueInfoInternal() {}
void TrackSystemInformationInternal() {}
}
