// One HTTPS POST by the platform's own client.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

/// Sends the request to port 443 of the server with the platform's settings and waits for the answer as long
/// as these allow. `headers` are complete lines. A null `body` means none. `answer` receives the first 4,095
/// bytes of the answer's text, up to the first zero byte; it is unchanged if no request could be made. The
/// server's status has no effect. Logs failures and throws nothing.
void Post(const std::wstring& server, const std::wstring& path, const std::wstring& headers, const char* body,
          std::string& answer) noexcept;

} // namespace Zuvan::LumeqShim
