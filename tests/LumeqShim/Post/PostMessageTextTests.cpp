// The message's text on its way: what is replaced, in any locale of the host, and that nothing is cut off.
#include "PostMessageTest.h"

#include "support/RuntimeLocale.h"

#include <cstring>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::ImportedFunction;
using Lumeq::Testing::LoggedLine;
using Lumeq::Testing::LogLines;
using Lumeq::Testing::RuntimeLocale;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the client receives for sending.
struct SentRequest {
    static inline std::wstring headers;
    static inline std::string body;

    static BOOL WINAPI Send(HINTERNET, LPCWSTR theHeaders, DWORD length, LPVOID theBody, DWORD size) {
        headers.assign(theHeaders, length);
        body.assign(static_cast<const char*>(theBody), size);
        SetLastError(ERROR_INTERNET_CANNOT_CONNECT);
        return FALSE;
    }
};

/// An answer that consists of a letter and the byte.
template <unsigned char Byte>
BOOL WINAPI ReadTwoBytes(HINTERNET, LPVOID buffer, DWORD, LPDWORD count) {
    constexpr unsigned char answer[] = {'a', Byte};
    std::memcpy(buffer, answer, sizeof answer);
    *count = sizeof answer;
    return TRUE;
}

} // namespace

TEST_F(PostMessageTest, LineFeedBetweenTwoLettersIsSentAsASpace) {
    _message = L"a\nb";
    const std::vector<LoggedLine> lines = Post();
    EXPECT_THAT(LogLines(_machine.LogFile(), "ERROR"),
                ElementsAre(Line("ERROR", "Message has illegal character at 1 with value 10, see=a\\nb")));
    EXPECT_EQ(lines[1].severity, "ERROR") << "before all that is logged of the message";
    EXPECT_EQ(lines[2], Line("TRACE", "Message=a b"));
    EXPECT_EQ(lines[3], Line("DEBUG", "Encoded Message==?media_type:application/json.b64?=YSBi"));
    EXPECT_EQ(lines[5], Line("DATA", "->/projects/P%201/queues/sys_info_base/messages a b"));
}

TEST_F(PostMessageTest, EveryBadCharacterHasItsLineAndBecomesASpace) {
    _message = L"a\nb\u20ac";
    const std::vector<LoggedLine> lines = Post();
    EXPECT_EQ(lines[1],
              Line("ERROR", "Message has illegal character at 1 with value 10, see=a\\nb\xE2\x82\xAC"));
    EXPECT_EQ(lines[2],
              Line("ERROR", "Message has illegal character at 3 with value 8364, see=a b\xE2\x82\xAC"));
    EXPECT_EQ(lines[3], Line("TRACE", "Message=a b "));
    EXPECT_EQ(lines[4], Line("DEBUG", "Encoded Message==?media_type:application/json.b64?=YSBiIA=="));
    EXPECT_EQ(_message, L"a b ") << "the caller's text stays scrubbed";
}

TEST_F(PostMessageTest, PrintableMessageIsLeftAlone) {
    _message = L" !\"#$%&'()*+,-./09:;<=>?@AZ[\\]^_`az{|}~";
    const std::wstring before = _message;
    Post();
    EXPECT_EQ(_message, before);
    EXPECT_THAT(LogLines(_machine.LogFile(), "ERROR"), IsEmpty());
}

TEST_F(PostMessageTest, EmptyMessageIsSent) {
    _message.clear();
    const std::vector<LoggedLine> lines = Post();
    EXPECT_EQ(lines[1], Line("TRACE", "Message="));
    EXPECT_EQ(lines[2], Line("DEBUG", "Encoded Message==?media_type:application/json.b64?="));
}

class PostInHostLocale : public PostMessageTest, public testing::WithParamInterface<const char*> {};

TEST_P(PostInHostLocale, LogsTheSameLinesOfAnAsciiMessage) {
    const RuntimeLocale locale(GetParam());
    EXPECT_THAT(Post(), LinesOfRefusal(NoHeaders(), Duration()));
}

TEST_P(PostInHostLocale, SendsTheSameBytesOfAnAsciiMessage) {
    const RuntimeLocale locale(GetParam());
    const ImportedFunction<BOOL WINAPI(HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD)> watched(
        "wininet.dll", "HttpSendRequestW", &SentRequest::Send);
    Post();
    EXPECT_EQ(SentRequest::headers, L"Content-Type: application/json\r\nAccept: application/json\r\n"
                                    L"Authorization: Bearer tok\r\nUser-Agent:my scan/1.2.3.4\r\n"
                                    L"Content-Length:73\r\n");
    EXPECT_EQ(SentRequest::body,
              R"({"messages":[{"body":"=?media_type:application/json.b64?=eyJhIjoiYiJ9"}]})");
}

INSTANTIATE_TEST_SUITE_P(All, PostInHostLocale, testing::ValuesIn(Lumeq::Testing::HostLocales),
                         [](const auto& info) { return std::string(info.param); });

TEST_F(PostMessageTest, LettersOfTheHostsLocaleAreSentAndNothingAbove255) {
    const RuntimeLocale german("German");
    _message = L"\u00e9\u20ac\u0141\x81";
    const std::vector<LoggedLine> lines = Post();
    EXPECT_EQ(lines[1], Line("ERROR", "Message has illegal character at 1 with value 8364, "
                                      "see=\xC3\xA9\xE2\x82\xAC\xC5\x81\xC2\x81"));
    EXPECT_EQ(lines[2], Line("ERROR", "Message has illegal character at 2 with value 321, "
                                      "see=\xC3\xA9 \xC5\x81\xC2\x81"));
    EXPECT_EQ(lines[3], Line("ERROR", "Message has illegal character at 3 with value 129, "
                                      "see=\xC3\xA9  \xC2\x81"));
    EXPECT_EQ(lines[4], Line("TRACE", "Message=\xC3\xA9   "));
    EXPECT_EQ(lines[5], Line("DEBUG", "Encoded Message==?media_type:application/json.b64?=w6kgICA="))
        << "UTF-8 whatever the locale";
}

TEST_F(PostMessageTest, TabsAndLineBreaksBecomeSpacesInTheHostsLocaleToo) {
    const RuntimeLocale german("German");
    _message = L"a\tb\n";
    const std::vector<LoggedLine> lines = Post();
    EXPECT_EQ(lines[1], Line("ERROR", "Message has illegal character at 1 with value 9, see=a\tb\\n"));
    EXPECT_EQ(lines[2], Line("ERROR", "Message has illegal character at 3 with value 10, see=a b\\n"));
    EXPECT_EQ(lines[3], Line("TRACE", "Message=a b "));
}

TEST_F(PostMessageTest, UnpairedSurrogateBecomesTwoSpacesAtMost) {
    _message = L"a\xd800"
               L"b\xd83d\xde00";
    const std::vector<LoggedLine> lines = Post();
    EXPECT_EQ(_message, L"a b  ");
    EXPECT_THAT(LogLines(_machine.LogFile(), "ERROR"), testing::SizeIs(3));
    EXPECT_EQ(lines.back(), Line("DATA", "<- ")) << "sent as any other";
}

TEST_F(PostMessageTest, AnswerIsReadInTheHostsLocale) {
    const RuntimeLocale german("German");
    const ImportedFunction<ReadAnswer> answering("wininet.dll", "InternetReadFile", &ReadTwoBytes<0x80>);
    EXPECT_EQ(Post().back(), Line("DATA", "<- a\xE2\x82\xAC"));
}

TEST_F(PostMessageTest, AnswerThatEndsWithinACharacterOfTheHostsLocaleIsLogged) {
    const RuntimeLocale japanese("Japanese");
    const ImportedFunction<ReadAnswer> answering("wininet.dll", "InternetReadFile", &ReadTwoBytes<0x82>);
    const LoggedLine last = Post().back();
    EXPECT_EQ(last.severity, "DATA");
    EXPECT_THAT(last.message, testing::StartsWith("<- a"));
}

TEST_F(PostMessageTest, MessageOfTwentyThousandCharactersIsSentWhole) {
    const ImportedFunction<BOOL WINAPI(HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD)> watched(
        "wininet.dll", "HttpSendRequestW", &SentRequest::Send);
    _message.assign(20'000, L'a');
    Post();
    std::string encoded;
    for (int i = 0; i < 6'666; ++i)
        encoded += "YWFh";
    EXPECT_EQ(SentRequest::body,
              R"({"messages":[{"body":"=?media_type:application/json.b64?=)" + encoded + R"(YWE="}]})");
    EXPECT_THAT(SentRequest::headers, testing::EndsWith(L"Content-Length:26729\r\n"));
}

} // namespace Zuvan::LumeqShim
