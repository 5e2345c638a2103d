// One HTTPS POST in the platform's own client.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

/// Sends the request to port 443 of the server, with all of the platform's settings as they are, and waits
/// for the answer as long as they say. `headers` are complete lines. `body` may be null for none. `answer`
/// receives the first 4,095 bytes of the answer's text, up to the first zero byte; it stays as it is where no
/// request could be made. What the server thinks of the request has no effect. Failures are logged; nothing
/// escapes.
void Post(const std::wstring& server, const std::wstring& path, const std::wstring& headers, const char* body,
          std::string& answer) noexcept;

} // namespace Zuvan::LumeqShim
