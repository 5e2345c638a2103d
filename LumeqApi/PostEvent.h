// How every export hands its event over.
#pragma once

#include "Common/RecordMemory.h"
#include "LumeqShim/LumeqNativeShim.h"

namespace Zuvan::Lumeq::API {

/// Passes the event that `makeEvent` returns to delivery. Does not build it where events are known to be
/// dropped, so all checks must have been made before.
template <class MakeEvent>
void PostEvent(MakeEvent makeEvent) {
    if (LumeqShim::AreEventsDropped())
        return;
    const auto event = Common::InRecordMemory(makeEvent);
    LumeqShim::PostEventXX(&event);
}

} // namespace Zuvan::Lumeq::API
