// The eleven user-interface exports, from the host's arguments to the record.
#include "fuzz/native/Machine.h"
#include "fuzz/support/ExportModel.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainUtf.h"
#include "fuzz/support/Require.h"

#include <Lumeq/LumeqApi.h>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

struct Screen {
    std::optional<std::wstring> flow;
    std::optional<std::wstring> path;
    std::wstring name;
    std::optional<std::wstring> mode;
    std::wstring control;

    explicit Screen(Input& input)
        : flow(ReadOptionalText(input)), path(ReadOptionalText(input)), name(ReadText(input)),
          mode(ReadOptionalText(input)), control(ReadText(input)) {}

    void ExpectChecks(ExpectedCall& call, bool hasControl, const ContextArguments& context) const {
        call.Optional(Kind::Flow, L"flow", flow);
        call.Optional(Kind::ScreenPath, L"screenPath", path);
        call.Required(Kind::ScreenName, L"screenName", name);
        call.Optional(Kind::Mode, L"mode", mode);
        if (hasControl)
            call.Required(Kind::ControlName, L"controlName", control);
        call.Optional(Kind::Context, L"globalContext", context.global);
    }

    std::wstring Label(const std::wstring& controlPart) const {
        const std::wstring flowPart = flow.value_or(L"").empty() ? L"" : L"/" + *flow + L".flow";
        const std::wstring pathPart = path.value_or(L"").empty() ? L"" : L"/" + *path;
        const std::wstring modePart = mode.value_or(L"").empty() ? L"" : L"-" + *mode;
        return flowPart + pathPart + L"/" + name + modePart + controlPart;
    }
};

/// The expected result of the call: the record, or no event.
void RequireOutcome(const ExpectedCall& call, const Model::Fields& record) {
    const Machine& machine = TheMachine();
    call.RequireErrors();
    Require(machine.Messages(Common::SeverityLevel::TRACE).size() == 1, "the arguments are one TRACE line");
    Require(machine.events.size() == (call.Failed() ? 0 : 1), "a good call is one event, a bad call none");
    if (call.Failed())
        return;
    Require(machine.events[0].record == Model(record), "the record contains the host's arguments");
    Require(machine.events[0].timestamp == EventTime(machine.utcMilliseconds), "the event has its time");
}

using ControlExport = void(const wchar_t*, const wchar_t*, const std::wstring&, const wchar_t*,
                           const std::wstring&, const API::StringDictionary*, const wchar_t*);

void CallControl(ControlExport* control, const Screen& screen, const ContextArguments& context) {
    control(Pointer(screen.flow), Pointer(screen.path), screen.name, Pointer(screen.mode), screen.control,
            context.Local(), context.Global());
}

void FuzzScreen(Input& input) {
    const Screen screen(input);
    const ContextArguments context(input);
    ExpectedCall call(L"ScreenDisplayed");
    screen.ExpectChecks(call, false, context);
    API::ScreenDisplayed(Pointer(screen.flow), Pointer(screen.path), screen.name, Pointer(screen.mode),
                         context.Local(), context.Global());
    RequireOutcome(call,
                   EventRecord(L"app", L"displayed", L"screen", screen.Label(L""), context.Record(), {}));
}

void FuzzClick(Input& input, const wchar_t* name, ControlExport* control, const wchar_t* object) {
    const Screen screen(input);
    const ContextArguments context(input);
    ExpectedCall call(name);
    screen.ExpectChecks(call, true, context);
    CallControl(control, screen, context);
    RequireOutcome(call, EventRecord(L"user", L"clicked", object, screen.Label(L"#" + screen.control),
                                     context.Record(), {}));
}

void FuzzHyperlink(Input& input) {
    const Screen screen(input);
    const ContextArguments context(input);
    ExpectedCall call(L"HyperlinkClicked");
    screen.ExpectChecks(call, true, context);
    CallControl(API::HyperlinkClicked, screen, context);
    const std::wstring label = screen.Label(L"#url_" + screen.control);
    if (!call.Failed() && label.size() > LongestPlainText(Kind::HyperlinkLabel))
        return;
    if (!call.Failed() && !PlainlyMatches(Kind::HyperlinkLabel, label))
        call.Exception(L"objectLabel is not formatted correctly. Must be of form "
                       L"[/<Flow>.flow][/<ScreenPath>]/<ScreenName>[-<Mode>]#url_<ControlName>");
    RequireOutcome(call, EventRecord(L"user", L"clicked", L"hyperlink", label, context.Record(), {}));
}

void FuzzCheckbox(Input& input) {
    const auto isChecked = static_cast<unsigned char>(input.Number());
    const Screen screen(input);
    const ContextArguments context(input);
    ExpectedCall call(L"CheckboxChanged");
    screen.ExpectChecks(call, true, context);
    API::CheckboxChanged(isChecked, Pointer(screen.flow), Pointer(screen.path), screen.name,
                         Pointer(screen.mode), screen.control, context.Local(), context.Global());
    RequireOutcome(call, EventRecord(L"user", isChecked ? L"checked" : L"unchecked", L"checkbox",
                                     screen.Label(L"#" + screen.control), context.Record(), {}));
}

struct Ad {
    std::int32_t type;
    std::wstring product;
    std::wstring name;
    std::wstring variant;

    explicit Ad(Input& input)
        : type(static_cast<std::int32_t>(input.Number())), product(ReadText(input)), name(ReadText(input)),
          variant(ReadText(input)) {}

    bool HasType() const { return type >= 0 && type < 5; }

    Model::Fields Details() const {
        constexpr const wchar_t* Types[] = {L"unknown", L"banner", L"hyperlink", L"tile", L"virtualalert"};
        const auto known = [](const std::wstring& text) { return text.empty() ? L"unknown" : text; };
        return {{L"schema", L"generic/1.0.0"},
                {L"moniker", L"x-dvrn_ad_basic/1.0"},
                {L"campaign_type", HasType() ? Types[type] : L""},
                {L"campaign_product", known(product)},
                {L"campaign_name", known(name)},
                {L"campaign_variant", known(variant)}};
    }
};

void FuzzAd(Input& input, const wchar_t* exportName, decltype(API::AdClicked)* adExport, const wchar_t* actor,
            const wchar_t* action) {
    const Ad ad(input);
    const Screen screen(input);
    const ContextArguments context(input);
    ExpectedCall call(exportName);
    call.Required(Kind::AdProduct, L"product", ad.product);
    call.Required(Kind::AdName, L"name", ad.name);
    call.Required(Kind::AdVariant, L"variant", ad.variant);
    screen.ExpectChecks(call, true, context);
    if (!call.Failed() && !ad.HasType())
        call.Exception(L"[Undefined AdType: " + std::to_wstring(ad.type) + L"]");
    adExport(static_cast<API::AdType>(ad.type), ad.product, ad.name, ad.variant, Pointer(screen.flow),
             Pointer(screen.path), screen.name, Pointer(screen.mode), screen.control, context.Local(),
             context.Global());
    RequireOutcome(call, EventRecord(actor, action, L"ad", screen.Label(L"#" + screen.control),
                                     context.Record(), ad.Details()));
}

void FuzzUrl(Input& input) {
    const std::wstring url = ReadText(input);
    const ContextArguments context(input);
    const std::wstring urlNoPii = url.substr(0, url.find(L'?'));
    ExpectedCall call(L"UrlLaunchedEx");
    call.Required(Kind::Url, L"urlNoPii", urlNoPii);
    call.Optional(Kind::Context, L"globalContext", context.global);
    if (!call.Failed() && !PlainUtf8(urlNoPii))
        call.Exception(L"bad conversion");
    else if (!call.Failed() && !PlainlyMatches(Kind::UrlLabel, urlNoPii))
        call.Exception(L"objectLabel is not formatted correctly. Must be of form ^(file|https?)://[^?]+$");
    API::UrlLaunchedEx(url, context.Local(), context.Global());
    RequireOutcome(call, EventRecord(L"app", L"launched", L"url", urlNoPii, context.Record(), {}));
}

struct Filled {
    const wchar_t* exportName;
    decltype(API::FormSubmitted)* function;
    const wchar_t* nameArgument;
    Kind nameKind;
    Kind monikerKind;
    const wchar_t* infix;
    const wchar_t* schema;
    const wchar_t* actor;
    const wchar_t* action;
    const wchar_t* object;
    const wchar_t* label;
    const wchar_t* refusal;
};

const Filled Form = {L"FormSubmitted",
                     API::FormSubmitted,
                     L"formName",
                     Kind::FormName,
                     Kind::FormMoniker,
                     L"_form_",
                     L"app_event_form_generic/1.0.0",
                     L"user",
                     L"submitted",
                     L"form",
                     L"form_generic",
                     L"Moniker is not formatted correctly. Must be of form "
                     L"x-{orgname}_{codename}_form_{mycrazyname}/{version-1dot} "
                     L"(e.g. x-dvrn_tarvik_form_printer-information/1.0)"};

const Filled Report = {L"ReportGenerated",
                       API::ReportGenerated,
                       L"reportName",
                       Kind::ReportName,
                       Kind::ReportMoniker,
                       L"_report_",
                       L"app_event_report_generic/1.0.0",
                       L"app",
                       L"generated",
                       L"report",
                       L"report_generic",
                       L"Moniker is not formatted correctly. Moniker identifier in form of "
                       L"x-{orgname}_{codename}_report_{myreportname}/{version-1dot} "
                       L"(e.g. x-dvrn_tarvik_report_setup/1.0)"};

void FuzzFilled(Input& input, const Filled& kind) {
    const std::wstring org = ReadText(input);
    const std::wstring code = ReadText(input);
    const std::wstring name = ReadText(input);
    const std::wstring version = ReadText(input);
    const API::StringDictionary details = input.Fields();
    const ContextArguments context(input);
    ExpectedCall call(kind.exportName);
    call.Required(Kind::OrgName, L"orgName", org);
    call.Required(Kind::CodeName, L"codeName", code);
    call.Required(kind.nameKind, kind.nameArgument, name);
    call.Required(Kind::SchemaVersion, L"version", version);
    call.Optional(Kind::Context, L"globalContext", context.global);
    const std::wstring moniker = L"x-" + org + L"_" + code + kind.infix + name + L"/" + version;
    if (!call.Failed() && !PlainlyMatches(kind.monikerKind, moniker))
        call.Exception(kind.refusal);

    kind.function(org, code, name, version, details, context.Local(), context.Global());
    Model::Fields fields = TextFields(details);
    fields[L"schema"] = Model(kind.schema);
    fields[L"moniker"] = Model(moniker);
    RequireOutcome(call,
                   EventRecord(kind.actor, kind.action, kind.object, kind.label, context.Record(), fields));
}

void SetProcessWideModelName(Input& input) {
    const std::optional<std::wstring> name = ReadOptionalText(input);
    if (!name)
        return;
    API::SetGlobalContextEx(name->c_str());
    const bool isValid = ShouldMatch(Kind::Context, *name);
    Require(TheMachine().globalContext == (isValid ? *name : L""), "a valid model name is kept");
    TheMachine().log.clear();
}

void FuzzExport(Input& input, std::size_t which) {
    switch (which) {
    case 0:
        return FuzzScreen(input);
    case 1:
        return FuzzClick(input, L"ButtonClicked", API::ButtonClicked, L"button");
    case 2:
        return FuzzClick(input, L"TileClicked", API::TileClicked, L"tile");
    case 3:
        return FuzzHyperlink(input);
    case 4:
        return FuzzCheckbox(input);
    case 5:
        return FuzzAd(input, L"AdDisplayed", API::AdDisplayed, L"app", L"displayed");
    case 6:
        return FuzzAd(input, L"AdClicked", API::AdClicked, L"user", L"clicked");
    case 7:
        return FuzzAd(input, L"AdClosed", API::AdClosed, L"user", L"closed");
    case 8:
        return FuzzUrl(input);
    case 9:
        return FuzzFilled(input, Form);
    default:
        return FuzzFilled(input, Report);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::size_t which = input.Choice(11);
    Machine& machine = NewMachine();
    machine.utcMilliseconds = input.Number();
    SetProcessWideModelName(input);
    FuzzExport(input, which);
    return 0;
}
