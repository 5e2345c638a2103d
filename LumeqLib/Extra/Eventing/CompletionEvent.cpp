#include "Common/Text.h"
#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <Lumeq/LumeqRecords.h>

#include <string>
#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

// Signed and not clamped: the receiver must see a clock that went back, and -1 for a time that is not known.
std::wstring DurationText(std::uint64_t startTime, std::uint64_t endTime) {
    const bool known = startTime != InvalidTime && endTime != InvalidTime;
    const std::uint64_t duration = known ? endTime - startTime : InvalidTime;
    return Common::DecimalText(static_cast<std::int64_t>(duration));
}

} // namespace

CompletionEvent::CompletionEvent(const std::wstring& action, const std::wstring& object,
                                 const std::wstring& objectLabel, const std::wstring& taskResult,
                                 const std::uint64_t& startTime, Dictionary context,
                                 const EventDetails* details, EpochClock clock)
    : EventingEvent(Actor::Self, action, object, objectLabel, std::move(context), details, clock),
      _detailsKey(Key::Details), _durationKey(Key::TaskDuration), _resultKey(Key::TaskResult) {
    Variant& detailsField = _record[_detailsKey];
    if (detailsField.Type() == Variant::ValueType::Null)
        detailsField = Dictionary();
    Dictionary& data = detailsField.AsDictionary();
    data[_resultKey] = taskResult;
    data[_durationKey] = DurationText(startTime, _timestamp);
}

CompletionEvent::CompletionEvent(const std::wstring& action, const std::wstring& object,
                                 const std::wstring& objectLabel, const std::wstring& taskResult,
                                 const std::uint64_t& startTime, Dictionary context,
                                 const EventDetails* details)
    : CompletionEvent(action, object, objectLabel, taskResult, startTime, std::move(context), details,
                      EpochMilliseconds) {}

// The keys are set anew rather than moved, so that the source stays readable.
CompletionEvent::CompletionEvent(CompletionEvent&& other)
    : EventingEvent(std::move(other)), _detailsKey(Key::Details), _durationKey(Key::TaskDuration),
      _resultKey(Key::TaskResult) {}

CompletionEvent::~CompletionEvent() = default;

} // namespace Zuvan::Lumeq::Extra::Eventing
