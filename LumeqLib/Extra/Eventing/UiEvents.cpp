#include "LumeqLib/Extra/Eventing/UiEvents.h"

#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

EventingEvent MakeObjectEvent(const std::wstring& actor, const std::wstring& action,
                              const EventObject& object, Dictionary context) {
    const std::unique_ptr<EventDetails> details = object.CloneDetails();
    return EventingEvent(actor, action, object.Word(), object.Label(), std::move(context), details.get());
}

} // namespace

EventingEvent MakeCheckedEvent(const EventObject& object, Dictionary context) {
    return MakeObjectEvent(Actor::User, Action::Checked, object, std::move(context));
}

EventingEvent MakeUncheckedEvent(const EventObject& object, Dictionary context) {
    return MakeObjectEvent(Actor::User, Action::Unchecked, object, std::move(context));
}

EventingEvent MakeClickedEvent(const EventObject& object, Dictionary context) {
    return MakeObjectEvent(Actor::User, Action::Clicked, object, std::move(context));
}

EventingEvent MakeClosedEvent(const EventObject& object, Dictionary context) {
    return MakeObjectEvent(Actor::User, Action::Closed, object, std::move(context));
}

EventingEvent MakeDisplayedEvent(const EventObject& object, Dictionary context) {
    return MakeObjectEvent(Actor::App, Action::Displayed, object, std::move(context));
}

EventingEvent MakeLaunchedEvent(const EventObject& object, Dictionary context) {
    return MakeObjectEvent(Actor::App, Action::Launched, object, std::move(context));
}

EventingEvent MakeSubmittedEvent(const GenericForm& form, Dictionary context) {
    return EventingEvent(Actor::User, Action::Submitted, Object::Form, form.Label(), std::move(context),
                         &form);
}

EventingEvent MakeGeneratedEvent(const GenericReport& report, Dictionary context) {
    return EventingEvent(Actor::App, Action::Generated, Object::Report, report.Label(), std::move(context),
                         &report);
}

} // namespace Zuvan::Lumeq::Extra::Eventing
