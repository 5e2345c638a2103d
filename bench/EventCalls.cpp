#include "bench/Calls.h"
#include "bench/Exports.h"

#include <string>

namespace LumeqBench {

namespace {

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

std::vector<Call> Events(const SampleHost::Library& library, const Arguments& with) {
    const auto buttonClicked = Export<decltype(API::ButtonClicked)>(library, "ButtonClicked");
    const auto screenDisplayed = Export<decltype(API::ScreenDisplayed)>(library, "ScreenDisplayed");
    const auto adDisplayed = Export<decltype(API::AdDisplayed)>(library, "AdDisplayed");
    const auto urlLaunched = Export<decltype(API::UrlLaunchedEx)>(library, "UrlLaunchedEx");
    const auto formSubmitted = Export<decltype(API::FormSubmitted)>(library, "FormSubmitted");
    static constexpr wchar_t flow[] = L"setup";
    static constexpr wchar_t screenPath[] = L"network/wireless";
    static constexpr wchar_t mode[] = L"first_run";
    static constexpr wchar_t globalContext[] = L"Tarvik 3000";
    static const std::wstring name = L"Spring";
    static const std::wstring variant = L"banner 2";
    static const std::wstring orgName = L"dvrn";
    static const std::wstring codeName = L"tarvik";
    static const std::wstring version = L"1.0";
    return {
        {"ButtonClicked",
         [=] {
             buttonClicked(flow, screenPath, with.screenName, mode, ControlName, &LocalContext,
                           globalContext);
         }},
        {"ScreenDisplayed",
         [=] { screenDisplayed(flow, screenPath, with.screenName, mode, &LocalContext, globalContext); }},
        {"AdDisplayed",
         [=] {
             adDisplayed(API::AdType::banner, with.adProduct, name, variant, flow, screenPath, ScreenName,
                         mode, ControlName, &LocalContext, globalContext);
         }},
        {"UrlLaunchedEx", [=] { urlLaunched(with.url, &LocalContext, globalContext); }},
        {"FormSubmitted",
         [=] {
             formSubmitted(orgName, codeName, with.formName, version, FormDetails, &LocalContext,
                           globalContext);
         }},
    };
}

} // namespace

std::vector<Call> AcceptedEvents(const SampleHost::Library& library) { return Events(library, Right); }

std::vector<Call> RefusedEvents(const SampleHost::Library& library) { return Events(library, Wrong); }

std::vector<Call> LongTexts(const SampleHost::Library& library) {
    Arguments with = Right;
    with.screenName = TooLong(L"", L"\n");
    with.adProduct = TooLong(L"", L" ");
    with.url = TooLong(L"https://support.example/", L" ");
    with.formName = TooLong(L"", L"_");
    std::vector<Call> calls = Events(library, with);
    // Another one with a long screen name.
    calls.erase(calls.begin());
    return calls;
}

} // namespace LumeqBench
