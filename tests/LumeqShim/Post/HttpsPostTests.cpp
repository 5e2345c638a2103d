#include "LumeqShim/Post/HttpsPost.h"

#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <urlmon.h>
#include <utility>
#include <vector>
#include <wininet.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::ImportedFunction;
using testing::ElementsAre;
using testing::Pair;

/// Nothing listens at this address.
constexpr wchar_t Refusing[] = L"127.0.0.99";

using SendRequest = BOOL WINAPI(HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD);

class HttpsPostTest : public testing::Test {
protected:
    std::string PostTo(const wchar_t* server, const char* body) {
        std::string answer = "before";
        Post(server, L"/path", L"A: b\r\n", body, answer);
        return answer;
    }

    Lumeq::Testing::IsolatedMachine _machine;
};

} // namespace

TEST_F(HttpsPostTest, NullBodyHasNoLength) {
    static DWORD sentSize = 99;
    static const void* sentBody = "";
    const ImportedFunction<SendRequest> watched(
        "wininet.dll", "HttpSendRequestW", [](HINTERNET, LPCWSTR, DWORD, LPVOID body, DWORD size) -> BOOL {
            sentBody = body;
            sentSize = size;
            return FALSE;
        });
    PostTo(Refusing, nullptr);
    EXPECT_EQ(sentBody, nullptr);
    EXPECT_EQ(sentSize, 0u);
}

TEST_F(HttpsPostTest, BodyEndsAtItsTerminatorAndHeadersAreCountedInCharacters) {
    static DWORD sentSize = 99;
    static DWORD sentHeaders = 99;
    const ImportedFunction<SendRequest> watched(
        "wininet.dll", "HttpSendRequestW", [](HINTERNET, LPCWSTR, DWORD length, LPVOID, DWORD size) -> BOOL {
            sentHeaders = length;
            sentSize = size;
            return FALSE;
        });
    PostTo(Refusing, "abc\0def");
    EXPECT_EQ(sentHeaders, 6u);
    EXPECT_EQ(sentSize, 3u);
}

TEST_F(HttpsPostTest, AnswerStaysUnlessARequestWasMade) {
    EXPECT_EQ(PostTo(L"", "b"), "before");
    EXPECT_EQ(PostTo(Refusing, "b"), "");
}

TEST_F(HttpsPostTest, MissingAgentIsAnEmptyOne) {
    static std::string agent = "unset";
    const ImportedFunction<HRESULT WINAPI(DWORD, LPSTR, DWORD*)> failing(
        "urlmon.dll", "ObtainUserAgentString", [](DWORD option, LPSTR, DWORD* size) -> HRESULT {
            EXPECT_EQ(option, 0u);
            EXPECT_EQ(*size, 4096u);
            return E_OUTOFMEMORY;
        });
    const ImportedFunction<HINTERNET WINAPI(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD)> watched(
        "wininet.dll", "InternetOpenA", [](LPCSTR theAgent, DWORD, LPCSTR, LPCSTR, DWORD) -> HINTERNET {
            agent = theAgent;
            return nullptr;
        });
    PostTo(Refusing, "b");
    EXPECT_EQ(agent, "");
}

TEST_F(HttpsPostTest, StatusTextAndHeadersAreQueriedInThisOrderWithTheirSizes) {
    static std::vector<std::pair<DWORD, DWORD>> asked;
    const ImportedFunction<BOOL WINAPI(HINTERNET, DWORD, LPVOID, LPDWORD, LPDWORD)> watched(
        "wininet.dll", "HttpQueryInfoW",
        [](HINTERNET, DWORD level, LPVOID, LPDWORD size, LPDWORD index) -> BOOL {
            asked.emplace_back(level, *size);
            EXPECT_EQ(index, nullptr);
            return FALSE;
        });
    PostTo(Refusing, "b");
    EXPECT_THAT(asked, ElementsAre(Pair(0x20000013u, 4u), Pair(0x14u, 519u), Pair(0x16u, 8191u)));
}

TEST_F(HttpsPostTest, HandlesAreClosedFromRequestToSession) {
    static std::vector<DWORD> closed;
    const ImportedFunction<BOOL WINAPI(HINTERNET)> watched(
        "wininet.dll", "InternetCloseHandle", [](HINTERNET handle) -> BOOL {
            DWORD type = 0;
            DWORD size = sizeof type;
            InternetQueryOptionW(handle, INTERNET_OPTION_HANDLE_TYPE, &type, &size);
            closed.push_back(type);
            return Lumeq::Testing::RealFunction<BOOL WINAPI(HINTERNET)>("wininet.dll",
                                                                        "InternetCloseHandle")(handle);
        });
    PostTo(Refusing, "b");
    EXPECT_THAT(closed,
                ElementsAre(DWORD{INTERNET_HANDLE_TYPE_HTTP_REQUEST},
                            DWORD{INTERNET_HANDLE_TYPE_CONNECT_HTTP}, DWORD{INTERNET_HANDLE_TYPE_INTERNET}));
}

} // namespace Zuvan::LumeqShim
