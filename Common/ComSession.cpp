#include "Common/ComSession.h"

#include <windows.h>

#include <atomic>
#include <objbase.h>
#include <utility>

namespace Zuvan::Lumeq::Common {

namespace {

constinit ComSession* openSession = nullptr;
// The log's policy can load on a thread that has no session. It finds another thread's number here, or 0, and
// then leaves the pointer alone.
constinit std::atomic<std::uint32_t> threadOfSession{0};

} // namespace

void InterfaceReleaser::operator()(::IUnknown* instance) const noexcept { instance->Release(); }

ComSession::ComSession() noexcept {
    openSession = this;
    threadOfSession.store(GetCurrentThreadId(), std::memory_order_relaxed);
}

ComSession::~ComSession() {
    Undo();
    threadOfSession.store(0, std::memory_order_relaxed);
}

ComSession* ComSession::OfThisThread() noexcept {
    const std::uint32_t thread = threadOfSession.load(std::memory_order_relaxed);
    return thread != 0 && thread == GetCurrentThreadId() ? openSession : nullptr;
}

void ComSession::Suspend() noexcept {
    if (ComSession* const session = OfThisThread())
        session->Undo();
}

ApartmentCache* ComSession::Cache() noexcept {
    ComSession* const session = OfThisThread();
    return session && session->_operations > 0 ? &session->_cache : nullptr;
}

void ComSession::Leave() noexcept {
    ComSession* const session = OfThisThread();
    if (session && session->_operations > 0 && --session->_operations == 0) {
        session->_isKept = true;
        return;
    }
    // An initialisation of an earlier export ends here. What is kept has to end with it, because the next
    // operation would otherwise return the result of a thread that COM was already initialised on.
    if (session && session->_operations == 0)
        session->Undo();
    CoUninitialize();
}

std::int32_t ComSession::Resume() noexcept {
    _isKept = false;
    _operations = 1;
    return _firstResult;
}

void ComSession::Entered(std::int32_t result) noexcept {
    if (_operations++ == 0)
        _firstResult = result;
}

void ComSession::Undo() noexcept {
    _cache = {};
    if (std::exchange(_isKept, false))
        CoUninitialize();
}

} // namespace Zuvan::Lumeq::Common
