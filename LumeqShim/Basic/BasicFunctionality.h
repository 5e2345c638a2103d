// The basic road: one message about the machine and the application in each process.
#pragma once

#include "LumeqShim/Basic/BasicConfiguration.h"
#include "LumeqShim/Basic/BasicMessage.h"

#include <string>

namespace Zuvan::LumeqShim {

inline constexpr wchar_t BasicQueueName[] = L"sys_info_base";

/// How the message names an application: its name and the version of its executable `host`.
std::wstring AppId(const std::wstring& appName, const std::wstring& host);

/// The part of the message that needs no settings. Reads the system afresh. Throws what GetSysInfoBase
/// throws.
MessageDictionary CollectMessage(const std::wstring& appName, const std::wstring& host);

/// The whole text. `deployedId` replaces that of the settings unless empty.
std::wstring MessageText(MessageDictionary message, const BasicConfiguration& configuration,
                         const std::wstring& deployedId);

/// Sends the message if the user has opted in and this process has not sent it yet. A message that could not
/// be sent because settings are missing counts as sent; one that threw does not, and the exception passes on.
/// Only under the API lock.
void BasicStart(const std::wstring& appName);

/// Collects the message and posts it if the settings say where to. Sets an empty `deployedId` to that of the
/// settings. Waits for the post no longer than PostMessageAndForget. Throws `_com_error` and standard
/// exceptions.
void BasicImplementation(const std::wstring& appName, std::wstring& deployedId);

} // namespace Zuvan::LumeqShim
