// Details of an event, beyond who did what to which object.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <memory>

namespace Zuvan::Lumeq::Extra::Eventing {

/// Base of every details class. Derived constructors fill `_data`, which becomes `app_event_details`.
class EventDetails {
public:
    /// A new object of the same class with a copy of the data.
    virtual std::unique_ptr<EventDetails> Clone() const = 0;
    virtual ~EventDetails() = default;
    EventDetails& operator=(const EventDetails&) = delete;

    const Dictionary& Data() const noexcept { return _data; }

protected:
    EventDetails() = default;
    EventDetails(const EventDetails&) = default;

    Dictionary _data;
};

} // namespace Zuvan::Lumeq::Extra::Eventing
