#include <Lumeq/lumeq_test.h>

#include "Common/TrackingGate.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/PauseState.h"
#include "LumeqTest/Matching.h"
#include "LumeqTest/RecordedCall.h"
#include "LumeqTest/Recording.h"

#include <exception>

namespace Zuvan::Lumeq::Double {

namespace {

const char* TextAt(const Texts Recording::*texts, std::int32_t number) noexcept {
    const LockedRecording recording;
    const Texts& all = (*recording.operator->()).*texts;
    return number >= 0 && static_cast<std::size_t>(number) < all.size()
               ? all[static_cast<std::size_t>(number)].c_str()
               : nullptr;
}

std::int32_t CountOf(const Texts Recording::*texts) noexcept {
    const LockedRecording recording;
    return static_cast<std::int32_t>(((*recording.operator->()).*texts).size());
}

/// Keeps the text of `make` for the calling thread. A failure is a text too.
template <class Make>
const char* Keep(Make make) noexcept {
    thread_local std::string kept;
    try {
        kept = make();
    } catch (const std::exception& failure) {
        kept = std::string("lumeq_test failed: ") + failure.what();
    }
    return kept.c_str();
}

/// The same, and null for an empty text.
template <class Make>
const char* KeepProblem(Make make) noexcept {
    const char* const problem = Keep(make);
    return *problem ? problem : nullptr;
}

} // namespace

extern "C" {

void lumeq_test_reset() {
    ResetRecording();
    RestartTaskNames();
    SetTrackingDisabled(false);
    Common::SetGlobalContext(L"");
}

std::int32_t lumeq_test_event_count() { return CountOf(&Recording::events); }
const char* lumeq_test_event(std::int32_t number) { return TextAt(&Recording::events, number); }
std::int32_t lumeq_test_operation_count() { return CountOf(&Recording::operations); }
const char* lumeq_test_operation(std::int32_t number) { return TextAt(&Recording::operations, number); }
std::int32_t lumeq_test_refusal_count() { return CountOf(&Recording::refusals); }
const char* lumeq_test_refusal(std::int32_t number) { return TextAt(&Recording::refusals, number); }
std::int32_t lumeq_test_log_count() { return CountOf(&Recording::log); }
const char* lumeq_test_log_line(std::int32_t number) { return TextAt(&Recording::log, number); }

void lumeq_test_set_clock(std::int64_t utcMsec) { LockedRecording()->utcMilliseconds = utcMsec; }
void lumeq_test_advance_clock(std::int64_t msec) { LockedRecording()->utcMilliseconds += msec; }
void lumeq_test_set_next_guid(std::uint64_t first) { LockedRecording()->nextGuid = first; }

void lumeq_test_set_opt_in(std::int32_t optIn) {
    if (optIn == LUMEQ_TEST_OPT_IN_UNSET)
        LumeqShim::BasicClearOptIn(LumeqShim::UserOptInKey);
    else
        LumeqShim::BasicSetUserOptIn(optIn == LUMEQ_TEST_OPT_IN_YES, LumeqShim::UserOptInKey);
}

std::int32_t lumeq_test_opt_in() {
    const wchar_t* const key =
        LumeqShim::IsPauseMarked() ? LumeqShim::OptinBeforePauseKey : LumeqShim::UserOptInKey;
    if (!LumeqShim::BasicDidUserOpted(key))
        return LUMEQ_TEST_OPT_IN_UNSET;
    return LumeqShim::BasicGetUserOptIn(key) ? LUMEQ_TEST_OPT_IN_YES : LUMEQ_TEST_OPT_IN_NO;
}

std::int32_t lumeq_test_is_paused() { return LumeqShim::IsPauseMarked(); }

void lumeq_test_disable_tracking(std::int32_t isDisabled) { SetTrackingDisabled(isDisabled != 0); }
std::int32_t lumeq_test_is_tracking_disabled() { return Common::IsTrackingKnownDisabled(); }

void lumeq_test_fail_next_delivery() { LockedRecording()->nextDeliveryFails = true; }

const char* lumeq_test_mismatch(const char* json, const char* exportName,
                                const lumeq_test_argument* arguments, std::size_t count) {
    return KeepProblem([=] {
        return Mismatch(SampleHost::Json::parse(json), exportName, {arguments, count});
    });
}

const char* lumeq_test_missing_event(const char* exportName, const lumeq_test_argument* arguments,
                                     std::size_t count) {
    return KeepProblem([=] { return MissingEvent(exportName, {arguments, count}); });
}

const char* lumeq_test_text(const char* json) {
    return Keep([=] { return Shown(SampleHost::Json::parse(json)); });
}

const char* lumeq_test_describe() { return Keep(ShownRecording); }

} // extern "C"
} // namespace Zuvan::Lumeq::Double
