#include "PostMessageTest.h"

#include "Common/ComScope.h"
#include "Common/ComSession.h"
#include "support/Apartment.h"
#include "support/PrintedNarrowTexts.h"

#include <cstring>
#include <stdexcept>
#include <urlmon.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::ImportedFunction;
using Lumeq::Testing::RealFunction;
using testing::ElementsAre;

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
