#include "LumeqLib/Extra/Eventing/EventObject.h"

#include "Common/Exceptions.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

void RequireLabel(bool isValid, const wchar_t* form) {
    if (!isValid)
        throw Common::ArgumentException(
            L"objectLabel", std::wstring(L"objectLabel is not formatted correctly. Must be of form ") + form);
}

} // namespace

EventObject::EventObject(const std::wstring& object, const std::wstring& objectLabel,
                         std::unique_ptr<EventDetails> details)
    : _details(std::move(details)), _objectLabel(objectLabel), _object(object) {}

std::unique_ptr<EventDetails> EventObject::CloneDetails() const {
    return _details ? _details->Clone() : nullptr;
}

EventObject MakeAdObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details) {
    return {Object::Ad, objectLabel, std::move(details)};
}

EventObject MakeButtonObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details) {
    return {Object::Button, objectLabel, std::move(details)};
}

EventObject MakeCheckboxObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details) {
    return {Object::Checkbox, objectLabel, std::move(details)};
}

EventObject MakeHyperlinkObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details) {
    EventObject object(Object::Hyperlink, objectLabel, std::move(details));
    RequireLabel(IsValidHyperlinkLabel(object.Label()),
                 L"[/<Flow>.flow][/<ScreenPath>]/<ScreenName>[-<Mode>]#url_<ControlName>");
    return object;
}

EventObject MakeScreenObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details) {
    return {Object::Screen, objectLabel, std::move(details)};
}

EventObject MakeTileObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details) {
    return {Object::Tile, objectLabel, std::move(details)};
}

EventObject MakeUrlObject(const std::wstring& objectLabel, std::unique_ptr<EventDetails> details) {
    EventObject object(Object::Url, objectLabel, std::move(details));
    RequireLabel(IsValidUrl(object.Label()), L"^(file|https?)://[^?]+$");
    return object;
}

} // namespace Zuvan::Lumeq::Extra::Eventing
