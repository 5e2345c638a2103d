// The events of the user interface. The factories copy details into the record and change no argument.
#pragma once

#include "LumeqLib/Extra/Eventing/EventObject.h"
#include "LumeqLib/Extra/Eventing/GenericForm.h"
#include "LumeqLib/Extra/Eventing/GenericReport.h"

#include <Lumeq/LumeqRecords.h>

namespace Zuvan::Lumeq::Extra::Eventing {

EventingEvent MakeCheckedEvent(const EventObject& object, Dictionary context);
EventingEvent MakeUncheckedEvent(const EventObject& object, Dictionary context);
EventingEvent MakeClickedEvent(const EventObject& object, Dictionary context);
EventingEvent MakeClosedEvent(const EventObject& object, Dictionary context);
EventingEvent MakeDisplayedEvent(const EventObject& object, Dictionary context);
EventingEvent MakeLaunchedEvent(const EventObject& object, Dictionary context);
EventingEvent MakeSubmittedEvent(const GenericForm& form, Dictionary context);
EventingEvent MakeGeneratedEvent(const GenericReport& report, Dictionary context);

} // namespace Zuvan::Lumeq::Extra::Eventing
