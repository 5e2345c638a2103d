// The exports that report a screen, a control on it, an advertisement or a URL.
#pragma once

#include "LumeqApi/Arguments.h"
#include "LumeqLib/Extra/Eventing/UiEvents.h"

#include <memory>
#include <string>

namespace Zuvan::Lumeq::API {

/// Where the user was.
struct ScreenArguments {
    const wchar_t* flow;
    const wchar_t* screenPath;
    const std::wstring& screenName;
    const wchar_t* mode;
};

struct ControlArguments {
    ScreenArguments screen;
    const std::wstring& controlName;
};

struct AdArguments {
    AdType adType;
    const std::wstring& product;
    const std::wstring& name;
    const std::wstring& variant;
};

/// Separates a control's name from its screen in a label.
inline constexpr wchar_t ControlMark[] = L"#";
inline constexpr wchar_t HyperlinkMark[] = L"#url_";

/// "/flow.flow/path/Screen-mode", without the parts that are null or empty.
std::wstring ScreenLabel(const ScreenArguments& screen);
std::wstring ControlLabel(const ControlArguments& control, const wchar_t* mark = ControlMark);

using ObjectFactory = Extra::Eventing::EventObject (*)(
    const std::wstring& objectLabel, std::unique_ptr<Extra::Eventing::EventDetails> details);
using EventFactory = Extra::Eventing::EventingEvent (*)(const Extra::Eventing::EventObject& object,
                                                        Extra::Eventing::Dictionary context);

/// Each is the whole of an export.
void PostScreen(const ScreenArguments& screen, const ContextArguments& context);
void PostClick(ExportName name, ObjectFactory makeObject, const ControlArguments& control,
               const ContextArguments& context, const wchar_t* mark = ControlMark);
void PostCheckbox(unsigned char isChecked, const ControlArguments& control, const ContextArguments& context);
void PostAd(ExportName name, EventFactory makeEvent, const AdArguments& ad, const ControlArguments& control,
            const ContextArguments& context);
void PostUrl(const std::wstring& url, const ContextArguments& context);

} // namespace Zuvan::Lumeq::API
