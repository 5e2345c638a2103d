// One message to a queue of the queue service, fire and forget.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

/// What the worker works with. It owns all of it.
struct PostThreadArgs {
    std::wstring host;
    std::wstring path;
    std::wstring headers;
    std::string body;
};

/// Sends the message from a thread of its own and waits for that at most 3,000 ms; the thread goes on after
/// that and keeps this module loaded until it ends. Nothing tells whether the message arrived. Every
/// character of the message that cannot be printed becomes a blank, and stays one in the caller's string. The
/// token goes out as it is. Throws std::bad_alloc.
///
/// The API lock is held by the caller; the thread takes no lock but the log's.
void PostMessageAndForget(const std::wstring& serverUrl, const std::wstring& userAgent,
                          const std::wstring& projectId, const std::wstring& queueName, std::wstring& message,
                          const std::wstring& token);

} // namespace Zuvan::LumeqShim
