#include "fuzz/native/Machine.h"

#include "Common/Clock.h"
#include "Common/ComSession.h"
#include "Common/Debugger.h"
#include "Common/Format.h"
#include "Common/HostFile.h"
#include "Common/ThreadNumber.h"
#include "Common/TrackingGate.h"
#include "LumeqLib/Extra/Eventing/TaskGuid.h"

#include <atomic>
#include <cwchar>

namespace Zuvan::Lumeq {

namespace Fuzzing {

std::vector<std::wstring> Machine::Messages(Common::SeverityLevel level) const {
    std::vector<std::wstring> messages;
    for (const LoggedLine& line : log)
        if (line.level == level)
            messages.push_back(line.message);
    return messages;
}

Machine& TheMachine() {
    static Machine machine;
    return machine;
}

Machine& NewMachine() { return TheMachine() = Machine(); }

} // namespace Fuzzing

namespace Common {

std::int64_t UtcMilliseconds() { return Fuzzing::TheMachine().utcMilliseconds; }

std::tm UtcCalendar(std::int64_t epochSeconds) {
    const std::time_t seconds = epochSeconds;
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    return utc;
}

// Only for formats of numbers, because those of texts differ between the platforms.
FormattedText FormatBounded(std::size_t capacity, const wchar_t* format, ...) {
    std::wstring buffer(capacity, L'\0');
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vswprintf(buffer.data(), capacity, format, arguments);
    va_end(arguments);
    buffer.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return {buffer, length < 0};
}

void BreakIfDebugged() {}

std::uint32_t ThreadNumber() noexcept {
    static std::atomic<std::uint32_t> last{0};
    thread_local const std::uint32_t mine = ++last;
    return mine;
}

std::wstring GetExecutableName() { return L"host.exe"; }

void InterfaceReleaser::operator()(::IUnknown*) const noexcept {}

ComSession::ComSession() noexcept = default;

ComSession::~ComSession() = default;

bool IsTrackingDisabled() { return false; }

const std::wstring& GlobalContext() { return Fuzzing::TheMachine().globalContext; }

void SetGlobalContext(const std::wstring& deviceModel) { Fuzzing::TheMachine().globalContext = deviceModel; }

} // namespace Common

namespace Extra::Eventing {

TaskGuid NewTaskGuid() { return {0x10, 0x32, 0x54, 0x76}; }

std::optional<std::wstring> RenderTaskGuid(const TaskGuid& guid) {
    if (Fuzzing::TheMachine().uuidTextFails)
        return std::nullopt;
    return guid == NewTaskGuid() ? L"76543210-0000-0000-0000-000000000000" : L"(another)";
}

} // namespace Extra::Eventing

} // namespace Zuvan::Lumeq
