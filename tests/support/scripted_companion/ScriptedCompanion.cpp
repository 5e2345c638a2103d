#include "support/scripted_companion/ScriptedCompanion.h"

#include "Common/Exceptions.h"

#include <Lumeq/LumeqRecords.h>

#include <windows.h>

#include <comdef.h>
#include <map>
#include <sstream>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

using Extra::Eventing::EventingEvent;
using Extra::Eventing::StringDictionary;
using LumeqShim::StartupTypes;

std::vector<std::wstring> calls;
std::vector<std::wstring> events;

std::wstring Script() {
    wchar_t text[64] = {};
    GetEnvironmentVariableW(L"LUMEQ_SCRIPTED_COMPANION", text, static_cast<DWORD>(std::size(text)));
    return text;
}

void RaiseAsScripted() {
    const std::wstring script = Script();
    if (script == L"vesto")
        throw Common::ArgumentException(L"who", L"scripted caf\u00e9");
    if (script == L"com")
        throw _com_error(static_cast<HRESULT>(0x80070005));
    if (script == L"std")
        throw std::runtime_error("scripted 100%");
    if (script == L"unknown")
        throw 42;
}

/// As the managed runtime does with what managed code has not caught; 0 to raise nothing. A frame that such
/// an exception leaves keeps what it owns.
DWORD ManagedCodeOfScript() {
    const std::wstring script = Script();
    return script == L"managed4" ? 0xE0434352 : script == L"managed2" ? 0xE0434F4D : 0;
}

template <class... Arguments>
void Remember(const wchar_t* operation, const Arguments&... arguments) {
    std::wostringstream call;
    [[maybe_unused]] const wchar_t* separator = L"";
    call << std::boolalpha << operation << L'(';
    ((call << separator << arguments, separator = L", "), ...);
    call << L')';
    calls.push_back(call.str());
}

template <class... Arguments>
void Take(const wchar_t* operation, const Arguments&... arguments) {
    Remember(operation, arguments...);
    RaiseAsScripted();
    if (const DWORD code = ManagedCodeOfScript())
        RaiseException(code, 0, 0, nullptr);
}

std::wstring TextOf(const StringDictionary& data) {
    std::wstring text;
    for (const auto& [key, value] : std::map<std::wstring, std::wstring>(data.begin(), data.end()))
        text += (text.empty() ? L"" : L" ") + key + L"=" + value;
    return text;
}

std::wstring TextOf(const EventingEvent& event, const wchar_t* key) {
    const std::wstring* const text = event.Record().at(key).StringIf();
    return text ? *text : L"(no text)";
}

} // namespace

extern "C" {

std::vector<std::wstring>* ScriptedCompanion_Calls() { return &calls; }

std::vector<std::wstring>* ScriptedCompanion_Events() { return &events; }

void StartupInternal(const std::wstring& appName, const StartupTypes* types, bool trackSystemInfo,
                     bool trackPrintQueueInfo) {
    Take(L"StartupInternal", appName, types->howType, types->whyType, trackSystemInfo, trackPrintQueueInfo);
}

void ShutdownInternal(std::int32_t timeoutMsec) { Take(L"ShutdownInternal", timeoutMsec); }

void FlushInternal(std::int32_t timeoutMsec) { Take(L"FlushInternal", timeoutMsec); }

bool GetUserOptInInternal() {
    Take(L"GetUserOptInInternal");
    return true;
}

void SetUserOptInInternal(bool userHasOptedIn) { Take(L"SetUserOptInInternal", userHasOptedIn); }

void SetLocalValueInternal(const std::wstring& key, const std::wstring& value) {
    Take(L"SetLocalValueInternal", key, value);
}

void LocalSettingsSubfolderInternal(const std::wstring& path) {
    Take(L"LocalSettingsSubfolderInternal", path);
}

void PostEventInternal(const EventingEvent& event, void* second, void* third) {
    if (Script() == L"read")
        events.push_back(TextOf(event, L"app_event_object_label") + L" " +
                         TextOf(event, L"app_event_action"));
    Take(L"PostEventInternal", reinterpret_cast<std::uintptr_t>(&event),
         reinterpret_cast<std::uintptr_t>(second), reinterpret_cast<std::uintptr_t>(third));
}

void PostDataInternal(const StringDictionary& data, const std::wstring& dataType, void* third) {
    Take(L"PostDataInternal", TextOf(data), dataType, reinterpret_cast<std::uintptr_t>(third));
}

void TrackPrintQueueInfoInternal() { Take(L"TrackPrintQueueInfoInternal"); }

void TrackSystemInformationInternal() { Take(L"TrackSystemInformationInternal"); }

} // extern "C"

} // namespace Zuvan::Lumeq::Testing
