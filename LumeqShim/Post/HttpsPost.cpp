#include "LumeqShim/Post/HttpsPost.h"

#include "Common/Logger.h"
#include "Common/SystemHandles.h"
#include "LumeqShim/Post/QueueRequest.h"

#include <array>
#include <cstring>
#include <urlmon.h>
#include <wininet.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::SeverityLevel;
using Lumeq::Common::UniqueInternet;

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\PostMessage");

// A certificate with a wrong date or name is accepted; one from an untrusted root is not.
constexpr DWORD RequestFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_SECURE |
                               INTERNET_FLAG_NO_AUTH | INTERNET_FLAG_IGNORE_REDIRECT_TO_HTTP |
                               INTERNET_FLAG_IGNORE_REDIRECT_TO_HTTPS |
                               INTERNET_FLAG_IGNORE_CERT_DATE_INVALID | INTERNET_FLAG_IGNORE_CERT_CN_INVALID |
                               INTERNET_FLAG_HYPERLINK | INTERNET_FLAG_NO_UI | INTERNET_FLAG_PRAGMA_NOCACHE;
static_assert(RequestFlags == 0x8484F700);

/// Does not ask for the cause of the failure: readers of the log know these lines with a zero.
bool IsOpen(const UniqueInternet& handle, const wchar_t* line) {
    if (!handle)
        Log(SeverityLevel::WARNING, line, DWORD{0});
    return static_cast<bool>(handle);
}

UniqueInternet OpenSession() {
    std::array<char, 4096> agent{};
    DWORD size = static_cast<DWORD>(agent.size());
    // Not checked, because the text stays empty without an agent.
    static_cast<void>(ObtainUserAgentString(0, agent.data(), &size));
    return UniqueInternet(InternetOpenA(agent.data(), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
}

UniqueInternet Connect(const UniqueInternet& session, const std::wstring& server) {
    return UniqueInternet(InternetConnectW(session.Get(), server.c_str(), INTERNET_DEFAULT_HTTPS_PORT,
                                           nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0));
}

UniqueInternet OpenRequest(const UniqueInternet& connection, const std::wstring& path) {
    return UniqueInternet(HttpOpenRequestW(connection.Get(), L"POST", path.c_str(), L"HTTP/1.1", nullptr,
                                           nullptr, RequestFlags, 0));
}

void Send(const UniqueInternet& request, const std::wstring& headers, const char* body) {
    const auto bodyLength = static_cast<DWORD>(body ? std::strlen(body) : 0);
    // The client's parameter is not const, but it does not write to the body.
    if (HttpSendRequestW(request.Get(), headers.c_str(), static_cast<DWORD>(headers.size()),
                         const_cast<char*>(body), bodyLength)) {
        Log(SeverityLevel::DEBUG, L"HttpSendRequest sent");
        return;
    }
    const DWORD error = GetLastError();
    Log(SeverityLevel::WARNING, L"HttpSendRequest failed 0x%08lx", error);
    Log(SeverityLevel::WARNING, L"HTTP FAILURE 0x%08lx", error);
}

/// Reads the text into a cleared buffer of `Capacity` bytes, all but one of which may be used.
template <std::size_t Capacity>
std::wstring QueryText(const UniqueInternet& request, DWORD what) {
    std::array<wchar_t, Capacity / sizeof(wchar_t)> text{};
    DWORD size = Capacity - 1;
    HttpQueryInfoW(request.Get(), what, text.data(), &size, nullptr);
    text.back() = L'\0';
    return text.data();
}

void LogStatus(const UniqueInternet& request) {
    DWORD status = 0;
    DWORD size = sizeof status;
    HttpQueryInfoW(request.Get(), HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status, &size, nullptr);
    const std::wstring statusText = QueryText<520>(request, HTTP_QUERY_STATUS_TEXT);
    Log(SeverityLevel::DATA, L" <-HTTP RESULT=%s (%d)", statusText.c_str(), status);
    Log(SeverityLevel::DEBUG, L"Headers=%s", QueryText<8192>(request, HTTP_QUERY_RAW_HEADERS_CRLF).c_str());
}

std::string ReadAnswer(const UniqueInternet& request) {
    std::array<char, 4096> answer{};
    DWORD count = 0;
    InternetReadFile(request.Get(), answer.data(), static_cast<DWORD>(answer.size() - 1), &count);
    return answer.data();
}

void PostUnguarded(const std::wstring& server, const std::wstring& path, const std::wstring& headers,
                   const char* body, std::string& answer) {
    const Lumeq::Common::ScopedDurationLog duration(L"Post(%s, %s, %s)", server.c_str(), path.c_str(),
                                                    headers.c_str());
    const UniqueInternet session = OpenSession();
    if (!IsOpen(session, L"InternetOpenA failed 0x%08lx"))
        return;
    const UniqueInternet connection = Connect(session, server);
    if (!IsOpen(connection, L"InternetConnectW failed 0x%08lx"))
        return;
    const UniqueInternet request = OpenRequest(connection, path);
    if (!IsOpen(request, L"HttpOpenRequest failed 0x%08lx"))
        return;
    Log(SeverityLevel::DATA, L" ->HTTP POST: %s %s", path.c_str(), OnOneLine(headers).c_str());
    // A failed send does not end this: the log shows whatever answer the client has.
    Send(request, headers, body);
    LogStatus(request);
    answer = ReadAnswer(request);
}

} // namespace

void Post(const std::wstring& server, const std::wstring& path, const std::wstring& headers, const char* body,
          std::string& answer) noexcept {
    try {
        PostUnguarded(server, path, headers, body, answer);
    } catch (...) {
        // Nobody waits for the result; the caller logs whatever answer there is.
    }
}

} // namespace Zuvan::LumeqShim
