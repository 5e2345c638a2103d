#include "LumeqShim/Post/PostMessage.h"

#include "Common/ComSession.h"
#include "Common/Format.h"
#include "Common/Logger.h"
#include "Common/SystemHandles.h"
#include "LumeqShim/Post/HttpsPost.h"
#include "LumeqShim/Post/QueueRequest.h"

#include <windows.h>

#include <memory>
#include <utility>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Common::NarrowArgument;
using Lumeq::Common::SeverityLevel;
using Lumeq::Common::UniqueKernelObject;
using Lumeq::Common::UniqueModule;

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\PostMessage");
constexpr DWORD WaitMilliseconds = 3000;

void ScrubAndLog(std::wstring& message) {
    ScrubMessage(message, [&message](std::size_t index) {
        Log(SeverityLevel::ERROR, L"Message has illegal character at %d with value %d, see=%s",
            static_cast<int>(index), static_cast<int>(message[index]), message.c_str());
    });
}

PostThreadArgs MakeRequest(const std::wstring& host, const std::wstring& userAgent,
                           const std::wstring& projectId, const std::wstring& queueName,
                           const std::wstring& message, const std::wstring& token) {
    const std::string encodedMessage = EncodeMessage(message);
    Log(SeverityLevel::DEBUG, L"Encoded Message=%S", NarrowArgument(encodedMessage.c_str()).Text());
    std::string body = RequestBody(encodedMessage);
    std::wstring headers = RequestHeaders(token, userAgent, body.size());
    return {host, RequestPath(projectId, queueName), std::move(headers), std::move(body)};
}

struct WorkerStart {
    PostThreadArgs request;
    UniqueModule module; ///< Keeps this code loaded.
};

void PostAndLog(const PostThreadArgs& request) {
    std::string answer = "Worker thread failed!";
    Post(request.host, request.path, request.headers, request.body.c_str(), answer);
    Log(SeverityLevel::DATA, L"<- %S", NarrowArgument(answer.c_str()).Text());
}

DWORD WINAPI RunWorker(void* argument) {
    HMODULE module = nullptr;
    {
        const std::unique_ptr<WorkerStart> start(static_cast<WorkerStart*>(argument));
        module = start->module.Release();
        // Only a thread under the API lock may load the log's policy.
        const Lumeq::Common::FirstUseDeferral deferral;
        try {
            PostAndLog(start->request);
        } catch (...) {
            // Nobody above a thread could catch this.
        }
    }
    // The host may have freed the library meanwhile, so there may be no code left to return to.
    FreeLibraryAndExitThread(module, 0);
}

UniqueModule ThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&RunWorker),
                       &module);
    return UniqueModule(module);
}

/// None if the thread cannot be started, or its code cannot be kept loaded.
UniqueKernelObject StartWorker(PostThreadArgs request) {
    UniqueModule module = ThisModule();
    if (!module)
        return {};
    auto start = std::make_unique<WorkerStart>(WorkerStart{std::move(request), std::move(module)});
    UniqueKernelObject thread(CreateThread(nullptr, 0, &RunWorker, start.get(), 0, nullptr));
    if (thread)
        static_cast<void>(start.release()); // the thread owns it now
    return thread;
}

void WaitForWorker(UniqueKernelObject thread) {
    // In a single-threaded apartment, a thread that does not dispatch messages stops whoever broadcasts one.
    Lumeq::Common::ComSession::Suspend();
    DWORD exitCode = WAIT_TIMEOUT;
    const bool ended = WaitForSingleObject(thread.Get(), WaitMilliseconds) != WAIT_TIMEOUT &&
                       GetExitCodeThread(thread.Get(), &exitCode) && exitCode == 0;
    // A thread that goes on is not cancelled, and its handle stays open on purpose.
    if (!ended)
        static_cast<void>(thread.Release());
}

} // namespace

void PostMessageAndForget(const std::wstring& serverUrl, const std::wstring& userAgent,
                          const std::wstring& projectId, const std::wstring& queueName, std::wstring& message,
                          const std::wstring& token) {
    const std::wstring host = HostFromUrl(serverUrl);
    Log(SeverityLevel::DEBUG, L"PostMessageAndForget(%s, %s, %s, %s, %s)", host.c_str(), userAgent.c_str(),
        projectId.c_str(), queueName.c_str(), token.c_str());
    ScrubAndLog(message);
    Log(SeverityLevel::TRACE, L"Message=%s", message.c_str());
    PostThreadArgs request = MakeRequest(host, userAgent, projectId, queueName, message, token);
    Log(SeverityLevel::DEBUG, L"PostMessageAndForget about to post");
    Log(SeverityLevel::DATA, L"->%s %s", request.path.c_str(), message.c_str());
    WaitForWorker(StartWorker(std::move(request)));
}

} // namespace Zuvan::LumeqShim
