// One message in the form that the queue service expects. Pure functions, except that IsPrintable and
// EncodePathPart depend on the runtime's locale.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace Zuvan::LumeqShim {

/// Everything after the last "/". This removes a scheme and keeps a port; a URL that ends in "/" has no host.
std::wstring HostFromUrl(const std::wstring& serverUrl);

/// Whether the runtime can print the code unit; false for a tab and for all above 0xFF.
bool IsPrintable(wchar_t unit);

/// Replaces each code unit that cannot be printed by a space. Calls `report` with its index first, while
/// `message` still contains the unit and everything after it.
void ScrubMessage(std::wstring& message, const std::function<void(std::size_t index)>& report);

/// Turns anything but letters, digits and "-._~" into "%" and two lower-case digits for the low 8 bits. Drops
/// the high 8 bits, without a UTF-8 step, because the service knows its ASCII identifiers only in this form.
std::wstring EncodePathPart(const std::wstring& part);

std::wstring RequestPath(const std::wstring& projectId, const std::wstring& queueName);

/// The message's UTF-8 bytes in Base64, after the prefix that announces this. Throws std::range_error for an
/// unpaired surrogate.
std::string EncodeMessage(const std::wstring& message);

/// The envelope around an encoded message, which needs no escaping.
std::string RequestBody(const std::string& encodedMessage);

/// All additional headers, each with its line end.
std::wstring RequestHeaders(const std::wstring& token, const std::wstring& userAgent, std::size_t bodyLength);

/// Replaces every character whose low byte is a line feed or a carriage return by a space.
std::wstring OnOneLine(std::wstring headers);

} // namespace Zuvan::LumeqShim
