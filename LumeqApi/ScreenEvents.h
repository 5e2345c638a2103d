// What the eight exports have in common that tell of a screen or of a control on it.
#pragma once

#include "LumeqApi/CallFrame.h"
#include "LumeqLib/Extra/Eventing/EventDetails.h"
#include "LumeqLib/Extra/Eventing/EventObject.h"

#include <Lumeq/LumeqRecords.h>

#include <memory>
#include <string>

namespace Zuvan::Lumeq::API {

struct ScreenArguments {
    const wchar_t* flow;
    const wchar_t* screenPath;
    const std::wstring& screenName;
    const wchar_t* mode;
    const std::wstring* controlName; ///< Null for the screen itself.
    const StringDictionary* localContext;
    const wchar_t* globalContext;
};

struct AdArguments {
    AdType adType;
    const std::wstring& product;
    const std::wstring& name;
    const std::wstring& variant;
};

void CheckScreen(Call& call, const ScreenArguments& screen);
void CheckAd(Call& call, const AdArguments& ad);

/// "/flow.flow/path/Screen-mode" followed by `controlMark` and the control's name, without the parts that are
/// null or empty.
std::wstring ScreenLabel(const ScreenArguments& screen, const wchar_t* controlMark);

inline constexpr wchar_t ControlMark[] = L"#";
inline constexpr wchar_t HyperlinkMark[] = L"#url_";

using ObjectFactory = Extra::Eventing::EventObject (*)(
    const std::wstring& objectLabel, std::unique_ptr<Extra::Eventing::EventDetails> details);
using EventFactory = Extra::Eventing::EventingEvent (*)(const Extra::Eventing::EventObject& object,
                                                        Extra::Eventing::Dictionary context);

/// What makes an event out of a label: the kind of object, and what happened to it.
struct EventSource {
    ObjectFactory makeObject;
    EventFactory makeEvent;
};

/// Builds the event and hands it over. `details` may be null.
void PostObjectEvent(const EventSource& source, const std::wstring& label,
                     std::unique_ptr<Extra::Eventing::EventDetails> details,
                     const StringDictionary* localContext, const wchar_t* globalContext);

/// The whole of an export that tells of a control; `format` takes the arguments from `flow` on.
void PostControlEvent(const ExportName& name, const wchar_t* format, const ScreenArguments& screen,
                      const EventSource& source, const wchar_t* controlMark = ControlMark);

/// The whole of an export that tells of an advertisement.
void PostAdEvent(const ExportName& name, const AdArguments& ad, const ScreenArguments& screen,
                 EventFactory makeEvent);

} // namespace Zuvan::Lumeq::API
