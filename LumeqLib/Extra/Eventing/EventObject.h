// The object of a user interface event.
#pragma once

#include "LumeqLib/Extra/Eventing/EventDetails.h"

#include <memory>
#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// The word for a kind of thing, the label of one of them, and details about it if there are any.
class EventObject {
public:
    /// `details` may be null.
    EventObject(const std::wstring& object, const std::wstring& objectLabel,
                std::unique_ptr<EventDetails> details);

    const std::wstring& Word() const noexcept { return _object; }
    const std::wstring& Label() const noexcept { return _objectLabel; }
    /// Null if there are none.
    std::unique_ptr<EventDetails> CloneDetails() const;

private:
    std::unique_ptr<EventDetails> _details;
    std::wstring _objectLabel;
    std::wstring _object;
};

/// Each takes ownership of the details, also if it fails. Those for hyperlinks and URLs throw
/// ArgumentException for a malformed label, and what the label's check throws.
EventObject MakeAdObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details);
EventObject MakeButtonObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details);
EventObject MakeCheckboxObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details);
EventObject MakeHyperlinkObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details);
EventObject MakeScreenObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details);
EventObject MakeTileObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details);
EventObject MakeUrlObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details);

} // namespace Zuvan::Lumeq::Extra::Eventing
