#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqLib/Extra/Eventing/EventDetails.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <Lumeq/LumeqRecords.h>

#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

EventingEvent::EventingEvent(const std::wstring& actor, const std::wstring& action,
                             const std::wstring& object, const std::wstring& objectLabel, Dictionary context,
                             const EventDetails* details, EpochClock clock)
    : _timestamp(clock()) {
    _record[Key::Schema] = Schema::EventInfo;
    _record[Key::Actor] = actor;
    _record[Key::Action] = action;
    _record[Key::Object] = object;
    _record[Key::ObjectLabel] = objectLabel;
    Variant& contextField = _record[Key::Context];
    if (!IsContextEmpty(context))
        contextField = std::move(context);
    Variant& detailsField = _record[Key::Details];
    if (details && !details->Data().empty())
        detailsField = details->Data();
}

EventingEvent::EventingEvent(const std::wstring& actor, const std::wstring& action,
                             const std::wstring& object, const std::wstring& objectLabel, Dictionary context,
                             const EventDetails* details)
    : EventingEvent(actor, action, object, objectLabel, std::move(context), details, EpochMilliseconds) {}

EventingEvent::~EventingEvent() = default;

} // namespace Zuvan::Lumeq::Extra::Eventing
