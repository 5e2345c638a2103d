// The end of the exported layer's calls: events and data are kept for the target to read, everything else is
// dropped.
#include "LumeqShim/LumeqNativeShim.h"
#include "LumeqShim/PauseState.h"
#include "fuzz/native/Machine.h"

namespace Zuvan::LumeqShim {

bool AreEventsDropped() noexcept { return false; }

void PostEventXX(const Lumeq::Extra::Eventing::EventingEvent* event) {
    using namespace Lumeq::Fuzzing;
    TheMachine().events.push_back({event->Timestamp(), ModelOf(event->Record())});
}

void PostDataXX(const Lumeq::Extra::Eventing::StringDictionary& data, const std::wstring& dataType) {
    Lumeq::Fuzzing::TheMachine().data.push_back({dataType, data});
}

void StartupXX(const std::wstring&, const StartupTypes&, bool, bool) {}
void ShutdownXX(std::int32_t) {}
void FlushXX(std::int32_t) {}
bool GetUserOptInXX() { return true; }
void SetUserOptInXX(bool) {}
void LocalSubfolderPathXX(const std::wstring&) {}
void TrackPrintQueueInfoXX() {}
void TrackSystemInformationXX() {}

bool IsPauseMarked() { return false; }
void InternalPause() {}
void InternalResume() {}
void RememberChoiceDuringPause(bool) {}

} // namespace Zuvan::LumeqShim
