// What the library asks the machine, answered without it: the same on every machine and in every run.
#include "Common/Clock.h"
#include "Common/ComSession.h"
#include "Common/HostFile.h"
#include "Common/TrackingGate.h"
#include "LumeqLib/Extra/Eventing/TaskGuid.h"
#include "LumeqShim/Basic/BasicFunctionality.h"
#include "LumeqShim/PreLoadingCode.h"
#include "LumeqTest/Recording.h"

#include <windows.h>

#include <iterator>

namespace Zuvan::Lumeq::Common {

namespace {

std::wstring globalContext;

} // namespace

std::int64_t UtcMilliseconds() { return Double::LockedRecording()->utcMilliseconds; }

bool IsTrackingDisabled() { return IsTrackingKnownDisabled(); }
const std::wstring& GlobalContext() { return globalContext; }
void SetGlobalContext(const std::wstring& deviceModel) { globalContext = deviceModel; }

std::wstring GetExecutableName() {
    wchar_t path[MAX_PATH + 1] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(whole.find_last_of(L'\\') + 1);
}

// Nothing here uses COM.
void InterfaceReleaser::operator()(::IUnknown*) const noexcept {}
ComSession::ComSession() noexcept {}
ComSession::~ComSession() {}
void ComSession::Suspend() noexcept {}

} // namespace Zuvan::Lumeq::Common

namespace Zuvan::Lumeq::Extra::Eventing {

TaskGuid NewTaskGuid() {
    TaskGuid guid{};
    std::uint64_t number = Double::LockedRecording()->nextGuid++;
    for (std::size_t at = guid.size(); at > guid.size() - sizeof number; number >>= 8)
        guid[--at] = static_cast<std::uint8_t>(number);
    return guid;
}

std::optional<std::wstring> RenderTaskGuid(const TaskGuid& guid) {
    std::wstring text;
    for (std::size_t at = 0; at < guid.size(); ++at) {
        if (at == 4 || at == 6 || at == 8 || at == 10)
            text += L'-';
        text += L"0123456789abcdef"[guid[at] >> 4];
        text += L"0123456789abcdef"[guid[at] & 15];
    }
    return text;
}

} // namespace Zuvan::Lumeq::Extra::Eventing

namespace Zuvan::LumeqShim {

// The managed road, which builds every record.
bool IsRequiredDotNetVersionInstalled() { return true; }
bool IsRequiredRuntimeKnownMissing() noexcept { return false; }

/// Reached where a test makes the start fail. There is nobody to send the message to.
void BasicStart(const std::wstring&) {}

} // namespace Zuvan::LumeqShim
