// One message as the queue service takes it. Pure functions, but for the runtime's locale in IsPrintable and
// EncodePathPart.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace Zuvan::LumeqShim {

/// What follows the last "/". So a scheme is cut away, a port stays, and a URL that ends in "/" gives no
/// host.
std::wstring HostFromUrl(const std::wstring& serverUrl);

/// Whether the runtime can print the code unit; false for a tab and for any above 0xFF.
bool IsPrintable(wchar_t unit);

/// Puts a blank in the place of each code unit that cannot be printed. `report` is called with the index of
/// each before that, while `message` still holds the unit and what follows it.
void ScrubMessage(std::wstring& message, const std::function<void(std::size_t index)>& report);

/// Anything but letters, digits and "-._~" becomes "%" and the two lower-case digits of its low 8 bits. The
/// high 8 bits are dropped and there is no UTF-8 step: the service knows its ASCII identifiers in this form
/// only.
std::wstring EncodePathPart(const std::wstring& part);

std::wstring RequestPath(const std::wstring& projectId, const std::wstring& queueName);

/// The message's UTF-8 bytes in Base64 behind the prefix that tells so. Throws std::range_error for an
/// unpaired surrogate.
std::string EncodeMessage(const std::wstring& message);

/// The envelope around an encoded message, which needs no escaping.
std::string RequestBody(const std::string& encodedMessage);

/// All additional headers, each with its line end.
std::wstring RequestHeaders(const std::wstring& token, const std::wstring& userAgent, std::size_t bodyLength);

/// A blank in the place of every character whose low byte is a line feed or a carriage return.
std::wstring OnOneLine(std::wstring headers);

} // namespace Zuvan::LumeqShim
