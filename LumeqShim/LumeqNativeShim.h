// The delivery wrappers: every delivery action goes through one of them.
//
// Each chooses a road. The managed road calls the companion library. The basic road, taken if the required
// runtime is missing, keeps the opt-in in the local settings file and sends one message at the start. Nothing
// thrown on either road leaves a wrapper; it is logged at WARNING. A wrapper that tests the tracking gate
// does nothing if tracking is disabled. Only under the API lock.
#pragma once

#include "LumeqShim/PreLoadingCode.h"

#include <Lumeq/LumeqRecords.h>

#include <cstdint>
#include <string>

namespace Zuvan::LumeqShim {

/// Begins a tracking run. On the basic road, and if the companion library fails, runs the basic start. Tests
/// the gate.
void StartupXX(const std::wstring& appName, const StartupTypes& types, bool trackSystemInfo,
               bool trackPrintQueueInfo);

/// The companion library waits up to the timeout. Does nothing on the basic road. Tests the gate.
void ShutdownXX(std::int32_t timeoutMsec);

/// The companion library waits up to the timeout. Does nothing on the basic road.
void FlushXX(std::int32_t timeoutMsec);

/// Returns false after any failure. Tests the gate, and returns false if tracking is disabled.
bool GetUserOptInXX();

/// Stores the choice in the basic store if the companion library fails. Tests the gate.
void SetUserOptInXX(bool userHasOptedIn);

/// Stores "True" or "False" under the key, in the basic store if the companion library fails. Consumes the
/// key: it is empty afterwards in every case. Tests the gate.
void SetLocalValue(bool value, std::wstring& key);

/// Sets the subfolder of the local settings on both roads, because both read the basic store.
void LocalSubfolderPathXX(const std::wstring& path);

/// Whether PostEventXX is known to drop every event of this process: the basic road, once it is chosen.
bool AreEventsDropped() noexcept;

/// Passes the event on without reading it; only valid until the call returns. Dropped silently on the basic
/// road.
void PostEventXX(const Lumeq::Extra::Eventing::EventingEvent* event);

/// Dropped silently on the basic road.
void PostDataXX(const Lumeq::Extra::Eventing::StringDictionary& data, const std::wstring& dataType);

/// Does nothing on the basic road.
void TrackPrintQueueInfoXX();

/// Does nothing on the basic road.
void TrackSystemInformationXX();

} // namespace Zuvan::LumeqShim
