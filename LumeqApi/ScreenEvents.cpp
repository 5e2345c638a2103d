#include "LumeqApi/ScreenEvents.h"

#include "LumeqApi/Patterns.h"
#include "LumeqLib/Extra/Eventing/AdEventDetails.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqShim/LumeqNativeShim.h"

namespace Zuvan::Lumeq::API {

using namespace Extra::Eventing;

namespace {

bool IsPresent(const wchar_t* text) { return text != nullptr && *text != L'\0'; }

} // namespace

void CheckScreen(Call& call, const ScreenArguments& screen) {
    call.Optional(screen.flow, L"flow", flowPattern);
    call.Optional(screen.screenPath, L"screenPath", screenPathPattern);
    call.Required(screen.screenName, L"screenName", screenNamePattern);
    call.Optional(screen.mode, L"mode", modePattern);
    if (screen.controlName)
        call.Required(*screen.controlName, L"controlName", controlNamePattern);
    call.Optional(screen.globalContext, L"globalContext", contextPattern);
}

void CheckAd(Call& call, const AdArguments& ad) {
    call.Required(ad.product, L"product", adProductPattern);
    call.Required(ad.name, L"name", adNamePattern);
    call.Required(ad.variant, L"variant", adVariantPattern);
}

std::wstring ScreenLabel(const ScreenArguments& screen, const wchar_t* controlMark) {
    std::wstring label;
    if (IsPresent(screen.flow))
        label.append(L"/").append(screen.flow).append(L".flow");
    if (IsPresent(screen.screenPath))
        label.append(L"/").append(screen.screenPath);
    label.append(L"/").append(screen.screenName);
    if (IsPresent(screen.mode))
        label.append(L"-").append(screen.mode);
    if (screen.controlName)
        label.append(controlMark).append(*screen.controlName);
    return label;
}

void PostObjectEvent(const EventSource& source, const std::wstring& label,
                     std::unique_ptr<EventDetails> details, const StringDictionary* localContext,
                     const wchar_t* globalContext) {
    const EventObject object = source.makeObject(label, std::move(details));
    const EventingEvent event = source.makeEvent(object, MakeEventContext(localContext, globalContext));
    LumeqShim::PostEventXX(&event);
}

void PostControlEvent(const ExportName& name, const wchar_t* format, const ScreenArguments& screen,
                      const EventSource& source, const wchar_t* controlMark) {
    RunExport(name, [&](Call& call) {
        call.Trace(format, screen.flow, screen.screenPath, screen.screenName, screen.mode,
                   *screen.controlName, screen.localContext, screen.globalContext);
        CheckScreen(call, screen);
        if (call.Failed())
            return;
        PostObjectEvent(source, ScreenLabel(screen, controlMark), nullptr, screen.localContext,
                        screen.globalContext);
    });
}

void PostAdEvent(const ExportName& name, const AdArguments& ad, const ScreenArguments& screen,
                 EventFactory makeEvent) {
    RunExport(name, [&](Call& call) {
        call.Trace(
            L"adType: %s, product: %s, name: %s, variant: %s, flow: %s, screenPath: %s, screenName: %s, "
            L"mode: %s, controlName: %s, localContext: %s, globalContext: %s",
            ad.adType, ad.product, ad.name, ad.variant, screen.flow, screen.screenPath, screen.screenName,
            screen.mode, *screen.controlName, screen.localContext, screen.globalContext);
        CheckAd(call, ad);
        CheckScreen(call, screen);
        if (call.Failed())
            return;
        const std::wstring label = ScreenLabel(screen, ControlMark);
        auto details = std::make_unique<AdEventDetails>(ToRecord(ad.adType), ad.product, ad.name, ad.variant);
        PostObjectEvent({MakeAdObject, makeEvent}, label, std::move(details), screen.localContext,
                        screen.globalContext);
    });
}

} // namespace Zuvan::Lumeq::API
