// What the exports of the session do: start and end, the user's choice, the device model.
#pragma once

#include "LumeqApi/Call.h"

#include <Lumeq/LumeqApi.h>

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::API {

/// The whole of StartupEx.
void StartSession(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
                  bool trackPrintQueueInfo);

/// Both report a negative timeout and go on with 10,000 ms.
void FlushSession(const Call& call, std::int32_t timeoutMsec);
void EndSession(const Call& call, std::int32_t timeoutMsec);

/// Stores the choice, and remembers it for the end of a pause.
void StoreUserOptIn(bool userHasOptedIn);
bool ReadUserOptIn(const Call& call);

/// Keeps the device model if it is valid. Throws std::logic_error for null.
void StoreDeviceModel(const Call& call, const wchar_t* globalContext);

} // namespace Zuvan::Lumeq::API
