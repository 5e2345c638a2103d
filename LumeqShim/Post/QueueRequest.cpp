#include "LumeqShim/Post/QueueRequest.h"

#include "Common/Text.h"
#include "Common/Utf.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace Zuvan::LumeqShim {

namespace {

/// The runtime's character tests are defined for single bytes only.
bool IsByte(wchar_t unit) { return unit <= 0xFF; }

bool StaysInPath(wchar_t unit) {
    constexpr std::wstring_view Unreserved = L"-._~";
    return Unreserved.find(unit) != Unreserved.npos ||
           (IsByte(unit) && std::isalnum(static_cast<int>(unit)) != 0);
}

} // namespace

std::wstring HostFromUrl(const std::wstring& serverUrl) {
    const std::size_t slash = serverUrl.rfind(L'/');
    return slash == std::wstring::npos ? serverUrl : serverUrl.substr(slash + 1);
}

bool IsPrintable(wchar_t unit) {
    // In any locale but "C" the runtime considers a tab printable, but a message must not contain one.
    return IsByte(unit) && unit != L'\t' && std::isprint(static_cast<int>(unit)) != 0;
}

void ScrubMessage(std::wstring& message, const std::function<void(std::size_t index)>& report) {
    for (std::size_t i = 0; i < message.size(); ++i) {
        if (IsPrintable(message[i]))
            continue;
        report(i);
        message[i] = L' ';
    }
}

std::wstring EncodePathPart(const std::wstring& part) {
    constexpr wchar_t Digits[] = L"0123456789abcdef";
    std::wstring encoded;
    for (const wchar_t unit : part) {
        if (StaysInPath(unit))
            encoded += unit;
        else
            encoded += {L'%', Digits[unit >> 4 & 0xF], Digits[unit & 0xF]};
    }
    return encoded;
}

std::wstring RequestPath(const std::wstring& projectId, const std::wstring& queueName) {
    return L"/projects/" + EncodePathPart(projectId) + L"/queues/" + EncodePathPart(queueName) + L"/messages";
}

std::string EncodeMessage(const std::wstring& message) {
    return "=?media_type:application/json.b64?=" +
           Lumeq::Common::ToUtf8(Lumeq::Common::Base64EncodeUtf8(message));
}

std::string RequestBody(const std::string& encodedMessage) {
    return R"({"messages":[{"body":")" + encodedMessage + R"("}]})";
}

std::wstring RequestHeaders(const std::wstring& token, const std::wstring& userAgent,
                            std::size_t bodyLength) {
    return L"Content-Type: application/json\r\n"
           L"Accept: application/json\r\n"
           L"Authorization: Bearer " +
           token + L"\r\nUser-Agent:" + userAgent + L"\r\nContent-Length:" +
           Lumeq::Common::DecimalText(bodyLength) + L"\r\n";
}

std::wstring OnOneLine(std::wstring headers) {
    std::replace_if(
        headers.begin(), headers.end(),
        [](wchar_t unit) { return (unit & 0xFF) == L'\n' || (unit & 0xFF) == L'\r'; }, L' ');
    return headers;
}

} // namespace Zuvan::LumeqShim
