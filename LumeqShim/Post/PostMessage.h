// One message to a queue of the queue service, fire and forget.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

/// The worker's data, which it owns.
struct PostThreadArgs {
    std::wstring host;
    std::wstring path;
    std::wstring headers;
    std::string body;
};

/// Sends the message from a thread of its own and waits up to 3,000 ms for it. A thread that takes longer
/// goes on and keeps this module loaded until it ends. Does not report whether the message arrived. Replaces
/// each character that cannot be printed by a space, in the caller's string as well. Sends the token
/// unchanged. Throws std::bad_alloc.
///
/// The caller holds the API lock; the thread takes no lock but the log's.
void PostMessageAndForget(const std::wstring& serverUrl, const std::wstring& userAgent,
                          const std::wstring& projectId, const std::wstring& queueName, std::wstring& message,
                          const std::wstring& token);

} // namespace Zuvan::LumeqShim
