#include "LumeqTest/Recording.h"

#include "Common/TrackingGate.h"
#include "LumeqTest/RecordedCall.h"

#include <Lumeq/lumeq_test.h>

#include <windows.h>

#include <stdexcept>
#include <utility>

namespace Zuvan::Lumeq::Double {

namespace {

constexpr char FirstLine[] =
    "WARNING This is the recording double of Lumeq " LUMEQ_VERSION " for unit tests. It delivers nothing.";

Recording NewRecording() {
    Recording recording{};
    recording.utcMilliseconds = LUMEQ_TEST_CLOCK;
    recording.log.emplace_back(FirstLine);
    return recording;
}

struct SharedRecording {
    SharedRecording() { OutputDebugStringA((std::string(FirstLine) + "\n").c_str()); }

    std::mutex lock;
    Recording recording = NewRecording();
};

SharedRecording& Shared() {
    static SharedRecording shared;
    return shared;
}

bool IsEvent(std::wstring_view operation) {
    return operation == L"PostEventInternal" || operation == L"PostDataInternal";
}

} // namespace

LockedRecording::LockedRecording() : _recording(Shared().recording), _lock(Shared().lock) {}

void ResetRecording() {
    const std::scoped_lock hold(Shared().lock);
    Shared().recording = NewRecording();
}

void SetTrackingDisabled(bool isDisabled) noexcept {
    Common::trackingKnownDisabled.store(isDisabled, std::memory_order_relaxed);
}

void Deliver(const wchar_t* operation, const Companion::Members& members) {
    Companion::Members line{{L"operation", Companion::JsonText(std::wstring(operation))}};
    line.insert(line.end(), members.begin(), members.end());
    line.emplace_back(L"call", TextOfCurrentCall());
    const std::string text = Companion::JsonText(line);
    const LockedRecording recording;
    if (std::exchange(recording->nextDeliveryFails, false))
        throw std::runtime_error("the test makes this delivery fail");
    recording->operations.push_back(text);
    if (IsEvent(operation))
        recording->events.push_back(text);
}

} // namespace Zuvan::Lumeq::Double
