#include "bench/Calls.h"
#include "bench/Exports.h"

#include <string>

namespace LumeqBench {

namespace {

using SampleHost::Library;

const std::wstring ScreenName = L"ChooseNetwork";
const std::wstring ControlName = L"connect";
const API::StringDictionary LocalContext = {{L"networks_found", L"7"}, {L"signal", L"good"}};
const API::StringDictionary FormDetails = {{L"country", L"Austria"}, {L"newsletter", L"false"}};

/// The arguments in which an accepted and a refused call differ.
struct Arguments {
    std::wstring screenName;
    std::wstring adProduct;
    std::wstring url;
    std::wstring formName;
};

const Arguments Right = {ScreenName, L"Ink at your door", L"https://support.example/printers/setup",
                         L"register"};
const Arguments Wrong = {L"Choose network", L" Ink at your door", L"ftp://support.example/printers/setup",
                         L"Register"};

std::wstring TooLong(const wchar_t* start, const wchar_t* wrongEnd) {
    constexpr std::size_t Characters = 100'000;
    std::wstring text = start;
    text.resize(Characters - 1, L'a');
    return text + wrongEnd;
}

constexpr wchar_t Flow[] = L"setup";
constexpr wchar_t ScreenPath[] = L"network/wireless";
constexpr wchar_t Mode[] = L"first_run"; // which a hyperlink's label may not have
constexpr wchar_t HyperlinkMode[] = L"first";
constexpr wchar_t GlobalContext[] = L"Tarvik 3000";
const std::wstring AdName = L"Spring";
const std::wstring AdVariant = L"banner 2";
const std::wstring OrgName = L"dvrn";
const std::wstring CodeName = L"tarvik";
const std::wstring Version = L"1.0";

template <class Function>
Call Click(const Library& library, const char* name, const Arguments& with, const wchar_t* mode = Mode) {
    return {name, [with, mode, click = Export<Function>(library, name)] {
                click(Flow, ScreenPath, with.screenName, mode, ControlName, &LocalContext, GlobalContext);
            }};
}

template <class Function>
Call Ad(const Library& library, const char* name, const Arguments& with) {
    return {name, [with, report = Export<Function>(library, name)] {
                report(API::AdType::banner, with.adProduct, AdName, AdVariant, Flow, ScreenPath, ScreenName,
                       Mode, ControlName, &LocalContext, GlobalContext);
            }};
}

template <class Function>
Call Document(const Library& library, const char* name, const Arguments& with) {
    return {name, [with, report = Export<Function>(library, name)] {
                report(OrgName, CodeName, with.formName, Version, FormDetails, &LocalContext, GlobalContext);
            }};
}

Call Screen(const Library& library, const Arguments& with) {
    return {"ScreenDisplayed",
            [with, displayed = Export<decltype(API::ScreenDisplayed)>(library, "ScreenDisplayed")] {
                displayed(Flow, ScreenPath, with.screenName, Mode, &LocalContext, GlobalContext);
            }};
}

Call Checkbox(const Library& library, const Arguments& with) {
    return {"CheckboxChanged",
            [with, changed = Export<decltype(API::CheckboxChanged)>(library, "CheckboxChanged")] {
                changed(1, Flow, ScreenPath, with.screenName, Mode, ControlName, &LocalContext,
                        GlobalContext);
            }};
}

Call Url(const Library& library, const Arguments& with) {
    return {"UrlLaunchedEx",
            [with, launched = Export<decltype(API::UrlLaunchedEx)>(library, "UrlLaunchedEx")] {
                launched(with.url, &LocalContext, GlobalContext);
            }};
}

std::vector<Call> Events(const Library& library, const Arguments& with) {
    return {
        Click<decltype(API::ButtonClicked)>(library, "ButtonClicked", with),
        Click<decltype(API::TileClicked)>(library, "TileClicked", with),
        Click<decltype(API::HyperlinkClicked)>(library, "HyperlinkClicked", with, HyperlinkMode),
        Checkbox(library, with),
        Screen(library, with),
        Ad<decltype(API::AdDisplayed)>(library, "AdDisplayed", with),
        Ad<decltype(API::AdClicked)>(library, "AdClicked", with),
        Ad<decltype(API::AdClosed)>(library, "AdClosed", with),
        Url(library, with),
        Document<decltype(API::FormSubmitted)>(library, "FormSubmitted", with),
        Document<decltype(API::ReportGenerated)>(library, "ReportGenerated", with),
    };
}

} // namespace

std::vector<Call> AcceptedEvents(const Library& library) { return Events(library, Right); }

std::vector<Call> RefusedEvents(const Library& library) { return Events(library, Wrong); }

std::vector<Call> LongTexts(const Library& library) {
    Arguments with = Right;
    with.screenName = TooLong(L"", L"\n");
    with.adProduct = TooLong(L"", L" ");
    with.url = TooLong(L"https://support.example/", L" ");
    with.formName = TooLong(L"", L"_");
    return {Screen(library, with), Ad<decltype(API::AdDisplayed)>(library, "AdDisplayed", with),
            Url(library, with), Document<decltype(API::FormSubmitted)>(library, "FormSubmitted", with)};
}

} // namespace LumeqBench
