#include "LumeqShim/Post/PostMessage.h"

#include "Common/ComScope.h"
#include "Common/ComSession.h"
#include "support/Apartment.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"
#include "support/RuntimeLocale.h"

#include <windows.h>

#include <cstring>
#include <gmock/gmock.h>
#include <stdexcept>
#include <urlmon.h>
#include <vector>
#include <wininet.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::ImportedFunction;
using Lumeq::Testing::LoggedLine;
using Lumeq::Testing::LogLines;
using Lumeq::Testing::RealFunction;
using Lumeq::Testing::RuntimeLocale;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::MatchesRegex;

/// Nothing listens at this address.
constexpr wchar_t RefusingUri[] = L"https://127.0.0.99";

class PostMessageTest : public testing::Test {
protected:
    PostMessageTest() { _machine.WriteFactorySettings(); }

    /// The lines of the call, without the policy's own.
    std::vector<LoggedLine> Post(const std::wstring& serverUrl = RefusingUri) {
        PostMessageAndForget(serverUrl, L"my scan/1.2.3.4", L"P 1", L"sys_info_base", _message, L"tok");
        std::vector<LoggedLine> lines = LogLines(_machine.LogFile());
        const auto first = std::find_if(lines.begin(), lines.end(), [](const LoggedLine& line) {
            return line.message.starts_with("PostMessageAndForget(");
        });
        lines.erase(lines.begin(), first);
        return lines;
    }

    static auto Line(const char* severity, const char* message) { return LoggedLine{severity, "", message}; }
    /// The client may report the end of the headers even if there are no headers.
    static auto NoHeaders() {
        return testing::AnyOf(Line("DEBUG", "Headers="), Line("DEBUG", "Headers=\\r\\n"));
    }
    static auto Duration() { return Field(&LoggedLine::message, MatchesRegex("Post took \\d+ ms")); }

    Lumeq::Testing::IsolatedMachine _machine;
    std::wstring _message = L"{\"a\":\"b\"}";
};

constexpr char Called[] = "PostMessageAndForget(127.0.0.99, my scan/1.2.3.4, P 1, sys_info_base, tok)";
constexpr char CalledWithoutHost[] = "PostMessageAndForget(, my scan/1.2.3.4, P 1, sys_info_base, tok)";
constexpr char Message[] = "Message={\"a\":\"b\"}";
constexpr char Encoded[] = "Encoded Message==?media_type:application/json.b64?=eyJhIjoiYiJ9";
constexpr char About[] = "PostMessageAndForget about to post";
constexpr char Sending[] = "->/projects/P%201/queues/sys_info_base/messages {\"a\":\"b\"}";
constexpr char HttpPost[] = " ->HTTP POST: /projects/P%201/queues/sys_info_base/messages "
                            "Content-Type: application/json  Accept: application/json  "
                            "Authorization: Bearer tok  User-Agent:my scan/1.2.3.4  Content-Length:73  ";

/// All lines of a post to an address at which nothing listens.
auto LinesOfRefusal(const testing::Matcher<LoggedLine>& headers,
                    const testing::Matcher<LoggedLine>& duration) {
    const auto line = [](const char* severity, const char* message) {
        return LoggedLine{severity, "", message};
    };
    return ElementsAre(line("DEBUG", Called), line("TRACE", Message), line("DEBUG", Encoded),
                       line("DEBUG", About), line("DATA", Sending), line("DATA", HttpPost),
                       line("WARNING", "HttpSendRequest failed 0x00002efd"),
                       line("WARNING", "HTTP FAILURE 0x00002efd"), line("DATA", " <-HTTP RESULT= (0)"),
                       headers, duration, line("DATA", "<- "));
}

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

using ReadAnswer = BOOL WINAPI(HINTERNET, LPVOID, DWORD, LPDWORD);

/// An answer that consists of a letter and the byte.
template <unsigned char Byte>
BOOL WINAPI ReadTwoBytes(HINTERNET, LPVOID buffer, DWORD, LPDWORD count) {
    constexpr unsigned char answer[] = {'a', Byte};
    std::memcpy(buffer, answer, sizeof answer);
    *count = sizeof answer;
    return TRUE;
}

struct CreatedThread {
    static inline HANDLE handle = nullptr;
    static inline DWORD id = 0;

    static HANDLE WINAPI Create(SECURITY_ATTRIBUTES* security, SIZE_T stackSize, LPTHREAD_START_ROUTINE start,
                                void* argument, DWORD flags, DWORD* noId) {
        static const auto create = RealFunction<decltype(CreateThread)>("kernel32.dll", "CreateThread");
        EXPECT_EQ(security, nullptr);
        EXPECT_EQ(stackSize, 0u);
        EXPECT_EQ(flags, 0u);
        EXPECT_EQ(noId, nullptr);
        handle = create(security, stackSize, start, argument, flags, &id);
        return handle;
    }
    static bool IsOpen() { return GetThreadId(handle) == id; }
};

} // namespace

TEST_F(PostMessageTest, RefusedConnectionIsLoggedAndTheAnswerIsEmpty) {
    EXPECT_THAT(Post(), LinesOfRefusal(NoHeaders(), Duration()));
}

TEST_F(PostMessageTest, EncodedMessageAndAnswerEndInTwoZeros) {
    const Lumeq::Testing::PrintedNarrowTexts printed;
    EXPECT_THAT(Post(), LinesOfRefusal(NoHeaders(), Duration()));
    EXPECT_EQ(printed.Guarded(), 2);
    EXPECT_EQ(printed.Bare(), 0);
}

TEST_F(PostMessageTest, UrlWithASlashAtItsEndFailsAtTheConnection) {
    EXPECT_THAT(Post(L"https://127.0.0.99/"),
                ElementsAre(Line("DEBUG", CalledWithoutHost), Line("TRACE", Message), Line("DEBUG", Encoded),
                            Line("DEBUG", About), Line("DATA", Sending),
                            Line("WARNING", "InternetConnectW failed 0x00000000"), Duration(),
                            Line("DATA", "<- Worker thread failed!")));
}

TEST_F(PostMessageTest, FailedSessionIsLogged) {
    const ImportedFunction<HINTERNET WINAPI(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD)> failing(
        "wininet.dll", "InternetOpenA", [](LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD) -> HINTERNET {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return nullptr;
        });
    EXPECT_THAT(Post(), ElementsAre(Line("DEBUG", Called), Line("TRACE", Message), Line("DEBUG", Encoded),
                                    Line("DEBUG", About), Line("DATA", Sending),
                                    Line("WARNING", "InternetOpenA failed 0x00000000"), Duration(),
                                    Line("DATA", "<- Worker thread failed!")));
}

TEST_F(PostMessageTest, FailedRequestIsLogged) {
    const ImportedFunction<HINTERNET WINAPI(HINTERNET, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR*, DWORD,
                                            DWORD_PTR)>
        failing("wininet.dll", "HttpOpenRequestW",
                [](HINTERNET, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR*, DWORD, DWORD_PTR) -> HINTERNET {
                    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
                    return nullptr;
                });
    EXPECT_THAT(Post(), ElementsAre(Line("DEBUG", Called), Line("TRACE", Message), Line("DEBUG", Encoded),
                                    Line("DEBUG", About), Line("DATA", Sending),
                                    Line("WARNING", "HttpOpenRequest failed 0x00000000"), Duration(),
                                    Line("DATA", "<- Worker thread failed!")));
}

TEST_F(PostMessageTest, AnythingThrownOnTheWayIsSwallowed) {
    const ImportedFunction<BOOL WINAPI(HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD)> throwing(
        "wininet.dll", "HttpSendRequestW",
        [](HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD) -> BOOL { throw std::runtime_error("out of order"); });
    const ImportedFunction<decltype(CreateThread)> watched("kernel32.dll", "CreateThread",
                                                           &CreatedThread::Create);
    EXPECT_THAT(Post(), ElementsAre(Line("DEBUG", Called), Line("TRACE", Message), Line("DEBUG", Encoded),
                                    Line("DEBUG", About), Line("DATA", Sending), Line("DATA", HttpPost),
                                    Duration(), Line("DATA", "<- Worker thread failed!")));
    EXPECT_FALSE(CreatedThread::IsOpen()) << "the worker ended with 0";
}

TEST_F(PostMessageTest, WithoutAThreadThereIsNoLineAndNoMessage) {
    const ImportedFunction<decltype(CreateThread)> failing(
        "kernel32.dll", "CreateThread",
        [](SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) -> HANDLE {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return nullptr;
        });
    EXPECT_THAT(Post(), ElementsAre(Line("DEBUG", Called), Line("TRACE", Message), Line("DEBUG", Encoded),
                                    Line("DEBUG", About), Line("DATA", Sending)));
}

TEST_F(PostMessageTest, WithoutAHoldOnItsCodeThereIsNoThreadAndNoMessage) {
    const ImportedFunction<decltype(GetModuleHandleExW)> failing(
        "kernel32.dll", "GetModuleHandleExW", [](DWORD, LPCWSTR, HMODULE*) -> BOOL { return FALSE; });
    static int threads = 0;
    const ImportedFunction<decltype(CreateThread)> watched(
        "kernel32.dll", "CreateThread",
        [](SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) -> HANDLE {
            ++threads;
            return nullptr;
        });
    EXPECT_THAT(Post(), ElementsAre(Line("DEBUG", Called), Line("TRACE", Message), Line("DEBUG", Encoded),
                                    Line("DEBUG", About), Line("DATA", Sending)));
    EXPECT_EQ(threads, 0);
}

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

TEST_F(PostMessageTest, ClientIsOpenedUnderTheSystemsOwnAgent) {
    static std::string agent;
    static DWORD accessType = 99;
    const ImportedFunction<HINTERNET WINAPI(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD)> watched(
        "wininet.dll", "InternetOpenA",
        [](LPCSTR theAgent, DWORD theAccessType, LPCSTR proxy, LPCSTR bypass, DWORD flags) -> HINTERNET {
            agent = theAgent;
            accessType = theAccessType;
            EXPECT_EQ(proxy, nullptr);
            EXPECT_EQ(bypass, nullptr);
            EXPECT_EQ(flags, 0u);
            return nullptr;
        });
    Post();
    char expected[4096] = {};
    DWORD size = sizeof expected;
    ASSERT_EQ(ObtainUserAgentString(0, expected, &size), S_OK);
    EXPECT_EQ(agent, expected);
    EXPECT_EQ(accessType, 0u);
}

TEST_F(PostMessageTest, RequestIsAPostOfVersion11WithItsFlags) {
    static std::wstring asked;
    static DWORD askedFlags = 0;
    const ImportedFunction<HINTERNET WINAPI(HINTERNET, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR*, DWORD,
                                            DWORD_PTR)>
        watched("wininet.dll", "HttpOpenRequestW",
                [](HINTERNET, LPCWSTR verb, LPCWSTR path, LPCWSTR version, LPCWSTR referrer,
                   LPCWSTR* accepted, DWORD flags, DWORD_PTR) -> HINTERNET {
                    asked = std::wstring(verb) + L" " + path + L" " + version;
                    askedFlags = flags;
                    EXPECT_EQ(referrer, nullptr);
                    EXPECT_EQ(accepted, nullptr);
                    return nullptr;
                });
    Post();
    EXPECT_EQ(asked, L"POST /projects/P%201/queues/sys_info_base/messages HTTP/1.1");
    EXPECT_EQ(askedFlags, 0x8484F700u);
}

TEST_F(PostMessageTest, ConnectionGoesToPort443) {
    static std::wstring asked;
    const ImportedFunction<HINTERNET WINAPI(HINTERNET, LPCWSTR, INTERNET_PORT, LPCWSTR, LPCWSTR, DWORD, DWORD,
                                            DWORD_PTR)>
        watched("wininet.dll", "InternetConnectW",
                [](HINTERNET, LPCWSTR server, INTERNET_PORT port, LPCWSTR user, LPCWSTR password,
                   DWORD service, DWORD flags, DWORD_PTR context) -> HINTERNET {
                    asked = std::wstring(server) + L" " + std::to_wstring(port) + L" " +
                            std::to_wstring(service) + L" " + std::to_wstring(flags + context);
                    EXPECT_EQ(user, nullptr);
                    EXPECT_EQ(password, nullptr);
                    return nullptr;
                });
    Post(L"http://queue.example:8443");
    EXPECT_EQ(asked, L"queue.example:8443 443 3 0");
}

TEST_F(PostMessageTest, AnswerIsReadOnceAndUpToItsFirstZero) {
    static std::vector<DWORD> asked;
    const ImportedFunction<ReadAnswer> answering(
        "wininet.dll", "InternetReadFile", [](HINTERNET, LPVOID buffer, DWORD size, LPDWORD count) -> BOOL {
            asked.push_back(size);
            std::memcpy(buffer, "gr\xC3\xBC\xC3\x9F\0rest", 11);
            *count = 11;
            return TRUE;
        });
    EXPECT_EQ(Post().back(), Line("DATA", "<- gr\xC3\x83\xC2\xBC\xC3\x83\xC2\x9F"))
        << "byte by byte, as the C locale widens it";
    EXPECT_THAT(asked, ElementsAre(4095u));
}

TEST_F(PostMessageTest, HandleOfAWorkerThatEndedIsClosed) {
    const ImportedFunction<decltype(CreateThread)> watched("kernel32.dll", "CreateThread",
                                                           &CreatedThread::Create);
    Post();
    EXPECT_FALSE(CreatedThread::IsOpen());
}

TEST_F(PostMessageTest, HandleStaysOpenUnlessTheExitCodeIsZero) {
    const ImportedFunction<decltype(CreateThread)> watched("kernel32.dll", "CreateThread",
                                                           &CreatedThread::Create);
    const ImportedFunction<decltype(GetExitCodeThread)> other("kernel32.dll", "GetExitCodeThread",
                                                              [](HANDLE, DWORD* exitCode) -> BOOL {
                                                                  *exitCode = 7;
                                                                  return TRUE;
                                                              });
    Post();
    EXPECT_TRUE(CreatedThread::IsOpen());
}

TEST_F(PostMessageTest, WaitIsThreeSecondsAndTheHandleStaysOpen) {
    static DWORD asked = 0;
    const ImportedFunction<decltype(CreateThread)> watched("kernel32.dll", "CreateThread",
                                                           &CreatedThread::Create);
    const ImportedFunction<decltype(WaitForSingleObject)> timedOut(
        "kernel32.dll", "WaitForSingleObject", [](HANDLE object, DWORD milliseconds) -> DWORD {
            if (object != CreatedThread::handle)
                return WaitForSingleObjectEx(object, milliseconds, FALSE);
            asked = milliseconds;
            return WAIT_TIMEOUT;
        });
    Post();
    EXPECT_EQ(asked, 3000u);
    EXPECT_TRUE(CreatedThread::IsOpen());
    EXPECT_EQ(WaitForSingleObjectEx(CreatedThread::handle, 10000, FALSE), WAIT_OBJECT_0)
        << "the worker goes on to its end";
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

TEST_F(PostMessageTest, HandleStaysOpenIfTheExitCodeIsUnknown) {
    const ImportedFunction<decltype(CreateThread)> watched("kernel32.dll", "CreateThread",
                                                           &CreatedThread::Create);
    const ImportedFunction<decltype(GetExitCodeThread)> failing("kernel32.dll", "GetExitCodeThread",
                                                                [](HANDLE, DWORD* exitCode) -> BOOL {
                                                                    *exitCode = 0;
                                                                    return FALSE;
                                                                });
    Post();
    EXPECT_TRUE(CreatedThread::IsOpen());
}

TEST_F(PostMessageTest, AnswerThatCannotBeReadIsEmpty) {
    const ImportedFunction<BOOL WINAPI(HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD)> sent(
        "wininet.dll", "HttpSendRequestW",
        [](HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD) -> BOOL { return TRUE; });
    const ImportedFunction<BOOL WINAPI(HINTERNET, DWORD, LPVOID, LPDWORD, LPDWORD)> untold(
        "wininet.dll", "HttpQueryInfoW",
        [](HINTERNET, DWORD, LPVOID, LPDWORD, LPDWORD) -> BOOL { return FALSE; });
    const ImportedFunction<BOOL WINAPI(HINTERNET, LPVOID, DWORD, LPDWORD)> failing(
        "wininet.dll", "InternetReadFile", [](HINTERNET, LPVOID, DWORD, LPDWORD) -> BOOL { return FALSE; });
    EXPECT_THAT(Post(),
                ElementsAre(Line("DEBUG", Called), Line("TRACE", Message), Line("DEBUG", Encoded),
                            Line("DEBUG", About), Line("DATA", Sending), Line("DATA", HttpPost),
                            Line("DEBUG", "HttpSendRequest sent"), Line("DATA", " <-HTTP RESULT= (0)"),
                            Line("DEBUG", "Headers="), Duration(), Line("DATA", "<- ")));
}

TEST_F(PostMessageTest, WaitsInNoApartmentOfASession) {
    using Lumeq::Testing::ApartmentOfThread;
    static HRESULT apartmentAtWait = E_FAIL;
    static const DWORD caller = GetCurrentThreadId();
    const Lumeq::Common::ComSession session;
    {
        const ImportedFunction<decltype(WaitForSingleObject)> waiting(
            "kernel32.dll", "WaitForSingleObject", [](HANDLE object, DWORD milliseconds) {
                if (GetCurrentThreadId() == caller && milliseconds == 3000)
                    apartmentAtWait = ApartmentOfThread();
                return RealFunction<decltype(WaitForSingleObject)>("kernel32.dll", "WaitForSingleObject")(
                    object, milliseconds);
            });
        Lumeq::Common::ComScope(L"operation before it");
        ASSERT_EQ(ApartmentOfThread(), S_OK);
        Post();
    }
    EXPECT_EQ(apartmentAtWait, Lumeq::Testing::NotInitialized);
}

} // namespace Zuvan::LumeqShim
