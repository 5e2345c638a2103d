// The delivery wrappers: every delivery action goes through one of them.
//
// Each chooses a road. The managed road calls the companion library; the basic road, where the required
// runtime is missing, keeps the opt-in in the local settings file and sends one message at the start. Nothing
// thrown on either road gets out: it is logged at WARNING. Those that say so test the tracking gate
// themselves and then do nothing. Only under the API lock.
#pragma once

#include "LumeqShim/PreLoadingCode.h"

#include <Lumeq/LumeqRecords.h>

#include <cstdint>
#include <string>

namespace Zuvan::LumeqShim {

/// Begins a tracking run; on the basic road, and when the companion library fails, the basic start. Tests the
/// gate.
void StartupXX(const std::wstring& appName, const StartupTypes& types, bool trackSystemInfo,
               bool trackPrintQueueInfo);

/// The companion library waits up to the timeout. Nothing on the basic road. Tests the gate.
void ShutdownXX(std::int32_t timeoutMsec);

/// The companion library waits up to the timeout. Nothing on the basic road.
void FlushXX(std::int32_t timeoutMsec);

/// False after any failure. Tests the gate, and gives false where it is shut.
bool GetUserOptInXX();

/// Stores the choice on the basic road too when the companion library fails. Tests the gate.
void SetUserOptInXX(bool userHasOptedIn);

/// Stores "True" or "False" under the key, on the basic road too when the companion library fails. The key is
/// consumed: empty afterwards, whatever happened. Tests the gate.
void SetLocalValue(bool value, std::wstring& key);

/// Sets the subfolder of the local settings on both roads, since the basic store is read on both.
void LocalSubfolderPathXX(const std::wstring& path);

/// Hands the event on unread, and only until the call returns. Dropped without a word on the basic road.
void PostEventXX(const Lumeq::Extra::Eventing::EventingEvent* event);

/// Dropped without a word on the basic road.
void PostDataXX(const Lumeq::Extra::Eventing::StringDictionary& data, const std::wstring& dataType);

/// Nothing on the basic road.
void TrackPrintQueueInfoXX();

/// Nothing on the basic road.
void TrackSystemInformationXX();

} // namespace Zuvan::LumeqShim
