// A post to an address at which nothing listens, and its lines in the log.
#pragma once

#include "LumeqShim/Post/PostMessage.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <windows.h>

#include <algorithm>
#include <gmock/gmock.h>
#include <string>
#include <vector>
#include <wininet.h>

namespace Zuvan::LumeqShim {

/// Nothing listens at this address.
inline constexpr wchar_t RefusingUri[] = L"https://127.0.0.99";

class PostMessageTest : public testing::Test {
protected:
    PostMessageTest() { _machine.WriteFactorySettings(); }

    /// The lines of the call, without the policy's own.
    std::vector<Lumeq::Testing::LoggedLine> Post(const std::wstring& serverUrl = RefusingUri) {
        PostMessageAndForget(serverUrl, L"my scan/1.2.3.4", L"P 1", L"sys_info_base", _message, L"tok");
        std::vector<Lumeq::Testing::LoggedLine> lines = Lumeq::Testing::LogLines(_machine.LogFile());
        const auto first =
            std::find_if(lines.begin(), lines.end(), [](const Lumeq::Testing::LoggedLine& line) {
                return line.message.starts_with("PostMessageAndForget(");
            });
        lines.erase(lines.begin(), first);
        return lines;
    }

    static auto Line(const char* severity, const char* message) {
        return Lumeq::Testing::LoggedLine{severity, "", message};
    }
    /// The client may report the end of the headers even if there are no headers.
    static auto NoHeaders() {
        return testing::AnyOf(Line("DEBUG", "Headers="), Line("DEBUG", "Headers=\\r\\n"));
    }
    static auto Duration() {
        return testing::Field(&Lumeq::Testing::LoggedLine::message,
                              testing::MatchesRegex("Post took \\d+ ms"));
    }

    Lumeq::Testing::IsolatedMachine _machine;
    std::wstring _message = L"{\"a\":\"b\"}";
};

inline constexpr char Called[] = "PostMessageAndForget(127.0.0.99, my scan/1.2.3.4, P 1, sys_info_base, tok)";
inline constexpr char CalledWithoutHost[] =
    "PostMessageAndForget(, my scan/1.2.3.4, P 1, sys_info_base, tok)";
inline constexpr char Message[] = "Message={\"a\":\"b\"}";
inline constexpr char Encoded[] = "Encoded Message==?media_type:application/json.b64?=eyJhIjoiYiJ9";
inline constexpr char About[] = "PostMessageAndForget about to post";
inline constexpr char Sending[] = "->/projects/P%201/queues/sys_info_base/messages {\"a\":\"b\"}";
inline constexpr char HttpPost[] =
    " ->HTTP POST: /projects/P%201/queues/sys_info_base/messages "
    "Content-Type: application/json  Accept: application/json  "
    "Authorization: Bearer tok  User-Agent:my scan/1.2.3.4  Content-Length:73  ";

/// All lines of a post to an address at which nothing listens.
inline auto LinesOfRefusal(const testing::Matcher<Lumeq::Testing::LoggedLine>& headers,
                           const testing::Matcher<Lumeq::Testing::LoggedLine>& duration) {
    const auto line = [](const char* severity, const char* message) {
        return Lumeq::Testing::LoggedLine{severity, "", message};
    };
    return testing::ElementsAre(line("DEBUG", Called), line("TRACE", Message), line("DEBUG", Encoded),
                                line("DEBUG", About), line("DATA", Sending), line("DATA", HttpPost),
                                line("WARNING", "HttpSendRequest failed 0x00002efd"),
                                line("WARNING", "HTTP FAILURE 0x00002efd"),
                                line("DATA", " <-HTTP RESULT= (0)"), headers, duration, line("DATA", "<- "));
}

using ReadAnswer = BOOL WINAPI(HINTERNET, LPVOID, DWORD, LPDWORD);

} // namespace Zuvan::LumeqShim
