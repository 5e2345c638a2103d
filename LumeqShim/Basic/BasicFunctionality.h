// The basic road: one message about the machine and the application for each process.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

/// Sends the message if the user is opted in and this process has not sent it yet. A message that nothing
/// could be sent for, for want of settings, counts as sent; one that raised something does not, and the
/// exception passes on. Under the API lock.
void BasicStart(const std::wstring& appName);

/// Collects the message and posts it, if the settings say where to. An empty `deployedId` is set to that of
/// the settings. Takes no longer than that and the wait of the post. Throws `_com_error` and standard
/// exceptions.
void BasicImplementation(const std::wstring& appName, std::wstring& deployedId);

} // namespace Zuvan::LumeqShim
