#include "bench/Calls.h"
#include "bench/Exports.h"

#include <string>
#include <unordered_map>

namespace LumeqBench {

namespace {

using SampleHost::Library;

const std::wstring ScreenName = L"ChooseNetwork";
const std::wstring ControlName = L"connect";
constexpr wchar_t ModelName[] = L"Tarvik 3000";

API::StringDictionary ContextOf(int pairs) {
    API::StringDictionary context;
    for (int i = 0; i < pairs; ++i)
        context[L"networks_found_" + std::to_wstring(i)] = L"seven";
    return context;
}

Call Click(const Library& library, const char* name, const std::wstring& controlName, int pairs) {
    const auto clicked = Export<decltype(API::ButtonClicked)>(library, "ButtonClicked");
    return {name, [=, context = ContextOf(pairs)] {
                clicked(L"setup", L"network/wireless", ScreenName, L"first_run", controlName, &context,
                        ModelName);
            }};
}

/// The fields of a click's record in one flat map, without any check.
void MakePlainMap() {
    const std::unordered_map<std::wstring, std::wstring> fields = {
        {L"schema", L"app_eventinfo/2.0.1"},
        {L"actor", L"user"},
        {L"action", L"clicked"},
        {L"object", L"button"},
        {L"object_label", L"/setup.flow/network/wireless/ChooseNetwork-first_run#connect"},
        {L"context", L"app_event_context/1.0.0"},
        {L"device_model_name", ModelName},
        {L"networks_found_0", L"seven"},
        {L"networks_found_1", L"seven"},
        {L"event_details", L""},
    };
}

} // namespace

std::vector<Call> GrowingContexts(const Library& library) {
    return {
        {"an unordered_map of the same fields", MakePlainMap},
        Click(library, "no pair", ControlName, 0),
        Click(library, "2 pairs", ControlName, 2),
        Click(library, "20 pairs", ControlName, 20),
        Click(library, "200 pairs", ControlName, 200),
    };
}

std::vector<Call> GrowingTexts(const Library& library) {
    return {
        Click(library, "10 characters", std::wstring(10, L'a'), 0),
        Click(library, "100 characters", std::wstring(100, L'a'), 0),
        Click(library, "1,000 characters", std::wstring(1'000, L'a'), 0),
        Click(library, "10,000 characters", std::wstring(10'000, L'a'), 0),
        Click(library, "100,000 characters", std::wstring(100'000, L'a'), 0),
    };
}

} // namespace LumeqBench
