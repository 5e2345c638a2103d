#include "LumeqApi/Screens.h"

#include "LumeqApi/PostEvent.h"
#include "LumeqLib/Extra/Eventing/AdEventDetails.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"

#include <string_view>

namespace Zuvan::Lumeq::API {

using namespace Extra::Eventing;

namespace {

bool IsPresent(const wchar_t* text) { return text != nullptr && *text != L'\0'; }

auto Rows(const ScreenArguments& screen) {
    return Arguments{Optional{L"flow", screen.flow, flowPattern},
                     Optional{L"screenPath", screen.screenPath, screenPathPattern},
                     Required{L"screenName", screen.screenName, screenNamePattern},
                     Optional{L"mode", screen.mode, modePattern}};
}

auto Rows(const ControlArguments& control, const wchar_t* controlLabel = L"controlName") {
    return Arguments{Rows(control.screen),
                     Required{L"controlName", control.controlName, controlNamePattern, controlLabel}};
}

auto Rows(const AdArguments& ad) {
    return Arguments{Traced{L"adType", ad.adType}, Required{L"product", ad.product, adProductPattern},
                     Required{L"name", ad.name, adNamePattern},
                     Required{L"variant", ad.variant, adVariantPattern}};
}

/// `makeObject` builds the object with its label, which some kinds of object check.
template <class MakeObject>
void PostObjectEvent(MakeObject makeObject, EventFactory makeEvent, const ContextArguments& context) {
    const EventObject object = Common::InRecordMemory(makeObject);
    PostEvent(
        [&] { return makeEvent(object, MakeEventContext(context.localContext, context.globalContext)); });
}

} // namespace

std::wstring ScreenLabel(const ScreenArguments& screen) {
    std::wstring label;
    label.reserve(128); // most labels whole, with their control
    if (IsPresent(screen.flow))
        label.append(L"/").append(screen.flow).append(L".flow");
    if (IsPresent(screen.screenPath))
        label.append(L"/").append(screen.screenPath);
    label.append(L"/").append(screen.screenName);
    if (IsPresent(screen.mode))
        label.append(L"-").append(screen.mode);
    return label;
}

std::wstring ControlLabel(const ControlArguments& control, const wchar_t* mark) {
    return ScreenLabel(control.screen).append(mark).append(control.controlName);
}

void PostScreen(const ScreenArguments& screen, const ContextArguments& context) {
    RunExport(L"ScreenDisplayed", Arguments{Rows(screen), context.Rows()}, [&](const Call&) {
        PostObjectEvent([&] { return MakeScreenObject(ScreenLabel(screen), nullptr); }, MakeDisplayedEvent,
                        context);
    });
}

void PostClick(ExportName name, ObjectFactory makeObject, const ControlArguments& control,
               const ContextArguments& context, const wchar_t* mark) {
    // Readers of the log look for "controName".
    RunExport(name, Arguments{Rows(control, L"controName"), context.Rows()}, [&](const Call&) {
        PostObjectEvent([&] { return makeObject(ControlLabel(control, mark), nullptr); }, MakeClickedEvent,
                        context);
    });
}

void PostCheckbox(unsigned char isChecked, const ControlArguments& control, const ContextArguments& context) {
    const Arguments arguments{Traced{L"isChecked", isChecked}, Rows(control), context.Rows()};
    RunExport(L"CheckboxChanged", arguments, [&](const Call&) {
        PostObjectEvent([&] { return MakeCheckboxObject(ControlLabel(control), nullptr); },
                        isChecked ? MakeCheckedEvent : MakeUncheckedEvent, context);
    });
}

void PostAd(ExportName name, EventFactory makeEvent, const AdArguments& ad, const ControlArguments& control,
            const ContextArguments& context) {
    RunExport(name, Arguments{Rows(ad), Rows(control), context.Rows()}, [&](const Call&) {
        PostObjectEvent(
            [&] {
                auto details =
                    std::make_unique<AdEventDetails>(ToRecord(ad.adType), ad.product, ad.name, ad.variant);
                return MakeAdObject(ControlLabel(control), std::move(details));
            },
            makeEvent, context);
    });
}

void PostUrl(const std::wstring& url, const ContextArguments& context) {
    RunExport(L"UrlLaunchedEx", [&](const Call& call) {
        // The trace shows the whole URL. The query can identify a person, so nothing else sees it.
        const std::wstring_view urlNoPii = std::wstring_view(url).substr(0, url.find(L'?'));
        const Arguments arguments{Traced{L"url", url}, Checked{L"urlNoPii", urlNoPii, urlPattern},
                                  context.Rows()};
        Trace(call, arguments);
        if (arguments.IsAccepted(call))
            PostObjectEvent([&] { return MakeUrlObject(std::wstring(urlNoPii), nullptr); }, MakeLaunchedEvent,
                            context);
    });
}

} // namespace Zuvan::Lumeq::API
