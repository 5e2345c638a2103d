#include "fuzz/support/ExportModel.h"

#include "fuzz/native/Machine.h"
#include "fuzz/support/Require.h"

#include <algorithm>
#include <utility>

namespace Zuvan::Lumeq::Fuzzing {

namespace {

constexpr std::size_t LongestText = 140;

} // namespace

std::wstring ReadText(Input& input) { return input.Line().substr(0, LongestText); }

std::optional<std::wstring> ReadOptionalText(Input& input) {
    std::optional<std::wstring> text = input.OptionalLine();
    if (text)
        *text = text->substr(0, std::min(LongestText, text->find(L'\0')));
    return text;
}

const wchar_t* Pointer(const std::optional<std::wstring>& text) { return text ? text->c_str() : nullptr; }

ContextArguments::ContextArguments(Input& input) {
    if (input.Choice(2) == 1)
        local = input.Fields();
    global = ReadOptionalText(input);
}

Model::Fields ContextArguments::Record() const {
    const std::wstring name = global && !global->empty() ? *global : TheMachine().globalContext;
    return {{L"schema", L"app_event_context/1.0.0"},
            {L"context_global", Model::Fields{{L"_dev_modelname", name.empty() ? Model() : Model(name)}}},
            {L"context_local", local ? Model(TextFields(*local)) : Model()}};
}

void ExpectedCall::Required(Kind kind, const wchar_t* argName, const std::wstring& value) {
    if (!ShouldMatch(kind, value))
        Invalid(std::wstring(L"invalid [REQUIRED] ") + argName + L" arg: \"" + value + L"\"");
}

void ExpectedCall::Optional(Kind kind, const wchar_t* argName, const std::optional<std::wstring>& value) {
    if (value && !ShouldMatch(kind, *value))
        Invalid(std::wstring(L"invalid [optional] ") + argName + L" arg: \"" + *value + L"\"");
}

void ExpectedCall::Invalid(const std::wstring& detail) { Add(L"Validation failed", detail); }

void ExpectedCall::Exception(const std::wstring& text) { Add(L"Exception", text); }

void ExpectedCall::Add(const wchar_t* title, const std::wstring& detail) {
    _errors.push_back(std::wstring(L"host.exe: ") + title + L" in Zuvan::Lumeq::API::" + _name + L": " +
                      detail + L". LumeqApi(");
}

void ExpectedCall::RequireErrors() const {
    const std::vector<std::wstring> lines = TheMachine().Messages(Common::SeverityLevel::ERROR);
    Require(lines.size() == _errors.size(), "each failure is one ERROR line");
    for (std::size_t i = 0; i < lines.size(); ++i)
        Require(lines[i].starts_with(_errors[i].c_str()), "the ERROR lines name the failures in order");
}

Model::Fields EventRecord(const wchar_t* actor, const wchar_t* action, const wchar_t* object,
                          const std::wstring& label, Model::Fields context, Model details) {
    return {{L"schema", L"app_eventinfo/2.0.1"},
            {L"app_event_actor", actor},
            {L"app_event_action", action},
            {L"app_event_object", object},
            {L"app_event_object_label", label},
            {L"app_event_context", std::move(context)},
            {L"app_event_details", std::move(details)}};
}

std::uint64_t EventTime(std::int64_t utcMilliseconds) {
    const bool known = utcMilliseconds >= 0 && utcMilliseconds <= 2147483647000;
    return known ? static_cast<std::uint64_t>(utcMilliseconds) : Extra::Eventing::InvalidTime;
}

} // namespace Zuvan::Lumeq::Fuzzing
