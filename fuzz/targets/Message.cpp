// The basic road's message from its fields to the request: JSON text, scrubbing, envelope, path, headers.
#include "LumeqShim/Basic/BasicMessage.h"
#include "LumeqShim/Post/QueueRequest.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/Json.h"
#include "fuzz/support/PlainBase64.h"
#include "fuzz/support/Require.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

using namespace Zuvan::LumeqShim;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

bool IsAscii(wchar_t unit) { return unit >= 0x20 && unit <= 0x7E; }

std::string Scrubbed(const std::wstring& text) {
    std::string scrubbed;
    for (const wchar_t unit : text)
        scrubbed += IsAscii(unit) ? static_cast<char>(unit) : ' ';
    return scrubbed;
}

std::string ScrubAndCheck(const std::wstring& message) {
    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < message.size(); ++i)
        if (!IsAscii(message[i]))
            expected.push_back(i);
    std::vector<std::size_t> reported;
    std::wstring scrubbed = message;
    ScrubMessage(scrubbed, [&](std::size_t index) {
        Require(scrubbed[index] == message[index], "a unit is reported before it is replaced");
        reported.push_back(index);
    });
    Require(reported == expected, "each unprintable unit is reported once and in order");
    const std::string text = Scrubbed(message);
    Require(scrubbed == std::wstring(text.begin(), text.end()), "only unprintable units are replaced");
    return text;
}

void CheckJson(const std::string& text, const MessageDictionary& fields) {
    JsonFields expected;
    for (const auto& [key, value] : fields)
        expected.emplace_back(Scrubbed(key), Scrubbed(value));
    std::sort(expected.begin(), expected.end());
    Require(FieldsOfFlatObject(text) == expected,
            "the message is one flat JSON object of its scrubbed fields");
}

std::string CheckBody(const std::string& text) {
    constexpr std::string_view Prefix = "=?media_type:application/json.b64?=";
    const std::string body = RequestBody(EncodeMessage(std::wstring(text.begin(), text.end())));
    const std::optional<std::string> payload = BodyOfOnlyMessage(body);
    Require(payload && payload->starts_with(Prefix),
            "the envelope contains one message that names its encoding");
    const auto decoded = PlainBase64Decoded(std::wstring(payload->begin() + Prefix.size(), payload->end()));
    Require(decoded && std::string(decoded->begin(), decoded->end()) == text, "the payload is the message");
    return body;
}

std::wstring PlainlyEncoded(const std::wstring& part) {
    std::wstring encoded;
    for (const wchar_t unit : part) {
        const bool stays = (unit >= L'a' && unit <= L'z') || (unit >= L'A' && unit <= L'Z') ||
                           (unit >= L'0' && unit <= L'9') || unit == L'-' || unit == L'.' || unit == L'_' ||
                           unit == L'~';
        char digits[4] = {};
        std::snprintf(digits, sizeof digits, "%%%02x", static_cast<unsigned>(unit) & 0xFF);
        encoded += stays ? std::wstring(1, unit) : std::wstring(digits, digits + 3);
    }
    return encoded;
}

void CheckHeaders(const std::wstring& token, const std::wstring& agent, std::size_t length) {
    const std::wstring headers = RequestHeaders(token, agent, length);
    Require(headers ==
                L"Content-Type: application/json\r\nAccept: application/json\r\nAuthorization: Bearer " +
                    token + L"\r\nUser-Agent:" + agent + L"\r\nContent-Length:" + std::to_wstring(length) +
                    L"\r\n",
            "the headers have the required form");
    const std::wstring shown = OnOneLine(headers);
    for (std::size_t i = 0; i < headers.size(); ++i) {
        const bool isBreak = headers[i] % 256 == 10 || headers[i] % 256 == 13;
        Require(shown[i] == (isBreak ? L' ' : headers[i]), "the log's copy of the headers has no line ends");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::wstring project = input.Line();
    const std::wstring queue = input.Line();
    Require(RequestPath(project, queue) ==
                L"/projects/" + PlainlyEncoded(project) + L"/queues/" + PlainlyEncoded(queue) + L"/messages",
            "the path is encoded unit by unit");

    const std::wstring url = input.Line();
    const std::wstring host = HostFromUrl(url);
    Require(url.ends_with(host) && host.find(L'/') == host.npos &&
                (host == url || url[url.size() - host.size() - 1] == L'/'),
            "the host is what follows the last slash");

    const std::wstring token = input.Line();
    const std::wstring agent = input.Line();
    MessageDictionary fields;
    while (!input.IsAtEnd()) {
        const std::wstring key = input.Line();
        fields[key] = input.Line();
    }
    const std::string text = ScrubAndCheck(SerializeFlatJson(fields));
    CheckJson(text, fields);
    CheckHeaders(token, agent, CheckBody(text).size());
    return 0;
}
